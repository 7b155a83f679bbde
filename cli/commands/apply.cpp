#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/commands/options.h"
#include "cli/text/messages.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/apply/row_binner.h"
#include "toolkit/errors.h"
#include "toolkit/input/open_table.h"
#include "toolkit/model/attribute_choice.h"
#include "toolkit/model/model_json.h"
#include "toolkit/system/output_file.h"

namespace mcbin {
namespace {

struct ApplyCommand {
  std::string model;
  InputOptions input;
  std::vector<std::string> attributePatterns;
  LabelStyle style = LabelStyle::Index;
  std::string output = "-";
  bool replace = false;
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default -o loans.json\n"
    "  mcbin apply loans.json examples/data/loans.csv --as interval -o binned.csv\n"
    "\n"
    "Column NAME gives NAME_bin: with --as index the number of the bin from 0, -1 when the value\n"
    "is missing and -2 when it is declared missing in the model; with --as interval the bin as a\n"
    "text, \"missing\" or \"user-missing\"; with --as woe NAME_woe, its weight of evidence; with\n"
    "--as bounds two columns NAME_lower and NAME_upper, empty without a bin. The output has\n"
    "commas between its cells, or tabs when FILE ends in .tsv.\n"
    "Exit status: 0 done, 1 the data cannot be used, 2 wrong usage, 3 internal error.";

bool endsIn(const std::string& text, const std::string& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

RowBinner::Options binnerOptions(const ApplyCommand& apply) {
  RowBinner::Options options;
  options.data = shownName(apply.input.data);
  options.style = apply.style;
  options.inPlace = apply.replace;
  options.delimiter = endsIn(apply.output, ".tsv") ? '\t' : ',';
  return options;
}

void runApply(const ApplyCommand& apply) {
  constexpr std::uint64_t kRowsPerUpdate = 4096;
  if (apply.model == "-" && apply.input.data == "-") {
    throw UsageError("the model and the data cannot both come from standard input");
  }
  requireOtherFile(apply.output, apply.model, "the model");
  requireOtherFile(apply.output, apply.input.data, "the data");
  TerminalMonitor monitor;
  Model model = loadModel(apply.model, monitor);
  keepAttributes(model, apply.attributePatterns);
  const std::unique_ptr<TableReader> reader = openTable(apply.input, monitor);
  RowBinner binner(model, *reader, binnerOptions(apply));
  OutputFile output(apply.output, monitor);
  if (!apply.input.noHeader) output.Write(binner.Header());
  TableRow row;
  std::uint64_t rows = 0;
  while (reader->NextRow(row)) {
    output.Write(binner.Line(row));
    if (++rows % kRowsPerUpdate == 0) {
      monitor.ThrowIfStopped();
      monitor.Update("binning cases", reader->ShareRead(), static_cast<double>(rows), "cases");
    }
  }
  output.Commit();
  monitor.Clear();
  remark(fmt::format("{} cases binned by {} attributes\n", rows, model.attributes.size()));
}

}  // namespace

void addApplyCommand(CLI::App& program) {
  CLI::App* const command = program.add_subcommand(
      "apply", "Put the cases of a table into the bins of a model, row by row");
  const auto apply = std::make_shared<ApplyCommand>();
  addModelOption(*command, apply->model);
  addInputOptions(*command, apply->input);
  addAttributeOption(*command, apply->attributePatterns);
  addChoice(*command, "--as", apply->style, kLabelStyles,
            "What stands for a bin: index, interval, woe or bounds [index]");
  command->add_flag("--replace", apply->replace,
                    "Put the bins in place of the columns they are made of, under the same name");
  addOutputOption(*command, apply->output);
  command->footer(kExamples);
  command->callback([apply] { runApply(*apply); });
}

}  // namespace mcbin
