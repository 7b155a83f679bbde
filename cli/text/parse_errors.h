/// What a wrong command line is answered with.
#ifndef MCBIN_CLI_TEXT_PARSE_ERRORS_H
#define MCBIN_CLI_TEXT_PARSE_ERRORS_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace mcbin {

/// CLI11's message, or for an argument that nothing expects a sentence that proposes the option or
/// command that was probably meant.
std::string parseErrorText(const CLI::App& program, const CLI::ParseError& error);

/// "name a command: fit, apply ..."
std::string commandList(const CLI::App& program);

/// The commands of the program and the long options of a command, in the order of the help.
std::vector<std::string> commandNames(const CLI::App& program);
std::vector<std::string> optionNames(const CLI::App& command);

/// "; did you mean NAME?" with the nearest candidate; empty when none is near.
std::string proposal(const std::string& word, const std::vector<std::string>& candidates);

/// The candidate with the least edits from `word`, empty when it takes more than two or as many as
/// the word has characters.
std::string nearest(const std::string& word, const std::vector<std::string>& candidates);

}  // namespace mcbin

#endif
