#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "model/attribute_choice.h"
#include "model/model_json.h"
#include "system/output_file.h"
#include "text/model_tables.h"

namespace mcbin {
namespace {

struct ShowCommand {
  std::string model;
  std::vector<std::string> attributePatterns;
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default -o loans.json\n"
    "  mcbin show loans.json --attribute age\n"
    "\n"
    "Exit status: 0 done, 1 the model cannot be used, 2 wrong usage, 3 internal error.";

void runShow(const ShowCommand& show) {
  Model model = loadModel(show.model);
  keepAttributes(model, show.attributePatterns);
  writeStandardOutput(modelText(model));
}

}  // namespace

void addShowCommand(CLI::App& program) {
  CLI::App* const command =
      program.add_subcommand("show", "Print the tables of a model again, from the model alone");
  const auto show = std::make_shared<ShowCommand>();
  command->add_option("MODEL", show->model, "Model file that fit wrote")->required();
  command
      ->add_option("-a,--attribute", show->attributePatterns,
                   "Only these attributes: a name, a number from 1, or a pattern with *, ? and "
                   "[...]; may be given again [all]")
      ->allow_extra_args(false)
      ->type_name("PATTERN");
  command->footer(kExamples);
  command->callback([show] { runShow(*show); });
}

}  // namespace mcbin
