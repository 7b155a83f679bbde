#include "cli/text/completion.h"

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/commands/options.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/system/output_file.h"

namespace mcbin {
namespace {

using Completion = std::string (*)(const std::vector<CommandSyntax>&);

struct Shell {
  const char* name;
  Completion value;
};

constexpr std::array<Shell, 3> kShells = {
    {{"bash", bashCompletion}, {"zsh", zshCompletion}, {"fish", fishCompletion}}};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin completion bash > mcbin.bash\n"
    "  source mcbin.bash\n"
    "\n"
    "An installed mcbin has brought its completion along.";

}  // namespace

void addCompletionCommand(CLI::App& program) {
  CLI::App* const command =
      program.add_subcommand("completion", "Print what a shell needs to complete command lines");
  const auto completion = std::make_shared<Completion>(nullptr);
  addChoice(*command, "SHELL", *completion, kShells, "The shell: bash, zsh or fish")->required();
  command->footer(kExamples);
  command->callback([&program, completion] {
    TerminalMonitor monitor;
    writeStandardOutput((*completion)(syntaxOf(program)), monitor);
  });
}

}  // namespace mcbin
