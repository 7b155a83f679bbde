/// Opening a table, whatever its kind.
#ifndef MCBIN_TOOLKIT_INPUT_OPEN_TABLE_H
#define MCBIN_TOOLKIT_INPUT_OPEN_TABLE_H

#include <memory>
#include <optional>
#include <string>

#include "toolkit/input/byte_source.h"
#include "toolkit/input/table_reader.h"
#include "toolkit/monitor.h"

namespace mcbin {

/// What the user says of the data.
struct InputOptions {
  std::string data;  ///< A path, or "-" for standard input.
  bool noHeader = false;
  std::optional<std::string> delimiter;  ///< One character, or "tab"; by default from the name.
  std::optional<std::string> table;      ///< SQLite.
  std::optional<std::string> query;      ///< SQLite.
};

/// Opens the table, recognising gzip and the formats by their first bytes. Standard input and pipes
/// are copied to an unnamed temporary file first, so that every table can be read twice. Throws
/// DataError, or UsageError when options contradict what the data are. The monitor is asked while
/// the table is opened and read, and must live as long as the reader.
std::unique_ptr<TableReader> openTable(const InputOptions& options, Monitor& monitor);

}  // namespace mcbin

#endif
