/// Options that stand in a file.
#ifndef MCBIN_CLI_COMMANDS_OPTIONS_FILE_H
#define MCBIN_CLI_COMMANDS_OPTIONS_FILE_H

namespace CLI {
class App;
}

namespace mcbin {

/// Adds --config FILE: lines NAME = VALUE in the manner of TOML, NAME an option of the command that
/// runs. Lines under [COMMAND] count for that command alone. What the command line says goes first.
void addOptionsFile(CLI::App& program);

}  // namespace mcbin

#endif
