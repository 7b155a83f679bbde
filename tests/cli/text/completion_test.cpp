#include "cli/text/completion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace mcbin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// A program with one option for all, a command with options of each kind, and one on commands.
class CompletionTest : public testing::Test {
 protected:
  CompletionTest() {
    program_.set_help_flag("-h,--help", "Print this help");
    program_.add_flag("-q,--quiet", quiet_, "Be quiet");
    CLI::App* const fit = program_.add_subcommand("fit", "Cut columns; all of them");
    fit->set_help_flag("-h,--help", "Print this help");
    fit->add_option("DATA", text_, "Table");
    fit->add_option("-o,--output", text_, "Write [here]")->type_name("FILE");
    fit->add_option("--as", text_, "It's what: a word")
        ->check(CLI::IsMember({"index", "woe"}))
        ->type_name("HOW");
    fit->add_option("--name", texts_, "A name")->allow_extra_args(false)->type_name("TEXT");
    program_.add_subcommand("help", "Help")->add_option("COMMAND", text_, "The command");
  }

  CLI::App program_{"What it does", "mcbin"};
  bool quiet_ = false;
  std::string text_;
  std::vector<std::string> texts_;
};

TEST_F(CompletionTest, TheSyntaxIsThatOfTheCommands) {
  const std::vector<CommandSyntax> commands = syntaxOf(program_);
  ASSERT_EQ(commands.size(), 3u);
  EXPECT_EQ(commands[0].name, "");
  EXPECT_THAT(commands[0].positionals[0].words, ElementsAre("fit", "help"));
  const CommandSyntax& fit = commands[1];
  EXPECT_EQ(fit.description, "Cut columns");
  EXPECT_TRUE(fit.positionals[0].isFile);
  ASSERT_EQ(fit.options.size(), 5u);
  EXPECT_THAT(fit.options[1].names, ElementsAre("-o", "--output"));
  EXPECT_EQ(fit.options[1].description, "Write");
  EXPECT_TRUE(fit.options[1].takesValue && fit.options[1].value.isFile);
  EXPECT_THAT(fit.options[2].value.words, ElementsAre("index", "woe"));
  EXPECT_TRUE(fit.options[3].repeats);
  EXPECT_FALSE(fit.options[3].value.isFile);
  EXPECT_THAT(fit.options[4].names, ElementsAre("-q", "--quiet"));
  EXPECT_FALSE(fit.options[4].takesValue);
  EXPECT_THAT(commands[2].positionals[0].words, ElementsAre("fit", "help"));
}

TEST_F(CompletionTest, BashGetsItsCases) {
  const std::string script = bashCompletion(syntaxOf(program_));
  for (const char* line :
       {"    fit,-o|fit,--output) compopt -o default; return ;;\n",
        "    fit,--as) words='index woe' ;;\n", "    fit,--name) return ;;\n",
        "        fit,-*) words='-h --help -o --output --as --name -q --quiet' ;;\n",
        "        fit,*) compopt -o default; return ;;\n", "        ,*) words='fit help' ;;\n",
        "        help,*) words='fit help' ;;\n"}) {
    EXPECT_THAT(script, HasSubstr(line));
  }
}

TEST_F(CompletionTest, ZshGetsItsSpecifications) {
  const std::string script = zshCompletion(syntaxOf(program_));
  for (const char* line :
       {"    'fit:Cut columns'\n", "'(-o --output)'{-o+,--output=}'[Write]:FILE:_files'",
        "'(--as)'--as='[It'\\''s what]:HOW:(index woe)'", "'*'--name='[A name]:TEXT: '",
        "'(-q --quiet)'{-q,--quiet}'[Be quiet]'", "'1:DATA:_files'", "'1:COMMAND:(fit help)'"}) {
    EXPECT_THAT(script, HasSubstr(line));
  }
}

TEST_F(CompletionTest, FishGetsItsLines) {
  const std::string script = fishCompletion(syntaxOf(program_));
  const std::string fit = "complete -c mcbin -n '__fish_seen_subcommand_from fit'";
  for (const std::string& line :
       {std::string("complete -c mcbin -n __fish_use_subcommand -a fit -d 'Cut columns'\n"),
        fit + " -s o -l output -r -F -d 'Write'\n",
        fit + " -l as -x -a 'index woe' -d 'It\\'s what'\n", fit + " -l name -x -d 'A name'\n",
        fit + " -s q -l quiet -d 'Be quiet'\n", fit + " -F\n"}) {
    EXPECT_THAT(script, HasSubstr(line));
  }
}

}  // namespace
}  // namespace mcbin
