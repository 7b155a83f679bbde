#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/commands/options.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/errors.h"
#include "toolkit/export/export_formats.h"
#include "toolkit/model/attribute_choice.h"
#include "toolkit/model/model_json.h"
#include "toolkit/system/output_file.h"

namespace mcbin {
namespace {

struct ExportCommand {
  std::string model;
  std::string format;
  std::optional<LabelStyle> style;
  std::optional<std::string> from;
  std::optional<SqlDialect> dialect;
  std::vector<std::string> attributePatterns;
  std::string output = "-";
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default -o loans.json\n"
    "  mcbin export loans.json --to sql --from loans --attribute age\n"
    "\n";
constexpr const char* kExitStatus =
    "Exit status: 0 done, 1 the model cannot be used, 2 wrong usage, 3 internal error.";

/// A statement gives a bin one column.
constexpr std::span kStatementStyles(kLabelStyles, 3);

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const ExportFormat& format : exportFormats()) names.emplace_back(format.name);
  return names;
}

std::string footer() {
  std::string text = kExamples;
  for (const ExportFormat& format : exportFormats()) {
    text += fmt::format("{}: {}.\n", format.name, format.help);
  }
  return text + kExitStatus;
}

void runExport(const ExportCommand& command) {
  const ExportFormat& format = exportFormat(command.format);
  if (!format.isStatement && (command.from || command.style || command.dialect)) {
    throw UsageError("--from, --as and --dialect are for --to sql");
  }
  requireOtherFile(command.output, command.model, "the model");
  TerminalMonitor monitor;
  Model model = loadModel(command.model, monitor);
  keepAttributes(model, command.attributePatterns);
  OutputFile output(command.output, monitor);
  output.Write(format.write(model, {command.style.value_or(LabelStyle::Index), command.from,
                                    command.dialect.value_or(SqlDialect::Sqlite)}));
  output.Commit();
}

}  // namespace

void addExportCommand(CLI::App& program) {
  CLI::App* const command =
      program.add_subcommand("export", "Write a model as SQL, CSV, Markdown or JSON");
  const auto options = std::make_shared<ExportCommand>();
  addModelOption(*command, options->model);
  command->add_option("--to", options->format, fmt::format("{}", fmt::join(formatNames(), ", ")))
      ->required()
      ->check(CLI::IsMember(formatNames()))
      ->type_name("FORMAT");
  addChoice(*command, "--as", options->style, kStatementStyles,
            "What stands for a bin in SQL: index, interval or woe (see apply) [index]");
  command
      ->add_option(
          "--from", options->from,
          "Write a whole SELECT over this table (SQL); SCHEMA.TABLE names a schema too, and a "
          "name that holds a dot or a quote stands in double quotes")
      ->type_name("TABLE");
  addChoice(*command, "--dialect", options->dialect, kSqlDialects,
            "The SQL of sqlite, postgresql, duckdb, spark or ansi [sqlite]");
  addAttributeOption(*command, options->attributePatterns);
  addOutputOption(*command, options->output);
  command->footer(footer());
  command->callback([options] { runExport(*options); });
}

}  // namespace mcbin
