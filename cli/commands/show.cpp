#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/commands/options.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/model/attribute_choice.h"
#include "toolkit/model/model_json.h"
#include "toolkit/system/output_file.h"
#include "toolkit/tables/model_tables.h"

namespace mcbin {
namespace {

struct ShowCommand {
  std::string model;
  std::vector<std::string> attributePatterns;
  bool json = false;
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default -o loans.json\n"
    "  mcbin show loans.json --attribute age\n"
    "\n"
    "Exit status: 0 done, 1 the model cannot be used, 2 wrong usage, 3 internal error.";

void runShow(const ShowCommand& show) {
  TerminalMonitor monitor;
  Model model = loadModel(show.model, monitor);
  keepAttributes(model, show.attributePatterns);
  writeStandardOutput(show.json ? modelToJson(model) : modelText(model), monitor);
}

}  // namespace

void addShowCommand(CLI::App& program) {
  CLI::App* const command =
      program.add_subcommand("show", "Print the tables of a model again, from the model alone");
  const auto show = std::make_shared<ShowCommand>();
  addModelOption(*command, show->model);
  addAttributeOption(*command, show->attributePatterns);
  command->add_flag("--json", show->json, "Print the model in place of the tables");
  command->footer(kExamples);
  command->callback([show] { runShow(*show); });
}

}  // namespace mcbin
