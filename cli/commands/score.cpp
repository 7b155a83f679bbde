#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/commands/options.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/errors.h"
#include "toolkit/fit/binning_pass.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/input/column_patterns.h"
#include "toolkit/input/open_table.h"
#include "toolkit/model/attribute_choice.h"
#include "toolkit/model/model_json.h"
#include "toolkit/score/score_formats.h"
#include "toolkit/system/output_file.h"

namespace mcbin {
namespace {

struct ScoreCommand {
  std::string model;
  InputOptions input;
  std::optional<std::string> target;
  std::optional<std::string> weight;
  bool noTarget = false;
  bool noWeight = false;
  std::vector<std::string> attributePatterns;
  std::string format = scoreFormats().front().name;
  std::string output = "-";
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default -o loans.json\n"
    "  mcbin score loans.json examples/data/loans.csv --attribute age\n"
    "\n"
    "The stability index of an attribute (PSI) sums (a - e) ln(a / e) over its bins, missing and\n"
    "declared missing cases, with their shares e of the weight in the fit and a in DATA; where "
    "one\n"
    "is 0, 0.5 is added to both weights. It is read as stable below 0.1, as some shift up to 0.25\n"
    "and as large shift above.\n";
constexpr const char* kExitStatus =
    "Exit status: 0 done, 1 the data cannot be used, 2 wrong usage, 3 internal error.";

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const ScoreFormat& format : scoreFormats()) names.emplace_back(format.name);
  return names;
}

std::string footer() {
  std::string text = kExamples;
  for (const ScoreFormat& format : scoreFormats()) {
    text += fmt::format("{}: {}.\n", format.name, format.help);
  }
  return text + kExitStatus;
}

/// The column that the user names, by name or number, else that of the fit.
template <class Fitted>
std::optional<std::string> columnName(const std::optional<std::string>& named, const char* option,
                                      const std::vector<std::string>& names,
                                      const std::optional<Fitted>& fitted) {
  if (named) return names[findColumn(names, *named, option)];
  return fitted ? std::optional(fitted->name) : std::nullopt;
}

ScoreRequest requestOf(const ScoreCommand& score, const Model& model,
                       const std::vector<std::string>& names) {
  ScoreRequest request;
  request.source = sourceOf(score.input);
  if (!score.noTarget) request.target = columnName(score.target, "--target", names, model.target);
  if (!score.noWeight) request.weight = columnName(score.weight, "--weight", names, model.weight);
  return request;
}

void runScore(const ScoreCommand& score) {
  if (score.model == "-" && score.input.data == "-") {
    throw UsageError("the model and the data cannot both come from standard input");
  }
  requireOtherFile(score.output, score.model, "the model");
  requireOtherFile(score.output, score.input.data, "the data");
  TerminalMonitor monitor;
  Model model = loadModel(score.model, monitor);
  keepAttributes(model, score.attributePatterns);
  const std::unique_ptr<TableReader> reader = openTable(score.input, monitor);
  OutputFile output(score.output, monitor);
  TextCases cases(*reader, model.options.naTexts);
  const ScoreRequest request = requestOf(score, model, reader->ColumnNames());
  output.Write(scoreFormat(score.format).write(model, scoreModel(model, request, cases, monitor)));
  output.Commit();
}

void addColumnOptions(CLI::App& command, ScoreCommand& score) {
  auto* const target = command.add_option("-t,--target", score.target,
                                          "Column of the target in DATA [as in the fit]");
  target->type_name("COLUMN");
  command.add_flag("--no-target", score.noTarget, "Count cases without their classes")
      ->excludes(target);
  auto* const weight = command.add_option("-w,--weight", score.weight,
                                          "Column of frequency weights in DATA [as in the fit]");
  weight->type_name("COLUMN");
  command.add_flag("--no-weight", score.noWeight, "Count every case once")->excludes(weight);
}

}  // namespace

void addScoreCommand(CLI::App& program) {
  CLI::App* const command = program.add_subcommand(
      "score", "Count other data in the bins of a model, side by side with the data of the fit");
  const auto score = std::make_shared<ScoreCommand>();
  addModelOption(*command, score->model);
  addInputOptions(*command, score->input);
  addColumnOptions(*command, *score);
  addAttributeOption(*command, score->attributePatterns);
  command
      ->add_option("--to", score->format,
                   fmt::format("{} [{}]", fmt::join(formatNames(), ", "), score->format))
      ->check(CLI::IsMember(formatNames()))
      ->type_name("FORMAT");
  addOutputOption(*command, score->output);
  command->footer(footer());
  command->callback([score] { runScore(*score); });
}

}  // namespace mcbin
