#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/text/parse_errors.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/errors.h"
#include "toolkit/system/output_file.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

void printHelp(const CLI::App& program, const std::string& name) {
  const std::vector<std::string> names = commandNames(program);
  if (std::find(names.begin(), names.end(), name) == names.end()) {
    throw UsageError(fmt::format("there is no command {}{}", excerpt(name), proposal(name, names)));
  }
  TerminalMonitor monitor;
  writeStandardOutput(program.get_subcommand(name)->help(program.get_name()), monitor);
}

}  // namespace

void addHelpCommand(CLI::App& program) {
  CLI::App* const command = program.add_subcommand("help", "Print the help of a command");
  const auto name = std::make_shared<std::string>();
  command->add_option("COMMAND", *name, "The command")->required();
  command->callback([&program, name] { printHelp(program, *name); });
}

}  // namespace mcbin
