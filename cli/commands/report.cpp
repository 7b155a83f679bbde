#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/commands/options.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/model/attribute_choice.h"
#include "toolkit/model/model_json.h"
#include "toolkit/report/report_page.h"
#include "toolkit/system/output_file.h"

namespace mcbin {
namespace {

struct ReportCommand {
  std::string model;
  std::vector<std::string> attributePatterns;
  std::string output = "-";
};

constexpr const char* kExamples =
    "Examples:\n"
    "  mcbin fit examples/data/loans.csv --target default -o loans.json\n"
    "  mcbin report loans.json -o loans.html\n"
    "\n"
    "The page needs no network and no other file.\n"
    "Exit status: 0 done, 1 the model cannot be used, 2 wrong usage, 3 internal error.";

void runReport(const ReportCommand& report) {
  requireOtherFile(report.output, report.model, "the model");
  TerminalMonitor monitor;
  Model model = loadModel(report.model, monitor);
  keepAttributes(model, report.attributePatterns);
  OutputFile file(report.output, monitor);
  file.Write(reportPage(model));
  file.Commit();
}

}  // namespace

void addReportCommand(CLI::App& program) {
  CLI::App* const command = program.add_subcommand(
      "report", "Show a model as one page of charts and tables for a browser");
  const auto report = std::make_shared<ReportCommand>();
  addModelOption(*command, report->model);
  addAttributeOption(*command, report->attributePatterns);
  addOutputOption(*command, report->output);
  command->footer(kExamples);
  command->callback([report] { runReport(*report); });
}

}  // namespace mcbin
