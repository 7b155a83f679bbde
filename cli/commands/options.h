/// Options that several commands have, each declared once.
#ifndef MCBIN_CLI_COMMANDS_OPTIONS_H
#define MCBIN_CLI_COMMANDS_OPTIONS_H

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "toolkit/input/open_table.h"
#include "toolkit/text/choice.h"

namespace mcbin {

/// Checks of options: what is wrong with a text, empty when it is right.
std::string emptyNameRefusal(const std::string& name);
std::string wholeNumberRefusal(const std::string& text);
std::string numberRefusal(const std::string& text);

/// Adds MODEL.
void addModelOption(CLI::App& command, std::string& model);

/// Adds DATA, --no-header, --delimiter, --table and --query.
void addInputOptions(CLI::App& command, InputOptions& options);

/// Adds --attribute, which picks attributes of a model.
void addAttributeOption(CLI::App& command, std::vector<std::string>& patterns);

/// Adds --output, by default standard output.
void addOutputOption(CLI::App& command, std::string& output);

/// Adds an option that may be given again; each time it takes one text.
CLI::Option* addRepeated(CLI::App& command, const char* names, std::vector<std::string>& values,
                         const std::string& description, const char* type);

/// Adds an option that takes the name of one of `choices`, which must outlive the command.
template <class Value, class Choices>
CLI::Option* addChoice(CLI::App& command, const char* names, Value& value, const Choices& choices,
                       const std::string& description) {
  std::vector<std::string> words;
  words.reserve(std::size(choices));
  for (const auto& choice : choices) words.emplace_back(choice.name);
  const auto take = [&value, &choices](const std::string& word) {
    value = std::find_if(std::begin(choices), std::end(choices), [&](const auto& choice) {
              return word == choice.name;
            })->value;
  };
  return command.add_option_function<std::string>(names, take, description)
      ->check(CLI::IsMember(words))
      ->type_name("HOW");
}

}  // namespace mcbin

#endif
