#include "toolkit/fit/column_cases.h"

#include <gtest/gtest.h>

#include "tests/toolkit/support/memory_table.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/columns/number_columns.h"
#include "toolkit/columns/text_columns.h"
#include "toolkit/errors.h"
#include "toolkit/fit/fit_model.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/model/model_json.h"

namespace mcbin {
namespace {

using testing::MemoryTable;
using testing::messageOf;

/// Numbers `x` and truth values `t` in batches of the given sizes, and a column `d` of no use.
class MemoryBatches : public BatchReader {
 public:
  MemoryBatches(std::vector<double> x, std::vector<std::uint8_t> t, std::vector<std::size_t> sizes)
      : x_(std::move(x)), t_(std::move(t)), sizes_(std::move(sizes)) {}

  const std::vector<ColumnHead>& Heads() const override { return heads_; }
  bool NextBatch(ColumnBatch& batch) override {
    if (next_ == sizes_.size()) return false;
    batch.rows = sizes_[next_++];
    batch.firstRow = start_;
    batch.columns.clear();
    batch.columns.push_back(
        std::make_unique<NumberColumn<double>>(x_.data() + start_, 8, Validity()));
    batch.columns.push_back(std::make_unique<TruthByteColumn>(t_.data() + start_, 1, Validity()));
    batch.columns.push_back(std::make_unique<MissingColumn>());
    start_ += batch.rows;
    return true;
  }
  void Rewind() override { next_ = start_ = 0; }
  std::uint64_t Rows() const override { return x_.size(); }

 private:
  std::vector<ColumnHead> heads_ = {
      {"x", "", true}, {"t", "", true}, {"d", "it holds dates", false}};
  std::vector<double> x_;
  std::vector<std::uint8_t> t_;
  std::vector<std::size_t> sizes_;
  std::size_t next_ = 0;
  std::size_t start_ = 0;
};

FitRequest requestWith(const std::string& target) {
  FitRequest request;
  request.target = target;
  request.naTexts = defaultNaTexts();
  return request;
}

Model fit(CaseSource& cases, const FitRequest& request) {
  Monitor monitor;
  FitTimings timings;
  return fitModel(request, cases, {monitor, nullptr, false}, timings);
}

TEST(ColumnCases, StepOverBatchesAndEmptyOnes) {
  MemoryBatches batches({1, 2, 3}, {0, 1, 0}, {0, 2, 0, 1, 0});
  ColumnCases cases(batches, {});
  for (int pass = 0; pass < 2; ++pass) {
    std::string seen;
    while (cases.NextCase()) {
      double x = 0.0;
      EXPECT_EQ(cases.ReadNumber(0, x), CellKind::Number);
      seen += cases.Where() + "=" + shortestNumber(x) + std::string(cases.ReadText(1)) + ";";
    }
    EXPECT_EQ(seen, "row 0=1false;row 1=2true;row 2=3false;");
    EXPECT_FALSE(cases.NextCase());
    cases.Rewind();
  }
  EXPECT_EQ(cases.ShareRead(), 0.0);
}

TEST(ColumnCases, GiveTheModelOfTheSameTextTable) {
  std::vector<double> x;
  std::vector<std::uint8_t> t;
  std::vector<std::vector<std::string>> rows;
  for (int i = 0; i < 40; ++i) {
    x.push_back((i * 7) % 40 / 4.0);
    t.push_back(x.back() > 5.0 ? 1 : 0);
    rows.push_back({shortestNumber(x.back()), t.back() ? "true" : "false"});
  }
  MemoryBatches batches(x, t, {7, 0, 33});
  ColumnCases typed(batches, defaultNaTexts());
  MemoryTable table({"x", "t"}, rows);
  TextCases text(table, defaultNaTexts());
  FitRequest request = requestWith("t");
  Model expected = fit(text, request);
  ASSERT_EQ(expected.attributes.front().cutPoints.size(), 1U);
  Model actual = fit(typed, request);
  ASSERT_EQ(actual.leftOut.size(), 1U);
  EXPECT_EQ(actual.leftOut.front().reason, "it holds dates");
  actual.leftOut.clear();
  EXPECT_EQ(modelToJson(actual), modelToJson(expected));
}

TEST(ColumnCases, AnUnfitColumnCanBeNoTarget) {
  MemoryBatches batches({1, 2}, {0, 1}, {2});
  ColumnCases cases(batches, {});
  EXPECT_EQ(messageOf<DataError>([&] { fit(cases, requestWith("d")); }),
            "column d: it holds dates");
}

TEST(ColumnCases, AnUnfitColumnNamedAsAttributeIsAnError) {
  MemoryBatches batches({1, 2}, {0, 1}, {2});
  ColumnCases cases(batches, {});
  FitRequest request = requestWith("t");
  request.attributePatterns = {"d"};
  EXPECT_EQ(messageOf<DataError>([&] { fit(cases, request); }),
            "--attribute d: the column cannot be cut: it holds dates");
}

}  // namespace
}  // namespace mcbin
