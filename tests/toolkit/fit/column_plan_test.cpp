#include "toolkit/fit/column_plan.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/input/cells.h"

namespace mcbin {
namespace {

using testing::messageOf;

const std::vector<std::string> kNames = {"id", "age", "income", "w", "class"};

FitRequest request() {
  FitRequest r;
  r.target = "class";
  r.naTexts = defaultNaTexts();
  return r;
}

std::vector<ColumnUse> usesOf(const FitRequest& r) {
  std::vector<ColumnUse> uses;
  for (const ColumnPlan& column : planColumns(r, kNames)) uses.push_back(column.use);
  return uses;
}

std::string usageError(const FitRequest& r) {
  return messageOf<UsageError>([&] { planColumns(r, kNames); });
}

constexpr ColumnUse kCut = ColumnUse::Attribute;
constexpr ColumnUse kOut = ColumnUse::LeftOut;
using Uses = std::vector<ColumnUse>;

TEST(ColumnPlan, EveryColumnButTargetAndWeightIsCut) {
  FitRequest r = request();
  r.weight = "4";
  EXPECT_EQ(usesOf(r), (Uses{kCut, kCut, kCut, ColumnUse::Weight, ColumnUse::Target}));
}

TEST(ColumnPlan, AttributeAndExcludeNarrowTheColumns) {
  FitRequest r = request();
  r.attributePatterns = {"?*e", "1"};
  EXPECT_EQ(usesOf(r), (Uses{kCut, kCut, kCut, kOut, ColumnUse::Target}));
  r.excludePatterns = {"inc*"};
  EXPECT_EQ(usesOf(r), (Uses{kCut, kCut, kOut, kOut, ColumnUse::Target}));
  EXPECT_EQ(planColumns(r, kNames)[2].reason, "excluded by --exclude");
  EXPECT_EQ(planColumns(r, kNames)[3].reason, "not named by --attribute");
}

TEST(ColumnPlan, ContradictionsAreUsageErrors) {
  FitRequest r = request();
  r.attributePatterns = {"age"};
  r.excludePatterns = {"a*"};
  EXPECT_EQ(usageError(r), "column age is named by --attribute and by --exclude a*");
  r = request();
  r.attributePatterns = {"class"};
  EXPECT_EQ(usageError(r), "column class cannot be named by --target and by --attribute");
  r = request();
  r.weight = "class";
  EXPECT_EQ(usageError(r), "column class cannot be named by --weight and by --target");
}

TEST(ColumnPlan, TypesAreDeclaredByNameOrNumber) {
  FitRequest r = request();
  r.types = {"id=category", "2=scale"};
  const auto columns = planColumns(r, kNames);
  EXPECT_EQ(columns[0].declaredType, ColumnType::Category);
  EXPECT_EQ(columns[1].declaredType, ColumnType::Scale);
  EXPECT_FALSE(columns[2].declaredType);
}

TEST(ColumnPlan, WrongTypesAreUsageErrors) {
  FitRequest r = request();
  r.types = {"id"};
  EXPECT_EQ(usageError(r), "--type id: write --type COLUMN=scale or COLUMN=category");
  r.types = {"id=text"};
  EXPECT_EQ(usageError(r), "--type id=text: the type is scale or category, not 'text'");
  r.types = {"id=scale", "1=category"};
  EXPECT_EQ(usageError(r), "--type gives column id two types");
  r.types = {"class=scale"};
  EXPECT_EQ(usageError(r), "--type class=scale: the target always is a category");
  r.types = {"w=category"};
  r.weight = "w";
  EXPECT_EQ(usageError(r), "--type w=category: the weight always is a number");
}

TEST(ColumnPlan, MissingValuesAreNumbersButForTheTarget) {
  FitRequest r = request();
  r.missing = {"income=-1,999", "income=5", "class=unknown, lost"};
  r.targetMissing = {"a, b=c", " d "};
  const auto columns = planColumns(r, kNames);
  EXPECT_EQ(columns[2].missing.values, (std::vector<double>{-1.0, 999.0, 5.0}));
  EXPECT_EQ(columns[4].missingTexts, (std::vector<std::string>{"unknown", "lost", "a, b=c", "d"}));
  r.missing = {"income=none"};
  EXPECT_EQ(usageError(r),
            "--missing income=none: 'none' is not a number; a text that stands for a missing value "
            "is declared with --na");
  r.missing = {"income="};
  EXPECT_EQ(usageError(r), "--missing income=: write --missing COLUMN=VALUE,VALUE...");
}

TEST(ColumnPlan, MissingRangesMayBeOpen) {
  FitRequest r = request();
  r.missingRanges = {"age=0:17", "income=90000:"};
  const auto columns = planColumns(r, kNames);
  EXPECT_EQ(*columns[1].missing.range, (std::pair{0.0, 17.0}));
  EXPECT_EQ(*columns[2].missing.range,
            (std::pair{90000.0, std::numeric_limits<double>::infinity()}));
}

TEST(ColumnPlan, WrongMissingRangesAreUsageErrors) {
  for (const char* range : {"age=5", "age=:", "age=a:5", "age=5:b", "age=5:4"}) {
    FitRequest r = request();
    r.missingRanges = {range};
    EXPECT_EQ(usageError(r), "--missing-range " + std::string(range) +
                                 ": write COLUMN=LOW:HIGH with numbers, LOW not above HIGH; an end "
                                 "left empty is open");
  }
  FitRequest r = request();
  r.missingRanges = {"age=1:2", "age=3:4"};
  EXPECT_EQ(usageError(r), "--missing-range: column age has two ranges");
  r.missingRanges = {"class=1:2"};
  EXPECT_EQ(usageError(r),
            "--missing-range is for numbers; the target's missing categories are named with "
            "--missing");
}

class ApplyScanTest : public ::testing::Test {
 protected:
  ApplyScanTest() {
    scan_.columns.resize(kNames.size());
    for (ColumnScan& column : scan_.columns) column.firstNumber = Sighting{"f, line 2", "1"};
    scan_.categories = {"yes", "no"};
  }

