#include "toolkit/fit/given_cuts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/toolkit/support/example_model.h"
#include "tests/toolkit/support/temporary_file.h"
#include "toolkit/errors.h"
#include "toolkit/model/model_json.h"

namespace mcbin {
namespace {

using ::testing::ElementsAre;
using testing::messageOf;
using testing::TemporaryFiles;

std::vector<GivenCuts> read(const std::string& text) {
  Monitor monitor;
  return readGivenCuts(text, monitor);
}

TEST(GivenCuts, OfAnOption) {
  const auto cuts = read("a=b= -1.5, 0 ,4e1");
  ASSERT_EQ(cuts.size(), 1U);
  EXPECT_EQ(cuts[0].column, "a=b");
  EXPECT_THAT(cuts[0].cutPoints, ElementsAre(-1.5, 0.0, 40.0));
  EXPECT_FALSE(cuts[0].closedSide);
}

TEST(GivenCuts, OfAnOptionThatIsWrong) {
  for (const auto& [text, message] : {
           std::pair{"=1", "--cuts =1: write COLUMN=NUMBER,NUMBER..."},
           {"a=", "--cuts a=: '' is not a finite number"},
           {"a=1,inf", "--cuts a=1,inf: 'inf' is not a finite number"},
           {"a=1,1", "--cuts a=1,1: the cut points must ascend: '1' is not above the one before"},
       }) {
    EXPECT_EQ(messageOf<UsageError>([wrong = std::string(text)] { read(wrong); }), message);
  }
}

TEST(GivenCuts, OfLines) {
  const TemporaryFiles files;
  const auto cuts = read(files.Write("cuts", "\xEF\xBB\xBF# scales\n\n a = 1,2 \r\n2=3\n"));
  ASSERT_EQ(cuts.size(), 2U);
  EXPECT_EQ(cuts[0].column, "a");
  EXPECT_THAT(cuts[0].cutPoints, ElementsAre(1.0, 2.0));
  EXPECT_EQ(cuts[1].column, "2");
  const std::string wrong = files.Write("wrong", "a=1\nb=x\n");
  EXPECT_EQ(messageOf<DataError>([&] { read(wrong); }),
            wrong + ", line 2: 'x' is not a finite number");
  const std::string empty = files.Write("empty", "#\n");
  EXPECT_EQ(messageOf<DataError>([&] { read(empty); }), empty + ": there are no cut points");
}

TEST(GivenCuts, OfAModel) {
  const TemporaryFiles files;
  const auto cuts = read(files.Write("m.json", modelToJson(testing::exampleModel())));
  ASSERT_EQ(cuts.size(), 2U);
  EXPECT_THAT(cuts[0].cutPoints, ElementsAre(0.5, 1e300));
  EXPECT_THAT(cuts[1].cutPoints, ElementsAre());
  EXPECT_EQ(cuts[0].closedSide, ClosedSide::Left);
}

}  // namespace
}  // namespace mcbin
