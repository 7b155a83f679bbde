#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "errors.h"
#include "export/sql_export.h"
#include "export/table_export.h"
#include "model/attribute_choice.h"
#include "model/model_json.h"
#include "system/output_file.h"

namespace mcbin {
namespace {

struct ExportCommand {
  std::string model;
  std::string format;
  std::optional<std::string> style;
  std::optional<std::string> from;
  std::vector<std::string> attributePatterns;
  std::string output = "-";
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default -o loans.json\n"
    "  mcbin export loans.json --to sql --from loans --attribute age\n"
    "\n"
    "sql: one CASE per attribute over a column of numbers, NAME_bin as apply writes it; with "
    "--from\n"
    "a whole SELECT. csv: a line per bin. markdown: the tables that show prints.\n"
    "Exit status: 0 done, 1 the model cannot be used, 2 wrong usage, 3 internal error.";

std::string exported(const ExportCommand& command, const Model& model) {
  if (command.format == "csv") return modelToCsv(model);
  if (command.format == "markdown") return modelToMarkdown(model);
  return modelToSql(model, labelStyleOf(command.style.value_or("index")), command.from);
}

void runExport(const ExportCommand& command) {
  if (command.format != "sql" && (command.from || command.style)) {
    throw UsageError("--from and --as are for --to sql");
  }
  requireOtherFile(command.output, command.model, "the model");
  Model model = loadModel(command.model);
  keepAttributes(model, command.attributePatterns);
  OutputFile output(command.output);
  output.Write(exported(command, model));
  output.Commit();
}

}  // namespace

void addExportCommand(CLI::App& program) {
  CLI::App* const command =
      program.add_subcommand("export", "Write a model as SQL, CSV or Markdown");
  const auto options = std::make_shared<ExportCommand>();
  command->add_option("MODEL", options->model, "Model file that fit wrote")->required();
  command->add_option("--to", options->format, "sql, csv or markdown")
      ->required()
      ->check(CLI::IsMember({"sql", "csv", "markdown"}))
      ->type_name("FORMAT");
  command
      ->add_option("--as", options->style,
                   "What stands for a bin in SQL: index or interval [index]")
      ->check(CLI::IsMember({"index", "interval"}))
      ->type_name("HOW");
  command->add_option("--from", options->from, "Write a whole SELECT over this table (SQL)")
      ->type_name("TABLE");
  command
      ->add_option("-a,--attribute", options->attributePatterns,
                   "Only these attributes: a name, a number from 1, or a pattern with *, ? and "
                   "[...]; may be given again [all]")
      ->allow_extra_args(false)
      ->type_name("PATTERN");
  command->add_option("-o,--output", options->output, "Write to this file [standard output]")
      ->type_name("FILE");
  command->footer(kExamples);
  command->callback([options] { runExport(*options); });
}

}  // namespace mcbin
