/// The commands. Each adds itself to the program and runs from its own options.
#ifndef MCBIN_CLI_COMMANDS_COMMANDS_H
#define MCBIN_CLI_COMMANDS_COMMANDS_H

namespace CLI {
class App;
}

namespace mcbin {

/// Each adds its command; when the command line names it, it runs at the end of parsing. It throws
/// the errors of errors.h.
void addFitCommand(CLI::App& program);
void addApplyCommand(CLI::App& program);
void addShowCommand(CLI::App& program);
void addExportCommand(CLI::App& program);
void addReportCommand(CLI::App& program);
void addScoreCommand(CLI::App& program);
void addHelpCommand(CLI::App& program);
void addCompletionCommand(CLI::App& program);

}  // namespace mcbin

#endif
