/// What shells need to complete the program's command lines, made from its commands and options.
#ifndef MCBIN_CLI_TEXT_COMPLETION_H
#define MCBIN_CLI_TEXT_COMPLETION_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace mcbin {

/// A value that an option or a positional takes.
struct ValueSyntax {
  std::string name;                ///< as the help calls it: "FILE"
  std::vector<std::string> words;  ///< all that may be given; empty: anything
  bool isFile = false;
};

struct OptionSyntax {
  std::vector<std::string> names;  ///< with their dashes
  std::string description;
  bool takesValue = false;
  bool repeats = false;
  ValueSyntax value;
};

struct CommandSyntax {
  std::string name;  ///< empty for the program itself
  std::string description;
  std::vector<OptionSyntax> options;
  std::vector<ValueSyntax> positionals;
};

/// The program itself and then its commands, each in the order of the help.
std::vector<CommandSyntax> syntaxOf(const CLI::App& program);

/// A script for the shell. It completes `program`, by the name under which it is found.
std::string bashCompletion(const std::vector<CommandSyntax>& commands);
std::string zshCompletion(const std::vector<CommandSyntax>& commands);
std::string fishCompletion(const std::vector<CommandSyntax>& commands);

}  // namespace mcbin

#endif
