#include "cli/text/help_format.h"

#include <algorithm>
#include <sstream>

namespace mcbin {
namespace {

constexpr std::size_t kLineWidth = 80;
constexpr std::size_t kDescriptionColumn = 26;

/// "  NAMES   DESCRIPTION", the description on a line of its own when the names are long.
std::string entry(const std::string& names, const std::string& description) {
  std::string text = "  " + names;
  if (text.size() + 2 > kDescriptionColumn) {
    text += "\n" + std::string(kDescriptionColumn, ' ');
  } else {
    text.resize(kDescriptionColumn, ' ');
  }
  return text + wrapped(description, kLineWidth - kDescriptionColumn, kDescriptionColumn) + "\n";
}

}  // namespace

std::string HelpFormatter::make_option(const CLI::Option* option, bool isPositional) const {
  return entry(make_option_name(option, isPositional) + make_option_opts(option),
               make_option_desc(option));
}

std::string HelpFormatter::make_option_opts(const CLI::Option* option) const {
  if (option->get_positional() || option->get_type_size() == 0) return "";
  // A list of allowed words follows the name of the type; the description has it.
  const std::string type = option->get_type_name();
  return " " + type.substr(0, type.find(':'));
}

std::string HelpFormatter::make_subcommand(const CLI::App* command) const {
  return entry(command->get_name(), command->get_description());
}

std::string wrapped(const std::string& text, std::size_t width, std::size_t indent) {
  std::istringstream words(text);
  std::string result;
  std::string word;
  std::size_t lineLength = 0;
  while (words >> word) {
    if (lineLength > 0 && lineLength + 1 + word.size() > width) {
      result += "\n" + std::string(indent, ' ');
      lineLength = 0;
    }
    if (lineLength > 0) {
      result += ' ';
      ++lineLength;
    }
    result += word;
    lineLength += word.size();
  }
  return result;
}

}  // namespace mcbin
