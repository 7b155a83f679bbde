#include "mcbinning/factories.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "support/host_objects.h"

namespace {

using MCBinning::MCStatus;
using mcbinning_tests::CountingQuery;

constexpr auto kAttribute = IBINVariable::AttributeRole;

// Both factories follow the same rules; each test runs for both.
struct Supervised {
  using Factory = BINFactory;
  using Settings = BINSettings;
  using Algorithm = IBINAlgorithm;
  static IBINAlgorithm* Create(BINFactory& factory, BINSettings& settings, BINVarList& list) {
    return factory.CreateBINAlgorithm(settings, list);
  }
};

struct EqualFrequency {
  using Factory = EFBINFactory;
  using Settings = EFBINSettings;
  using Algorithm = IEFBINAlgorithm;
  static IEFBINAlgorithm* Create(EFBINFactory& factory, EFBINSettings& settings, BINVarList& list) {
    return factory.CreateEFBINAlgorithm(settings, list);
  }
};

template <typename Kind>
class FactoriesTest : public testing::Test {
 protected:
  std::unique_ptr<typename Kind::Algorithm> Create(BINVarList& list) {
    return std::unique_ptr<typename Kind::Algorithm>(Kind::Create(factory_, settings_, list));
  }

  void ExpectRefused(BINVarList& list, long offender) {
    EXPECT_EQ(Create(list), nullptr);
    MCStatus expected(120003, false);
    expected.SetDiscreteDatum(1, offender);
    EXPECT_TRUE(factory_.GetStatus() == expected)
        << factory_.GetStatus().GetErrorCode() << " " << factory_.GetStatus().GetDiscreteDatum(1);
  }

  typename Kind::Factory factory_;
  typename Kind::Settings settings_;
};

using Kinds = testing::Types<Supervised, EqualFrequency>;
TYPED_TEST_SUITE(FactoriesTest, Kinds);

BINVarList oneAttribute() {
  BINVarList list;
  list.AddContVar("x", "", kAttribute);
  return list;
}

void addNumericCategories(BINVarList& list, const std::string& name, int count) {
  list.AddCatVar(name, "", count, IBINVariable::NumericCategoricalLevel, kAttribute);
}

TYPED_TEST(FactoriesTest, FreshFactoryIsOK) {
  EXPECT_TRUE(this->factory_.GetStatus() == MCStatus());
}

TYPED_TEST(FactoriesTest, EmptyListIsRefused) {
  BINVarList list;
  this->ExpectRefused(list, -1);
}

TYPED_TEST(FactoriesTest, ListWithoutAttributeIsRefused) {
  BINVarList list;
  list.AddContVar("x", "", IBINVariable::UndefinedRole);
  list.AddCatVar("t", "", std::vector<double>{1.0, 2.0}, IBINVariable::TargetRole);
  this->ExpectRefused(list, -1);
}

TYPED_TEST(FactoriesTest, VariableWithoutCategoriesIsNamedBeforeOneWithASingleCategory) {
  BINVarList list = oneAttribute();
  addNumericCategories(list, "single", 1);
  addNumericCategories(list, "first empty", 0);
  addNumericCategories(list, "second empty", 0);
  this->ExpectRefused(list, 2);
}

TYPED_TEST(FactoriesTest, FirstVariableWithASingleCategoryIsNamed) {
  BINVarList list = oneAttribute();
  addNumericCategories(list, "good", 2);
  addNumericCategories(list, "first single", 1);
  addNumericCategories(list, "second single", 1);
  this->ExpectRefused(list, 2);
}

TYPED_TEST(FactoriesTest, CreationsAreIndependentAndTheStatusIsTheLastOne) {
  BINVarList list = oneAttribute();
  BINVarList none;
  this->ExpectRefused(none, -1);
  this->settings_.SetNumberOfBins(3);
  const auto first = this->Create(list);
  EXPECT_TRUE(this->factory_.GetStatus() == MCStatus());
  this->settings_.SetNumberOfBins(4);
  const auto second = this->Create(list);
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
  EXPECT_NE(first->GetOutput(), second->GetOutput());
  EXPECT_EQ(first->GetSettings()->GetNumberOfBins(), 3);
  EXPECT_EQ(second->GetSettings()->GetNumberOfBins(), 4);
  this->ExpectRefused(none, -1);
}

TYPED_TEST(FactoriesTest, SettingsAreNotChecked) {
  BINVarList list = oneAttribute();
  EXPECT_NE(this->Create(list), nullptr);
  EXPECT_EQ(this->settings_.GetNumberOfBins(), -1);
}

TYPED_TEST(FactoriesTest, CopiesTakeTheStatus) {
  BINVarList none;
  this->ExpectRefused(none, -1);
  const typename TypeParam::Factory copy(this->factory_);
  typename TypeParam::Factory assigned;
  assigned = this->factory_;
  EXPECT_EQ(copy.GetStatus().GetErrorCode(), 120003);
  EXPECT_EQ(assigned.GetStatus().GetErrorCode(), 120003);
  static_assert(!std::is_polymorphic_v<typename TypeParam::Factory>);
}

TYPED_TEST(FactoriesTest, ListWithoutTargetIsAccepted) {
  BINVarList list = oneAttribute();
  EXPECT_EQ(list.GetTargetIndex(), -1);
  EXPECT_NE(this->Create(list), nullptr);
}

TEST(BINFactoryTest, HostThatAlreadyCancelledGetsNoSupervisedAlgorithm) {
  CountingQuery query(1);
  BINSettings settings;
  settings.SetCancelPointer(&query);
  BINVarList list = oneAttribute();
  BINFactory factory;
  EXPECT_EQ(factory.CreateBINAlgorithm(settings, list), nullptr);
  EXPECT_TRUE(factory.GetStatus() == MCStatus(1, false));
}

TEST(BINFactoryTest, QueryThatThrowsEndsWithStatusThree) {
  CountingQuery query;
  query.ThrowAt(1);
  BINSettings settings;
  settings.SetCancelPointer(&query);
  BINVarList list = oneAttribute();
  BINFactory factory;
  EXPECT_EQ(factory.CreateBINAlgorithm(settings, list), nullptr);
  EXPECT_TRUE(factory.GetStatus() == MCStatus(3, false));
}

TEST(BINFactoryTest, FactoryUsedAgainFromTheCancelQueryMakesTwoAlgorithms) {
  CountingQuery query;
  BINSettings settings;
  settings.SetCancelPointer(&query);
  BINVarList list = oneAttribute();
  BINVarList none;
  BINFactory factory;
  std::unique_ptr<IBINAlgorithm> inner;
  query.hook = [&] {
    BINSettings own;
    inner.reset(factory.CreateBINAlgorithm(own, list));
    EXPECT_EQ(factory.CreateBINAlgorithm(own, none), nullptr);
  };
  const std::unique_ptr<IBINAlgorithm> outer(factory.CreateBINAlgorithm(settings, list));
  EXPECT_TRUE(factory.GetStatus() == MCStatus());
  ASSERT_NE(outer, nullptr);
  ASSERT_NE(inner, nullptr);
  EXPECT_NE(outer, inner);
}

TEST(EFBINFactoryTest, CreationDoesNotAskTheCancelQuery) {
  CountingQuery query(1);
  EFBINSettings settings;
  settings.SetCancelPointer(&query);
  BINVarList list = oneAttribute();
  EFBINFactory factory;
  const std::unique_ptr<IEFBINAlgorithm> algorithm(factory.CreateEFBINAlgorithm(settings, list));
  EXPECT_NE(algorithm, nullptr);
  EXPECT_EQ(query.Asked(), 0U);
}

}  // namespace
