#include <fmt/format.h>
#include <fmt/ranges.h>

#include "cli/text/completion.h"

namespace mcbin {
namespace {

constexpr const char* kBegin = R"(#compdef mcbin
# Completes mcbin in zsh.
_mcbin() {{
  local -a commands=(
{}  )
  local curcontext=$curcontext state line
  typeset -A opt_args
  _arguments -C{} \
    '1:command:->command' \
    '*::argument:->argument'
  case $state in
    command) _describe command commands ;;
    argument)
      case $words[1] in
)";

constexpr const char* kEnd = R"(      esac ;;
  esac
}
if [[ $funcstack[1] == _mcbin ]]; then
  _mcbin "$@"
else
  compdef _mcbin mcbin
fi
)";

/// The text inside single quotes, where _arguments and _describe take it as it is.
std::string quoted(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '\'') {
      result += "'\\''";
    } else {
      if (c == '[' || c == ']' || c == ':' || c == '\\') result += '\\';
      result += c;
    }
  }
  return result;
}

std::string values(const ValueSyntax& value) {
  if (!value.words.empty()) {
    return fmt::format(":{}:({})", value.name, fmt::join(value.words, " "));
  }
  return fmt::format(":{}:{}", value.name, value.isFile ? "_files" : " ");
}

/// "-o+" and "--output=": the value of an option may follow in the same word.
std::string nameWithValue(const OptionSyntax& option, const std::string& name) {
  if (!option.takesValue) return name;
  return name + (name.size() > 2 ? "=" : "+");
}

std::string optionSpecification(const OptionSyntax& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.names) names.push_back(nameWithValue(option, name));
  const std::string rest = fmt::format("'[{}]{}'", quoted(option.description),
                                       option.takesValue ? values(option.value) : "");
  const std::string before =
      option.repeats ? "'*'" : fmt::format("'({})'", fmt::join(option.names, " "));
  return before + (names.size() == 1 ? names[0] : fmt::format("{{{}}}", fmt::join(names, ","))) +
         rest;
}

std::string argumentLines(const CommandSyntax& command, const std::string& indent) {
  std::string text;
  for (const OptionSyntax& option : command.options) {
    text += " \\\n" + indent + optionSpecification(option);
  }
  return text;
}

std::string commandCase(const CommandSyntax& command) {
  std::string text = fmt::format("        {})\n          _arguments", command.name);
  text += argumentLines(command, "            ");
  for (std::size_t i = 0; i < command.positionals.size(); ++i) {
    text += fmt::format(" \\\n            '{}{}'", i + 1, values(command.positionals[i]));
  }
  return text + " ;;\n";
}

}  // namespace

std::string zshCompletion(const std::vector<CommandSyntax>& commands) {
  std::string names;
  std::string cases;
  for (std::size_t i = 1; i < commands.size(); ++i) {
    names += fmt::format("    '{}:{}'\n", commands[i].name, quoted(commands[i].description));
    cases += commandCase(commands[i]);
  }
  return fmt::format(kBegin, names, argumentLines(commands[0], "    ")) + cases + kEnd;
}

}  // namespace mcbin
