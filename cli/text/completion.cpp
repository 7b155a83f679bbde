#include "cli/text/completion.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

#include "cli/text/parse_errors.h"

namespace mcbin {
namespace {

constexpr const char* kCommand = "COMMAND";
constexpr std::array<const char*, 3> kFileTypes = {"FILE", "MODEL", "DATA"};

/// The words in "HOW:{one,two}", which is how a choice names its type.
std::vector<std::string> wordsOf(const std::string& type) {
  std::vector<std::string> words;
  const std::size_t open = type.find('{');
  if (open == std::string::npos) return words;
  std::istringstream list(type.substr(open + 1, type.find('}') - open - 1));
  for (std::string word; std::getline(list, word, ',');) words.push_back(word);
  return words;
}

ValueSyntax valueOf(const CLI::Option& option, const std::string& name) {
  const bool isFile = std::find(kFileTypes.begin(), kFileTypes.end(), name) != kFileTypes.end();
  return {name, wordsOf(option.get_type_name()), isFile};
}

/// What stands before the first "; ", ": " or " [": the rest is for the help.
std::string shortDescription(const std::string& text) {
  return text.substr(0, std::min({text.find("; "), text.find(": "), text.find(" [")}));
}

OptionSyntax optionOf(const CLI::Option& option) {
  OptionSyntax syntax;
  for (const std::string& name : option.get_snames()) syntax.names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) syntax.names.push_back("--" + name);
  syntax.description = shortDescription(option.get_description());
  syntax.takesValue = option.get_items_expected_max() > 0;
  syntax.repeats = option.get_expected_max() > 1;
  const std::string type = option.get_type_name();
  syntax.value = valueOf(option, type.substr(0, type.find(':')));
  return syntax;
}

CommandSyntax commandOf(const CLI::App& command, const std::string& name) {
  CommandSyntax syntax;
  syntax.name = name;
  syntax.description = shortDescription(command.get_description());
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_positional()) {
      syntax.positionals.push_back(valueOf(*option, option->get_name()));
    } else {
      syntax.options.push_back(optionOf(*option));
    }
  }
  return syntax;
}

bool isForEveryCommand(const OptionSyntax& option) {
  const std::string& name = option.names.back();
  return name != "--help" && name != "--version";
}

}  // namespace

std::vector<CommandSyntax> syntaxOf(const CLI::App& program) {
  std::vector<CommandSyntax> commands = {commandOf(program, "")};
  const std::vector<std::string> names = commandNames(program);
  commands[0].positionals = {{kCommand, names, false}};
  for (const std::string& name : names) {
    CommandSyntax command = commandOf(*program.get_subcommand(name), name);
    for (ValueSyntax& positional : command.positionals) {
      if (positional.name == kCommand) positional.words = names;
    }
    for (const OptionSyntax& option : commands[0].options) {
      if (isForEveryCommand(option)) command.options.push_back(option);
    }
    commands.push_back(std::move(command));
  }
  return commands;
}

}  // namespace mcbin
