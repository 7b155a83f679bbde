#include "cli/commands/options.h"

#include <fmt/format.h>

#include <charconv>
#include <system_error>

#include "toolkit/input/cells.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {

std::string wholeNumberRefusal(const std::string& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  return isNumber ? "" : fmt::format("takes a whole number, not {}", quotedExcerpt(text));
}

std::string numberRefusal(const std::string& text) {
  double number = 0.0;
  const bool isNumber = readNumber(text, number) == NumberReading::Number;
  return isNumber ? "" : fmt::format("takes a number, not {}", quotedExcerpt(text));
}

std::string emptyNameRefusal(const std::string& name) {
  return name.empty() ? "the name of a file is not empty" : "";
}

void addModelOption(CLI::App& command, std::string& model) {
  command.add_option("MODEL", model, "Model that fit wrote, or - for standard input")->required();
}

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

void addAttributeOption(CLI::App& command, std::vector<std::string>& patterns) {
  addRepeated(command, "-a,--attribute", patterns,
              "Only these attributes of the model: a name, a number from 1, or a pattern with *, ? "
              "and [...]; may be given again [all]",
              "PATTERN");
}

void addOutputOption(CLI::App& command, std::string& output) {
  command.add_option("-o,--output", output, "Write to this file, - for standard output [-]")
      ->check(emptyNameRefusal)
      ->type_name("FILE");
}

CLI::Option* addRepeated(CLI::App& command, const char* names, std::vector<std::string>& values,
                         const std::string& description, const char* type) {
  return command.add_option(names, values, description)->allow_extra_args(false)->type_name(type);
}

}  // namespace mcbin
