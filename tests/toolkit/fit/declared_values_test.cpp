#include "toolkit/fit/declared_values.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace mcbin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

TEST(DeclaredValues, NumbersAndRangesThatAreNotThereAreNamed) {
  ColumnPlan column;
  column.name = "age";
  column.missing.values = {999.0, -1.0};
  column.missing.range = {100.0, 110.0};
  column.missingTexts = {"999", "-1"};
  DeclaredValues declared(column);
  EXPECT_THAT(
      declared.NeverMet(),
      ElementsAre(Pair(0, "column age: no case has the declared missing value 999"),
                  Pair(1, "column age: no case has the declared missing value -1"),
                  Pair(2, "column age: no case lies in the declared missing range 100 to 110")));
  declared.Meet(-1.0);
  declared.Meet(110.0);
  EXPECT_THAT(declared.NeverMet(),
              ElementsAre(Pair(0, "column age: no case has the declared missing value 999")));
  declared.Meet(999.0);
  EXPECT_THAT(declared.NeverMet(), IsEmpty());
}

TEST(DeclaredValues, CategoriesAreMetInAnyWriting) {
  ColumnPlan column;
  column.name = "t";
  column.missingTexts = {"unknown", "9"};
  DeclaredValues declared(column);
  declared.Meet("yes");
  declared.Meet("9.0");
  EXPECT_THAT(declared.NeverMet(),
              ElementsAre(Pair(0, "column t: no case has the declared missing value unknown")));
}

TEST(DeclaredValues, NothingDeclaredNothingSaid) {
  const ColumnPlan column;
  EXPECT_THAT(DeclaredValues(column).NeverMet(), IsEmpty());
}

}  // namespace
}  // namespace mcbin
