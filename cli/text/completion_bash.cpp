#include <fmt/format.h>
#include <fmt/ranges.h>

#include "cli/text/completion.h"

namespace mcbin {
namespace {

constexpr const char* kBegin = R"(# Completes mcbin in bash.
_mcbin() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}
  local command='' word words=''
  if [[ $current == = ]]; then
    current=''
  elif [[ $previous == = ]]; then
    previous=${{COMP_WORDS[COMP_CWORD - 2]}}
  fi
  for word in "${{COMP_WORDS[@]:1:COMP_CWORD - 1}}"; do
    case $word in
      {}) command=$word; break ;;
    esac
  done
  COMPREPLY=()
  case $command,$previous in
)";

constexpr const char* kEnd = R"(      esac ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}
complete -F _mcbin mcbin
)";

/// What completes a value: words of its own, names of files, or nothing.
std::string values(const ValueSyntax& value) {
  if (!value.words.empty()) return fmt::format("words='{}'", fmt::join(value.words, " "));
  return value.isFile ? "compopt -o default; return" : "return";
}

std::string optionValues(const CommandSyntax& command) {
  std::string text;
  for (const OptionSyntax& option : command.options) {
    if (!option.takesValue) continue;
    std::vector<std::string> patterns;
    for (const std::string& name : option.names) patterns.push_back(command.name + "," + name);
    text += fmt::format("    {}) {} ;;\n", fmt::join(patterns, "|"), values(option.value));
  }
  return text;
}

std::string firstWords(const CommandSyntax& command) {
  std::vector<std::string> names;
  for (const OptionSyntax& option : command.options) {
    names.insert(names.end(), option.names.begin(), option.names.end());
  }
  std::string text =
      fmt::format("        {},-*) words='{}' ;;\n", command.name, fmt::join(names, " "));
  if (!command.positionals.empty()) {
    text += fmt::format("        {},*) {} ;;\n", command.name, values(command.positionals[0]));
  }
  return text;
}

}  // namespace

std::string bashCompletion(const std::vector<CommandSyntax>& commands) {
  std::string text = fmt::format(kBegin, fmt::join(commands[0].positionals[0].words, "|"));
  for (const CommandSyntax& command : commands) text += optionValues(command);
  text += "    *)\n      case $command,$current in\n";
  for (const CommandSyntax& command : commands) text += firstWords(command);
  return text + kEnd;
}

}  // namespace mcbin
