/// The help text of the program.
#ifndef MCBIN_CLI_TEXT_HELP_FORMAT_H
#define MCBIN_CLI_TEXT_HELP_FORMAT_H

#include <CLI/CLI.hpp>
#include <string>

namespace mcbin {

/// CLI11's help with the descriptions broken into lines that fit 80 columns, and without marks
/// that the descriptions already say in words.
class HelpFormatter : public CLI::Formatter {
 public:
  std::string make_option(const CLI::Option* option, bool isPositional) const override;
  std::string make_option_opts(const CLI::Option* option) const override;
  std::string make_subcommand(const CLI::App* command) const override;
};

/// Breaks `text` at blanks into lines of at most `width` characters; every line but the first is
/// indented by `indent`. A word longer than the width gets a line of its own.
std::string wrapped(const std::string& text, std::size_t width, std::size_t indent);

}  // namespace mcbin

#endif
