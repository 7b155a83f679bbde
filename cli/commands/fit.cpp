#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/commands/options.h"
#include "cli/system/muted_output.h"
#include "cli/text/fit_report.h"
#include "cli/text/messages.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/errors.h"
#include "toolkit/fit/fit_model.h"
#include "toolkit/fit/fit_request.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/input/cells.h"
#include "toolkit/model/model_json.h"
#include "toolkit/system/output_file.h"
#include "toolkit/tables/model_tables.h"

namespace mcbin {
namespace {

struct FitCommand {
  FitRequest request;
  std::optional<int> bins;
  std::optional<int> threshold;
  std::optional<double> smallBins;
  std::vector<std::string> cuts;
  std::vector<std::string> naTexts;
  bool roundingGiven = false;
  bool equalFrequency = false;
  bool leftClosed = false;
  bool json = false;
  bool timings = false;
  std::optional<std::string> output;
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default --weight weight \\\n"
    "      --missing income=-1 --missing employment_years=999 -o loans.json\n"
    "  mcbin fit examples/data/loans.csv --equal-frequency --bins 4 --attribute age\n"
    "\n"
    "Temporary files go to the directory that TMPDIR names, by default to the system's.\n"
    "Exit status: 0 done, 1 the data cannot be used, 2 wrong usage, 3 internal error.";

void addTargetOptions(CLI::App& command, FitCommand& fit) {
  command
      .add_option("-t,--target", fit.request.target,
                  "Column whose categories the bins are to separate (name or number)")
      ->type_name("COLUMN");
  command
      .add_option("--event", fit.request.event,
                  "The category of a target with two whose rate and evidence the tables show "
                  "[the one that sorts last]")
      ->type_name("CATEGORY");
  command
      .add_option("--woe-adjustment", fit.request.evidenceAdjustment,
                  "What is added to both counts of a bin in which one of two categories does not "
                  "occur, for its weight of evidence [0.5]")
      ->check(numberRefusal)
      ->type_name("NUMBER");
}

void addColumnOptions(CLI::App& command, FitCommand& fit) {
  addRepeated(command, "-a,--attribute", fit.request.attributePatterns,
              "Cut only these columns: a name, a number from 1, or a pattern with *, ? and [...]; "
              "may be given again [every scale column]",
              "PATTERN");
  addRepeated(command, "-x,--exclude", fit.request.excludePatterns,
              "Leave these columns out; may be given again", "PATTERN");
  command.add_option("-w,--weight", fit.request.weight, "Column of frequency weights")
      ->type_name("COLUMN");
  addChoice(command, "--weight-rounding", fit.request.rounding, kWeightRoundings,
            "How weights become whole numbers: truncate or round; a case whose weight is then not "
            "positive is dropped [truncate]");
  addRepeated(command, "--type", fit.request.types,
              "COLUMN=scale or COLUMN=category; may be given again", "COLUMN=TYPE");
  addRepeated(command, "--na", fit.naTexts,
              fmt::format("Text that stands for a missing value, in place of the default list; may "
                          "be given again; an empty cell always is missing [{}]",
                          fmt::join(defaultNaTexts(), " ")),
              "TEXT");
  addRepeated(command, "--missing", fit.request.missing,
              "User-missing values of a column: COLUMN=VALUE,VALUE...; may be given again",
              "COLUMN=VALUES");
  addRepeated(command, "--missing-range", fit.request.missingRanges,
              "User-missing range of a column, both ends included: COLUMN=LOW:HIGH",
              "COLUMN=RANGE");
}

void addBinningOptions(CLI::App& command, FitCommand& fit) {
  command.add_flag("-e,--equal-frequency", fit.equalFrequency,
                   "Bins of equal weight, without a target");
  command
      .add_option("-b,--bins", fit.bins,
                  fmt::format("With --equal-frequency the number of bins [{}], else the number of "
                              "pre-bins of an attribute above --threshold [{}]",
                              kDefaultEqualFrequencyBins, kDefaultPreBins))
      ->check(wholeNumberRefusal)
      ->type_name("N");
  command
      .add_option("--threshold", fit.threshold,
                  "Attributes with more distinct values than this are reduced to pre-bins of equal "
                  "weight first; 0 for never [0]")
      ->check(wholeNumberRefusal)
      ->type_name("N");
  command
      .add_option("--small-bins", fit.smallBins,
                  "Merge an inner bin that is lighter than this fraction of its lighter neighbour, "
                  "0 to 1; 0 for never [0]")
      ->check(numberRefusal)
      ->type_name("FRACTION");
  command.add_flag("--left-closed", fit.leftClosed, "Bins [a, b) in place of (a, b]");
}

void addLimitOptions(CLI::App& command, FitCommand& fit) {
  addRepeated(command, "--cuts", fit.cuts,
              "Cut a column at these points, without a search: COLUMN=NUMBER,NUMBER..., or a file "
              "with such lines or with a model; may be given again",
              "CUTS");
  command
      .add_option("--min-bin-share", fit.request.minBinShare,
                  "Join neighbouring bins, those that lose the least information first, until each "
                  "holds this share of the weight, missing cases included; 0 to 1")
      ->check(numberRefusal)
      ->type_name("SHARE");
  command
      .add_option("--min-bin-weight", fit.request.minBinWeight,
                  "The same until each has this weight")
      ->check(numberRefusal)
      ->type_name("WEIGHT");
  command
      .add_option("--max-bins", fit.request.maxBins,
                  "The same until an attribute has at most N bins")
      ->check(wholeNumberRefusal)
      ->type_name("N");
}

void addOutputOptions(CLI::App& command, FitCommand& fit) {
  command
      .add_option("-o,--output", fit.output,
                  "Write the model to this file; - prints it in place of the tables")
      ->check(emptyNameRefusal)
      ->type_name("FILE");
  command.add_flag("--json", fit.json, "Print the model as JSON in place of the tables");
  command.add_flag("--timings", fit.timings,
                   "Tell on standard error how long reading, binning and writing took");
}

void checkMethod(const FitCommand& fit) {
  if (!fit.equalFrequency && !fit.request.target) {
    throw UsageError("name the target with --target COLUMN, or ask for --equal-frequency bins");
  }
  if (!fit.equalFrequency) return;
  if (fit.request.target) {
    throw UsageError(
        "--equal-frequency bins have no target: leave --target out, or exclude the "
        "column with --exclude");
  }
  const std::pair<const char*, bool> given[] = {
      {"--threshold", fit.threshold.has_value()},
      {"--small-bins", fit.smallBins.has_value()},
      {"--min-bin-share", fit.request.minBinShare.has_value()},
      {"--min-bin-weight", fit.request.minBinWeight.has_value()},
      {"--max-bins", fit.request.maxBins.has_value()},
      {"--event", fit.request.event.has_value()},
      {"--woe-adjustment", fit.request.evidenceAdjustment.has_value()}};
  for (const auto& [option, isGiven] : given) {
    if (isGiven) throw UsageError(fmt::format("{} is for binning with a --target", option));
  }
}

void completeRequest(FitCommand& fit) {
  checkMethod(fit);
  FitRequest& request = fit.request;
  request.method = fit.equalFrequency ? Method::EqualFrequency : Method::Supervised;
  request.closedSide = fit.leftClosed ? ClosedSide::Left : ClosedSide::Right;
  request.bins =
      fit.bins.value_or(fit.equalFrequency ? kDefaultEqualFrequencyBins : kDefaultPreBins);
  request.distinctValueThreshold = fit.threshold.value_or(0);
  request.smallBinThreshold = fit.smallBins.value_or(0.0);
  request.naTexts = fit.naTexts.empty() ? defaultNaTexts() : fit.naTexts;
  checkNumbers(request);
  if (!request.weight && fit.roundingGiven) throw UsageError("--weight-rounding needs a --weight");
  if (!fit.equalFrequency && fit.bins && request.distinctValueThreshold == 0) {
    remark("note: --bins has no effect without --threshold or --equal-frequency\n");
  }
}

void readCuts(FitCommand& fit, Monitor& monitor) {
  for (const std::string& text : fit.cuts) {
    for (GivenCuts& cuts : readGivenCuts(text, monitor)) {
      fit.request.cuts.push_back(std::move(cuts));
    }
  }
}

void runFit(FitCommand& fit) {
  completeRequest(fit);
  TerminalMonitor monitor;
  readCuts(fit, monitor);
  const std::unique_ptr<TableReader> reader = openTable(fit.request.input, monitor);
  const bool printsModel = fit.json || fit.output == "-";
  std::optional<OutputFile> file;  // opened at once: a wrong path shows before the work
  if (fit.output && fit.output != "-") {
    requireOtherFile(*fit.output, fit.request.input.data, "the data");
    file.emplace(*fit.output, monitor);
  }
  const auto tellPlan = [&](const auto& columns, std::uint64_t rows, const auto& categories) {
    remark(planText(columns, fit.request.input.data, rows, categories));
  };
  const auto tellNote = [](const std::string& note) { remark("note: " + note + "\n"); };
  FitTimings timings;
  TextCases cases(*reader, fit.request.naTexts);
  const Model model = [&] {
    MutedStandardOutput muted;
    Model fitted =
        fitModel(fit.request, cases, {monitor, tellPlan, fit.timings, tellNote}, timings);
    muted.End();
    return fitted;
  }();
  const auto start = std::chrono::steady_clock::now();
  if (file) {
    file->Write(modelToJson(model));
    file->Commit();
  }
  writeStandardOutput(printsModel ? modelToJson(model) : modelText(model), monitor);
  if (model.cases.droppedForWeight > 0) {
    remark(fmt::format(
        "{} of {} cases dropped for their weight (missing, or not positive after rounding)\n",
        model.cases.droppedForWeight, model.cases.read));
  }
  if (fit.timings) {
    const std::chrono::duration<double> writing = std::chrono::steady_clock::now() - start;
    tell(timingsText(timings, writing.count()));
  }
}

}  // namespace

void addFitCommand(CLI::App& program) {
  CLI::App* const command = program.add_subcommand(
      "fit", "Cut the scale columns of a table into bins, print the tables, write a model");
  const auto fit = std::make_shared<FitCommand>();
  addInputOptions(*command, fit->request.input);
  addTargetOptions(*command, *fit);
  addColumnOptions(*command, *fit);
  addBinningOptions(*command, *fit);
  addLimitOptions(*command, *fit);
  addOutputOptions(*command, *fit);
  command->footer(kExamples);
  command->callback([fit, command] {
    fit->roundingGiven = command->count("--weight-rounding") > 0;
    runFit(*fit);
  });
}

}  // namespace mcbin
