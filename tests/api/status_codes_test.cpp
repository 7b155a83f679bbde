// Every status code that a host can meet, with severity and data, reached as a host reaches it: by
// a factory, its algorithm's Run and the output. What a factory itself refuses is in
// factories_test.cpp.
#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <limits>
#include <memory>
#include <vector>

#include "mcbinning/factories.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "support/host_objects.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"
#include "system/limited_process.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::CountingQuery;
using mcbinning_tests::ScratchDirectory;
using mcbinning_tests::VectorCases;

using Rows = std::vector<std::vector<double>>;

// What the variables of most tests are.
enum Variable { kX, kTarget, kThird, kWeight };

// Both algorithms cut x between 2 and 3.
const Rows kGoodRows = {{1, 0}, {2, 0}, {3, 1}, {4, 1}};

MCStatus error(long code) { return {code, false}; }

MCStatus warning(long code) { return {code, true}; }

MCStatus about(MCStatus status, long variable) {
  status.SetDiscreteDatum(0, variable);
  return status;
}

template <typename HostSettings, typename HostAlgorithm, typename HostRecord>
struct Host {
  using Settings = HostSettings;
  using Record = HostRecord;

  explicit Host(const Rows& rows = kGoodRows) : cases(rows) {
    settings.SetNumberOfBins(2);
    settings.SetTempDirName(directory.Path());
    list.AddContVar("x", "", IBINVariable::AttributeRole);
    AddCategorical("target", IBINVariable::TargetRole);
  }

  void AddCategorical(const char* name, IBINVariable::VariableRole role) {
    list.AddCatVar(name, "", 2, IBINVariable::NumericCategoricalLevel, role);
  }
  void AddWeight() { list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt); }

  std::vector<HostRecord> Records() {
    std::vector<HostRecord> records;
    algorithm->GetOutput()->GetAllCutPoints(records);
    return records;
  }

  MCStatus LastRecordStatus() {
    const auto records = Records();
    return records.empty() ? MCStatus() : records.back().GetStatus();
  }

  ScratchDirectory directory;
  VectorCases cases;
  HostSettings settings;
  BINVarList list;
  std::unique_ptr<HostAlgorithm> algorithm;
};

struct SupervisedHost : Host<BINSettings, IBINAlgorithm, BINAttributeTargetResults> {
  using Host::Host;

  MCStatus Create() {
    BINFactory factory;
    algorithm.reset(factory.CreateBINAlgorithm(settings, list));
    return factory.GetStatus();
  }
  MCStatus RunLists(const std::vector<int>* attributes, const std::vector<int>* targets) {
    const MCStatus created = algorithm == nullptr ? Create() : MCStatus();
    return created.IsOK() ? algorithm->Run(cases, attributes, targets) : created;
  }
  MCStatus Run() { return RunLists(nullptr, nullptr); }
  MCStatus Run(const std::vector<int>& attributes) { return RunLists(&attributes, nullptr); }
  MCStatus Run(const std::vector<int>& attributes, const std::vector<int>& targets) {
    return RunLists(&attributes, &targets);
  }
};

struct EqualFrequencyHost : Host<EFBINSettings, IEFBINAlgorithm, BINAttributeResults> {
  using Host::Host;

  MCStatus Create() {
    EFBINFactory factory;
    algorithm.reset(factory.CreateEFBINAlgorithm(settings, list));
    return factory.GetStatus();
  }
  MCStatus RunList(const std::vector<int>* attributes) {
    const MCStatus created = algorithm == nullptr ? Create() : MCStatus();
    return created.IsOK() ? algorithm->Run(cases, attributes) : created;
  }
  MCStatus Run() { return RunList(nullptr); }
  MCStatus Run(const std::vector<int>& attributes) { return RunList(&attributes); }
};

template <typename Kind>
class StatusCodesTest : public testing::Test {};

using Kinds = testing::Types<SupervisedHost, EqualFrequencyHost>;
TYPED_TEST_SUITE(StatusCodesTest, Kinds);

