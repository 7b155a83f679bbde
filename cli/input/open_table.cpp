#include "input/open_table.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <string_view>
#include <utility>

#include "errors.h"
#include "input/csv_reader.h"
#include "input/sqlite_reader.h"

namespace mcbin {
namespace {

bool endsWith(std::string_view text, std::string_view ending) {
  return text.size() >= ending.size() && text.substr(text.size() - ending.size()) == ending;
}

char delimiterOf(const InputOptions& options) {
  if (options.delimiter) {
    if (*options.delimiter == "tab" || *options.delimiter == "\\t") return '\t';
    if (options.delimiter->size() == 1 &&
        std::string_view("\"\r\n").find((*options.delimiter)[0]) == std::string_view::npos) {
      return (*options.delimiter)[0];
    }
    throw UsageError(fmt::format("--delimiter takes one character or the word tab, not '{}'",
                                 *options.delimiter));
  }
  std::string_view name = options.data;
  if (endsWith(name, ".gz")) name.remove_suffix(3);
  return endsWith(name, ".tsv") || endsWith(name, ".tab") ? '\t' : ',';
}

std::unique_ptr<TableReader> openDatabase(const InputOptions& options, const ByteSource& source) {
  if (options.noHeader || options.delimiter) {
    throw UsageError(source.Name() +
                     " is an SQLite database: --no-header and --delimiter are for text files");
  }
  if (!options.table && !options.query) {
    throw UsageError(source.Name() +
                     " is an SQLite database: name what to read with --table or --query");
  }
  if (source.IsCompressed() || options.data == "-") {
    throw DataError(source.Name() +
                    ": a database can only be read from a plain file: unpack or save it first");
  }
  return std::make_unique<SqliteReader>(options.data, options.table, options.query);
}

}  // namespace

void addInputOptions(CLI::App& command, InputOptions& options) {
  command
      .add_option("DATA", options.data,
                  "CSV or TSV file, gzip-compressed or not, SQLite database, or - for standard "
                  "input")
      ->required();
  command.add_flag("--no-header", options.noHeader,
                   "The first row holds data: columns are called column_1, column_2 ...");
  command.add_option("--delimiter", options.delimiter,
                     "Separator of the cells, one character or the word tab [tab for .tsv and "
                     ".tab files, else a comma]");
  auto* const table = command.add_option("--table", options.table, "Table of an SQLite database");
  command
      .add_option("--query", options.query,
                  "SELECT statement whose rows to read from an SQLite "
                  "database")
      ->excludes(table);
}

std::unique_ptr<TableReader> openTable(const InputOptions& options) {
  const char delimiter = delimiterOf(options);
  auto source = std::make_unique<ByteSource>(options.data);
  if (source->IsSqlite()) return openDatabase(options, *source);
  if (options.table || options.query) {
    throw UsageError(source->Name() +
                     " is no SQLite database: --table and --query do not apply to it");
  }
  return std::make_unique<CsvReader>(std::move(source), delimiter, !options.noHeader);
}

}  // namespace mcbin
