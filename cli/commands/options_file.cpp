#include "cli/commands/options_file.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "cli/text/parse_errors.h"
#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

bool isSectionMark(const CLI::ConfigItem& item) { return item.name == "++" || item.name == "--"; }

class OptionsFile : public CLI::ConfigTOML {
 public:
  explicit OptionsFile(CLI::App& program) : program_(program) {}

  /// The options of the command that runs, each under its name.
  std::vector<CLI::ConfigItem> from_config(std::istream& input) const override {
    std::vector<CLI::ConfigItem> kept;
    if (program_.get_subcommands().empty()) return kept;
    const CLI::App& command = *program_.get_subcommands().front();
    for (CLI::ConfigItem& item : CLI::ConfigTOML::from_config(input)) {
      if (isSectionMark(item) || isForOtherCommand(item, command)) continue;
      const std::string name = "--" + item.name;
      item.parents.clear();
      if (command.get_option_no_throw(name) != nullptr) {
        item.parents = {command.get_name()};
      } else if (program_.get_option_no_throw(name) == nullptr) {
        throw UsageError(fmt::format("{}: there is no option {}{}", FileName(), excerpt(item.name),
                                     proposal(name, optionNames(command))));
      }
      kept.push_back(std::move(item));
    }
    return kept;
  }

 private:
  std::string FileName() const { return excerpt(program_.get_config_ptr()->as<std::string>()); }

  bool isForOtherCommand(const CLI::ConfigItem& item, const CLI::App& command) const {
    if (item.parents.empty()) return false;
    const std::string section = fmt::format("{}", fmt::join(item.parents, "."));
    const std::vector<std::string> commands = commandNames(program_);
    if (std::find(commands.begin(), commands.end(), section) == commands.end()) {
      throw UsageError(fmt::format("{}: there is no command {}{}", FileName(), excerpt(section),
                                   proposal(section, commands)));
    }
    return section != command.get_name();
  }

  CLI::App& program_;
};

}  // namespace

void addOptionsFile(CLI::App& program) {
  program.config_formatter(std::make_shared<OptionsFile>(program));
  program
      .set_config("--config", "",
                  "Take options from this file too: lines NAME = VALUE, lists in brackets (TOML)")
      ->check(CLI::ExistingFile)
      ->type_name("FILE");
}

}  // namespace mcbin
