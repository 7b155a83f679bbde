#include <fmt/format.h>
#include <fmt/ranges.h>

#include "cli/text/completion.h"

namespace mcbin {
namespace {

std::string quoted(const std::string& text) {
  std::string result = "'";
  for (const char c : text) {
    if (c == '\'' || c == '\\') result += '\\';
    result += c;
  }
  return result + "'";
}

std::string values(const ValueSyntax& value) {
  if (!value.words.empty()) return fmt::format(" -x -a '{}'", fmt::join(value.words, " "));
  return value.isFile ? " -r -F" : " -x";
}

std::string optionLine(const std::string& begin, const OptionSyntax& option) {
  std::string names;
  for (const std::string& name : option.names) {
    names += name.size() > 2 ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  return begin + names + (option.takesValue ? values(option.value) : "") + " -d " +
         quoted(option.description) + "\n";
}

std::string commandLines(const CommandSyntax& command) {
  const std::string condition = command.name.empty()
                                    ? "__fish_use_subcommand"
                                    : "'__fish_seen_subcommand_from " + command.name + "'";
  const std::string begin = "complete -c mcbin -n " + condition;
  std::string text;
  for (const OptionSyntax& option : command.options) text += optionLine(begin, option);
  if (command.positionals.empty()) return text;
  const ValueSyntax& value = command.positionals[0];
  if (value.isFile) return text + begin + " -F\n";
  return text + fmt::format("{} -a '{}'\n", begin, fmt::join(value.words, " "));
}

}  // namespace

std::string fishCompletion(const std::vector<CommandSyntax>& commands) {
  std::string text = "# Completes mcbin in fish.\ncomplete -c mcbin -f\n";
  for (std::size_t i = 1; i < commands.size(); ++i) {
    text += fmt::format("complete -c mcbin -n __fish_use_subcommand -a {} -d {}\n",
                        commands[i].name, quoted(commands[i].description));
  }
  for (const CommandSyntax& command : commands) text += commandLines(command);
  return text;
}

}  // namespace mcbin
