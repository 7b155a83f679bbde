#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "commands/commands.h"
#include "model/attribute_choice.h"
#include "model/model_json.h"
#include "report/report_page.h"
#include "system/output_file.h"

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
  Model model = loadModel(report.model);
  keepAttributes(model, report.attributePatterns);
  OutputFile file(report.output);
  file.Write(reportPage(model));
  file.Commit();
}

}  // namespace

void addReportCommand(CLI::App& program) {
  CLI::App* const command = program.add_subcommand(
      "report", "Show a model as one page of charts and tables for a browser");
  const auto report = std::make_shared<ReportCommand>();
  command->add_option("MODEL", report->model, "Model file that fit wrote")->required();
  command
      ->add_option("-a,--attribute", report->attributePatterns,
                   "Only these attributes: a name, a number from 1, or a pattern with *, ? and "
                   "[...]; may be given again [all]")
      ->allow_extra_args(false)
      ->type_name("PATTERN");
  command
      ->add_option("-o,--output", report->output,
                   "Write the page to this file, - for standard output [-]")
      ->type_name("FILE");
  command->footer(kExamples);
  command->callback([report] { runReport(*report); });
}

}  // namespace mcbin