TYPED_TEST(StatusCodesTest, OK) {
  TypeParam host;
  EXPECT_EQ(host.Run(), MCStatus());
  EXPECT_EQ(host.LastRecordStatus(), MCStatus());
  EXPECT_EQ(host.algorithm->GetStatus(), MCStatus());
}

// A run over all variables with the query asked from the creation on; true when it was cancelled.
template <typename Kind>
bool cancelsAt(std::size_t question) {
  SCOPED_TRACE(question);
  Kind host({{1, 0, 0, 1}, {2, 0, 1, 1}, {}, {3, 1, 0, 2}, {4, 1, 1, 2}});
  host.AddCategorical("c", IBINVariable::AttributeRole);
  host.AddWeight();
  CountingQuery query(question);
  host.settings.SetCancelPointer(&query);
  const MCStatus status = host.Run();
  const bool isCancelled = query.Asked() == question;
  if (isCancelled) {
    EXPECT_EQ(status, error(1));
    EXPECT_TRUE(host.directory.IsEmpty());
  } else {
    EXPECT_NE(status, error(1));
  }
  if (isCancelled && host.algorithm != nullptr) {
    EXPECT_EQ(host.Run(), error(1));
    EXPECT_EQ(query.Asked(), question);
  }
  return isCancelled;
}

TYPED_TEST(StatusCodesTest, Code1AtEveryQuestionOfARunWithNoFileLeft) {
  std::size_t question = 1;
  while (cancelsAt<TypeParam>(question)) {
    ++question;
  }
  EXPECT_GT(question, 10U);
}

TYPED_TEST(StatusCodesTest, Code3WhenTheHostThrows) {
  TypeParam host;
  host.cases.ThrowAtNext(2);
  EXPECT_EQ(host.Run(), error(3));
}

TYPED_TEST(StatusCodesTest, Code3OfTheRecordWhenItsColumnIsLost) {
  TypeParam host;
  EXPECT_EQ(host.Run({kX}), MCStatus());
  host.directory.Clear();
  EXPECT_EQ(host.Run({kX}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), error(3));
}

TYPED_TEST(StatusCodesTest, Code120001) {
  TypeParam host;
  host.settings.SetTempDirName(host.directory.Path() + "/nowhere");
  EXPECT_EQ(host.Run(), error(120001));
}

TYPED_TEST(StatusCodesTest, Code120004WithoutACaseAndWithoutAUsedOne) {
  TypeParam none{Rows{}};
  EXPECT_EQ(none.Run(), error(120004));
  TypeParam unused{Rows{{}, {}}};
  EXPECT_EQ(unused.Run(), error(120004));
}

TYPED_TEST(StatusCodesTest, Code120005OfTheRecordWhenTheAttributeIsTheWeight) {
  TypeParam host({{1, 0, 1}, {2, 0, 1}, {3, 1, 1}, {4, 1, 1}});
  host.AddWeight();
  EXPECT_EQ(host.Run({kX, 2}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), error(120005));
  EXPECT_EQ(host.algorithm->GetStatus(), error(120005));
}

TYPED_TEST(StatusCodesTest, Code120009) {
  TypeParam host;
  host.settings = typename TypeParam::Settings();
  EXPECT_EQ(host.Run(), error(120009));
}

TYPED_TEST(StatusCodesTest, Code120011OfTheRecordWhenTheAttributeIsOutOfRange) {
  for (const int attribute : {-1, 2}) {
    TypeParam host;
    EXPECT_EQ(host.Run({kX, attribute}), warning(120018));
    EXPECT_EQ(host.LastRecordStatus(), error(120011));
    EXPECT_EQ(host.algorithm->GetStatus(), error(120011));
  }
}

TYPED_TEST(StatusCodesTest, Code120012EndsARunWhoseOnlyCategoricalVariableIsTheTarget) {
  TypeParam host({{1, 0}, {2, 256}});
  EXPECT_EQ(host.Run(), about(error(120012), kTarget));
}

