#include "cli/text/help_format.h"

#include <gtest/gtest.h>

namespace mcbin {
namespace {

TEST(HelpFormat, BreaksAtBlanks) {
  EXPECT_EQ(wrapped("one two three", 7, 2), "one two\n  three");
  EXPECT_EQ(wrapped("extraordinary two", 7, 1), "extraordinary\n two");
  EXPECT_EQ(wrapped("", 7, 1), "");
}

TEST(HelpFormat, DescriptionsStandInOneColumn) {
  CLI::App program("What it does.", "mcbin");
  program.formatter(std::make_shared<HelpFormatter>());
  program.set_help_flag("-h,--help", "Print this help and exit");
  std::string value;
  program.add_option("DATA", value, "Table")->required();
  program.add_option("-l,--long-name-of-an-option", value, "Text")->type_name("HOW");
  EXPECT_EQ(program.help(),
            "What it does.\n"
            "Usage: mcbin [OPTIONS] DATA\n"
            "\n"
            "Positionals:\n"
            "  DATA                    Table\n"
            "\n"
            "Options:\n"
            "  -h,--help               Print this help and exit\n"
            "  -l,--long-name-of-an-option HOW\n"
            "                          Text\n"
            "\n");
}

}  // namespace
}  // namespace mcbin
