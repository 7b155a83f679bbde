#include "cli/text/parse_errors.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

std::string answerTo(const std::vector<std::string>& arguments) {
  CLI::App program("", "mcbin");
  std::string target;
  std::string data;
  CLI::App* const fit = program.add_subcommand("fit", "");
  fit->add_option("-t,--target", target);
  fit->add_option("DATA", data)->required();
  program.add_subcommand("show", "");
  try {
    program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& error) {
    return parseErrorText(program, error);
  }
  return "(parsed)";
}

TEST(ParseErrors, ProposeWhatWasProbablyMeant) {
  EXPECT_EQ(answerTo({"fit", "d", "--targt", "x"}),
            "there is no option --targt; did you mean --target?");
  EXPECT_EQ(answerTo({"fit", "d", "--targt=x"}),
            "there is no option --targt; did you mean --target?");
  EXPECT_EQ(answerTo({"fot"}), "there is no command fot; did you mean fit?");
  EXPECT_EQ(answerTo({"frobnicate"}), "there is no command frobnicate");
  EXPECT_EQ(answerTo({"--colour"}), "there is no option --colour");
  EXPECT_EQ(answerTo({"fit", "d", "e"}), "one argument too many: e");
}

TEST(ParseErrors, OtherErrorsKeepTheirMessage) {
  EXPECT_EQ(answerTo({"fit"}), "DATA is required");
  EXPECT_EQ(answerTo({"fit", "d", "-t"}), "--target: 1 required TEXT missing");
}

TEST(ParseErrors, TheNearestNameTakesAtMostTwoEdits) {
  const std::vector<std::string> names = {"fit", "apply", "show"};
  EXPECT_EQ(nearest("aply", names), "apply");
  EXPECT_EQ(nearest("swho", names), "show");
  EXPECT_EQ(nearest("export", names), "");
  EXPECT_EQ(nearest("x", names), "");
}

TEST(ParseErrors, ListsTheCommands) {
  CLI::App program;
  program.add_subcommand("fit", "");
  program.add_subcommand("show", "");
  EXPECT_EQ(commandList(program), "name a command: fit, show");
}

}  // namespace
}  // namespace mcbin