TYPED_TEST(StatusCodesTest, Code120013OfTheRecordWhenTheAttributeHasNoColumn) {
  TypeParam host({{1, 0, 1}, {2, 0, 1}, {3, 1, 1}, {4, 1, 1}});
  host.list.AddContVar("unused", "", IBINVariable::UndefinedRole);
  EXPECT_EQ(host.Run({kX, kThird}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), about(error(120013), kThird));
  EXPECT_EQ(host.algorithm->GetStatus(), about(error(120013), kThird));
}

TYPED_TEST(StatusCodesTest, Code120014) {
  TypeParam host({{7, 0}, {7, 1}});
  EXPECT_EQ(host.Run({kX}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), about(warning(120014), kX));
}

TYPED_TEST(StatusCodesTest, Code120015) {
  TypeParam host({{MCMV::gMissingValue, 0}, {MCMV::gMissingValue, 1}});
  EXPECT_EQ(host.Run({kX}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), warning(120015));
}

TYPED_TEST(StatusCodesTest, Code120020BeforeAnyRun) {
  TypeParam host;
  EXPECT_EQ(host.Create(), MCStatus());
  std::vector<typename TypeParam::Record> records;
  EXPECT_EQ(host.algorithm->GetOutput()->GetAllCutPoints(records), error(120020));
}

TYPED_TEST(StatusCodesTest, Code120021) {
  TypeParam host;
  MCStatus status;
  {
    const mcbinning_tests::WithoutFileHandles limit;
    if (!limit.IsSet()) {
      GTEST_SKIP() << "the system has no limit of open files";
    }
    status = host.Run();
  }
  EXPECT_EQ(status, error(120021));
}

TEST(SupervisedStatusCodesTest, Code120002WhenRowsLieBeyondThePreBins) {
  SupervisedHost host(
      {{1, 0}, {2, 0}, {3, 0}, {4, 1}, {5, 1}, {std::numeric_limits<double>::infinity(), 1}});
  host.settings.SetNumDistinctValueThreshold(3);
  EXPECT_EQ(host.Run(), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), warning(120002));
}

TEST(SupervisedStatusCodesTest, Code120005WhenThePairIsOneVariableOrTheWeight) {
  const std::vector<int> attributes = {kX, kTarget, kWeight, kTarget};
  const std::vector<int> targets = {kTarget, kTarget, kTarget, kThird};
  SupervisedHost host({{1, 0, 0, 1}, {2, 0, 0, 1}, {3, 1, 1, 1}, {4, 1, 1, 1}});
  host.AddCategorical("c", IBINVariable::AttributeRole);
  host.AddWeight();
  EXPECT_EQ(host.Run(attributes, targets), warning(120018));
  const auto records = host.Records();
  ASSERT_EQ(records.size(), 4U);
  EXPECT_EQ(records[0].GetStatus(), MCStatus());
  EXPECT_EQ(records[1].GetStatus(), error(120005));
  EXPECT_EQ(records[2].GetStatus(), error(120005));
  EXPECT_EQ(records[3].GetStatus(), MCStatus());
  EXPECT_EQ(host.Run({kX, kTarget}), warning(120018));  // attributes alone: the list's target
  EXPECT_EQ(host.LastRecordStatus(), error(120005));
}

TEST(SupervisedStatusCodesTest, Code120006) {
  SupervisedHost host;
  EXPECT_EQ(host.Run({kX, kTarget}, {kTarget, kX}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), error(120006));
}

TEST(SupervisedStatusCodesTest, Code120008) {
  const std::vector<int> one = {kX};
  SupervisedHost host;
  EXPECT_EQ(host.RunLists(nullptr, &one), error(120008));
  EXPECT_EQ(host.Run({kX}, {kTarget, kTarget}), error(120008));
  EXPECT_EQ(host.Run({}), error(120008));
  EXPECT_EQ(host.Run({}, {}), error(120008));
  EXPECT_EQ(host.Run({kX}, {kX}), error(120008));
  EXPECT_EQ(host.Run(), MCStatus());
}

