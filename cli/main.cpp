#include <CLI/CLI.hpp>
#include <exception>
#include <memory>
#include <new>
#include <sstream>
#include <string>

#include "cli/commands/commands.h"
#include "cli/system/interrupt.h"
#include "cli/system/standard_streams.h"
#include "cli/system/terminal.h"
#include "cli/text/help_format.h"
#include "cli/text/messages.h"
#include "cli/text/parse_errors.h"
#include "cli/text/terminal_monitor.h"
#include "toolkit/errors.h"
#include "toolkit/system/output_file.h"

namespace {

using mcbin::ExitCode;

constexpr int kSignalExitBase = 128;

void printError(const std::string& message) {
  const bool colour = mcbin::errorTakesColour();
  mcbin::writeError(colour ? "\x1b[31mmcbin:\x1b[0m " : "mcbin: ");
  mcbin::tell(message + "\n");
}

/// The exit code of a failed run: that of the signal which arrived, if one did, else `code`.
int failed(const std::string& message, int code) {
  printError(message);
  const int signal = mcbin::interruptSignal();
  return signal == 0 ? code : kSignalExitBase + signal;
}

int usageError(const CLI::App& program, const std::string& message) {
  std::string command = "mcbin";
  for (const CLI::App* subcommand : program.get_subcommands()) {
    command += " " + subcommand->get_name();
  }
  printError(message + "\nSee " + command + " --help.");
  return ExitCode::kUsageError;
}

int parseAndRun(CLI::App& program, int argc, char** argv) {
  try {
    program.parse(argc, argv);
    if (program.get_subcommands().empty()) throw mcbin::UsageError(mcbin::commandList(program));
    return ExitCode::kDone;
  } catch (const CLI::Success& success) {
    std::ostringstream text;
    const int code = program.exit(success, text, text);
    mcbin::TerminalMonitor monitor;
    mcbin::writeStandardOutput(text.str(), monitor);
    return code;
  } catch (const CLI::ParseError& error) {
    return usageError(program, mcbin::parseErrorText(program, error));
  } catch (const mcbin::UsageError& error) {
    return usageError(program, error.what());
  }
}

int run(int argc, char** argv) {
  mcbin::openStandardStreams();
  mcbin::catchInterrupts();
  CLI::App program(
      "Cuts scale columns of a table into bins that separate the categories of a "
      "target, or into bins of equal frequency.",
      "mcbin");
  program.formatter(std::make_shared<mcbin::HelpFormatter>());
  program.set_help_flag("-h,--help", "Print this help and exit");
  program.add_flag_callback("-q,--quiet", mcbin::beQuiet,
                            "Tell errors and what was asked for, nothing else");
  program.set_version_flag("-V,--version", "mcbin " MCBIN_VERSION, "Print the version and exit");
  program.require_subcommand(0, 1);
  program.allow_windows_style_options(false);  // a path may begin with a slash
  mcbin::addFitCommand(program);
  mcbin::addApplyCommand(program);
  mcbin::addShowCommand(program);
  mcbin::addExportCommand(program);
  mcbin::addReportCommand(program);
  mcbin::addScoreCommand(program);
  mcbin::addHelpCommand(program);
  mcbin::addCompletionCommand(program);
  for (CLI::App* command : program.get_subcommands({})) command->fallthrough();
  return parseAndRun(program, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const mcbin::Interrupted& interrupted) {
    return failed(interrupted.what(), kSignalExitBase + interrupted.signal);
  } catch (const mcbin::DataError& error) {
    return failed(error.what(), ExitCode::kDataError);
  } catch (const std::bad_alloc&) {
    return failed("out of memory", ExitCode::kInternalError);
  } catch (const std::exception& error) {
    return failed(std::string("internal error: ") + error.what(), ExitCode::kInternalError);
  }
}
