/// The input options that all commands share, and opening what they name.
#ifndef MCBIN_INPUT_OPEN_TABLE_H
#define MCBIN_INPUT_OPEN_TABLE_H

#include <memory>
#include <optional>
#include <string>

#include "input/table_reader.h"

namespace CLI {
class App;
}

namespace mcbin {

struct InputOptions {
  std::string data;  ///< A path, or "-" for standard input.
  bool noHeader = false;
  std::optional<std::string> delimiter;  ///< One character, or "tab"; by default from the name.
  std::optional<std::string> table;      ///< SQLite.
  std::optional<std::string> query;      ///< SQLite.
};

/// Adds DATA, --no-header, --delimiter, --table and --query to a command.
void addInputOptions(CLI::App& command, InputOptions& options);

/// Opens the table, recognising gzip and SQLite by their first bytes. Standard input and pipes are
/// copied to an unnamed temporary file first, so that every table can be read twice. Throws
/// DataError, or UsageError when options contradict what the data are.
std::unique_ptr<TableReader> openTable(const InputOptions& options);

}  // namespace mcbin

#endif
