#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <memory>
#include <new>
#include <string>

#include "cli/commands/commands.h"
#include "cli/system/interrupt.h"
#include "cli/system/standard_streams.h"
#include "cli/system/terminal.h"
#include "cli/text/help_format.h"
#include "cli/text/parse_errors.h"
#include "toolkit/errors.h"

namespace {

using mcbin::ExitCode;

constexpr int kSignalExitBase = 128;

void printError(const std::string& message) {
  const bool colour = mcbin::errorTakesColour();
  std::fputs(colour ? "\x1b[31mmcbin:\x1b[0m " : "mcbin: ", stderr);
  mcbin::tell(message + "\n");
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
    return program.exit(success);
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
  program.set_version_flag("--version", "mcbin " MCBIN_VERSION, "Print the version and exit");
  program.require_subcommand(0, 1);
  mcbin::addFitCommand(program);
  mcbin::addApplyCommand(program);
  mcbin::addShowCommand(program);
  mcbin::addExportCommand(program);
  mcbin::addReportCommand(program);
  return parseAndRun(program, argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const mcbin::Interrupted& interrupted) {
    printError("interrupted");
    return kSignalExitBase + interrupted.signal;
  } catch (const mcbin::DataError& error) {
    printError(error.what());
    return ExitCode::kDataError;
  } catch (const std::bad_alloc&) {
    printError("out of memory");
    return ExitCode::kInternalError;
  } catch (const std::exception& error) {
    printError(std::string("internal error: ") + error.what());
    return ExitCode::kInternalError;
  }
}