  std::string Error(const FitRequest& r) {
    return messageOf<DataError>([&] {
      auto columns = planColumns(r, kNames);
      applyScan(scan_, "d.csv", columns);
    });
  }

  std::string ReasonOf(std::size_t column, const FitRequest& r = request()) {
    auto columns = planColumns(r, kNames);
    applyScan(scan_, "d.csv", columns);
    return columns[column].use == kOut ? columns[column].reason : "(cut)";
  }

  TableScan scan_;
  const Sighting text_{"f, line 9", "x"};
};

TEST_F(ApplyScanTest, NumbersAreCut) { EXPECT_EQ(ReasonOf(1), "(cut)"); }

TEST_F(ApplyScanTest, TextsAreLeftOut) {
  scan_.columns[0] = {{}, text_, {}};
  EXPECT_EQ(ReasonOf(0), "categorical: it holds texts");
}

TEST_F(ApplyScanTest, NothingAndDeclaredCategoriesAreLeftOut) {
  scan_.columns[0] = {};
  EXPECT_EQ(ReasonOf(0), "no case has a value");
  FitRequest r = request();
  r.types = {"id=category"};
  scan_.columns[0].firstText = text_;
  EXPECT_EQ(ReasonOf(0, r), "declared a category");
}

TEST_F(ApplyScanTest, MixedColumnsAreTheUsersToDecide) {
  scan_.columns[0].firstText = text_;
  EXPECT_EQ(Error(request()),
            "f, line 9: column id mixes numbers and texts: 'x' is a text, while '1' (f, line 2) is "
            "a number; if the text stands for a missing value say --na 'x', if the column holds "
            "categories say --type id=category, else --exclude id");
  FitRequest r = request();
  r.excludePatterns = {"id"};
  EXPECT_EQ(ReasonOf(0, r), "excluded by --exclude");
  r = request();
  r.types = {"id=scale"};
  EXPECT_EQ(Error(r),
            "f, line 9: 'x' in column id is not a number; if it stands for a missing "
            "value say --na 'x'");
}

TEST_F(ApplyScanTest, ANamedColumnThatCannotBeCutIsAnError) {
  scan_.columns[0] = {{}, text_, {}};
  FitRequest r = request();
  r.attributePatterns = {"id", "age"};
  EXPECT_EQ(Error(r), "--attribute id: the column cannot be cut: categorical: it holds texts");
  r.attributePatterns = {"i*", "age"};
  EXPECT_EQ(ReasonOf(0, r), "categorical: it holds texts");
}

TEST_F(ApplyScanTest, AWeightMustBeNumbersAndANumberMustFit) {
  FitRequest r = request();
  r.weight = "w";
  scan_.columns[3].firstText = text_;
  EXPECT_EQ(Error(r),
            "f, line 9: 'x' in column w is not a number; if it stands for a missing value "
            "say --na 'x'");
  scan_.columns[3] = {{}, {}, Sighting{"f, line 4", "1e999"}};
  EXPECT_EQ(Error(r), "f, line 4: '1e999' in column w is too large for a number");
}

TEST_F(ApplyScanTest, ATargetNeedsTwoCategories) {
  scan_.categories = {"yes"};
  EXPECT_EQ(
      Error(request()),
      "d.csv: the target class has the single category 'yes': there is nothing to tell apart");
  scan_.categories.clear();
  EXPECT_EQ(Error(request()), "d.csv: no case has a category in the target class");
}

TEST_F(ApplyScanTest, SomethingMustBeLeftToCut) {
  FitRequest r = request();
  r.excludePatterns = {"i*", "age", "w"};
  EXPECT_EQ(Error(r),
            "there is no scale column to cut:\n  id: excluded by --exclude\n  age: "
            "excluded by --exclude\n  income: excluded by --exclude\n  w: excluded by "
            "--exclude");
}

}  // namespace
}  // namespace mcbin