TEST(SupervisedStatusCodesTest, Code120010OfTheWholeListAndOfAPair) {
  SupervisedHost host;
  host.list.SetVariableRole(kTarget, IBINVariable::AttributeRole);
  EXPECT_EQ(host.Run(), error(120010));
  EXPECT_EQ(host.algorithm->GetStatus(), MCStatus());
  EXPECT_EQ(host.Run({kX}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), error(120010));
  EXPECT_EQ(host.algorithm->GetStatus(), error(120010));
}

TEST(SupervisedStatusCodesTest, Code120013OfPairsOutOfRangeAndOfQueries) {
  for (const int index : {-1, 2}) {
    SupervisedHost host;
    EXPECT_EQ(host.Run({kX, index, kX}, {kTarget, kTarget, index}), warning(120018));
    const auto records = host.Records();
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[1].GetStatus(), error(120013));
    EXPECT_EQ(records[2].GetStatus(), error(120013));
    BINAttributeTargetResults record;
    EXPECT_EQ(host.algorithm->GetOutput()->GetAttributeTargetCutPoints(7, kTarget, record),
              error(120013));
  }
}

TEST(SupervisedStatusCodesTest, Code120016) {
  SupervisedHost host({{1, 0}, {2, 0}});
  EXPECT_EQ(host.Run(), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), about(warning(120016), kTarget));
  EXPECT_EQ(host.algorithm->GetStatus(), about(warning(120016), kTarget));
}

TEST(SupervisedStatusCodesTest, Code120017) {
  SupervisedHost host({{1, 0}, {2, 1}, {3, 0}, {4, 1}});
  EXPECT_EQ(host.Run(), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), warning(120017));
}

TEST(EqualFrequencyStatusCodesTest, Code120011WhenNoAttributeOfTheListCanBeUsed) {
  EqualFrequencyHost host;
  EXPECT_EQ(host.Run({-1, 2}), error(120011));
  EXPECT_EQ(host.Run({}), error(120011));
}

// The column of the categorical input is 3: target, weight, x, then it.
TEST(EqualFrequencyStatusCodesTest, Code120012WhenAColumnIsGivenUp) {
  const Rows rows = {{1, 0, 0, 1}, {2, 0, 0, 1}, {3, 1, 1, 1}, {4, 1, 1, 1}};
  for (const Variable givenUp : {kTarget, kThird}) {
    Rows spoilt = rows;
    spoilt[1][givenUp] = 256;
    EqualFrequencyHost host(spoilt);
    host.AddCategorical("c", IBINVariable::AttributeRole);
    host.AddWeight();
    EXPECT_EQ(host.Run({kX}), about(warning(120012), givenUp == kTarget ? kTarget : 3));
    EXPECT_EQ(host.algorithm->GetStatus(), MCStatus());
    EXPECT_EQ(host.Run({givenUp}), warning(120018));
    EXPECT_EQ(host.LastRecordStatus(), about(error(120013), givenUp));
  }
}

TEST(EqualFrequencyStatusCodesTest, Code120013OfQueries) {
  EqualFrequencyHost host;
  EXPECT_EQ(host.Run(), MCStatus());
  BINAttributeResults record;
  EXPECT_EQ(host.algorithm->GetOutput()->GetAttributeCutPoints(2, record), error(120013));
  EXPECT_EQ(host.algorithm->GetOutput()->GetAttributeCutPoints(-1, record), error(120013));
}

TEST(EqualFrequencyStatusCodesTest, Code120019) {
  EqualFrequencyHost host({{1, 0}, {2, 0}, {2, 1}, {2, 1}});
  EXPECT_EQ(host.Run({kX}), warning(120018));
  EXPECT_EQ(host.LastRecordStatus(), about(warning(120019), kX));
  EXPECT_EQ(host.algorithm->GetStatus(), about(warning(120019), kX));
}

}  // namespace
