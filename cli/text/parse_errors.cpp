#include "cli/text/parse_errors.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <numeric>

#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr std::size_t kMostEdits = 2;

std::size_t editDistance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::vector<std::string> commandNames(const CLI::App& program) {
  std::vector<std::string> names;
  for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
    names.push_back(command->get_name());
  }
  return names;
}

std::vector<std::string> optionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::string proposal(const std::string& word, const std::vector<std::string>& candidates) {
  const std::string meant = nearest(word, candidates);
  return meant.empty() ? "" : fmt::format("; did you mean {}?", meant);
}

std::string parseErrorText(const CLI::App& program, const CLI::ParseError& error) {
  const std::vector<std::string> extras = program.remaining(true);
  if (dynamic_cast<const CLI::ExtrasError*>(&error) == nullptr || extras.empty()) {
    return error.what();
  }
  const std::string& extra = extras.front();
  const std::vector<CLI::App*> commands = program.get_subcommands();
  if (commands.empty() && extra.front() != '-') {
    return fmt::format("there is no command {}{}", excerpt(extra),
                       proposal(extra, commandNames(program)));
  }
  if (extra.front() != '-') return fmt::format("one argument too many: {}", excerpt(extra));
  const std::string name = extra.substr(0, extra.find('='));
  std::vector<std::string> candidates = optionNames(program);
  if (!commands.empty()) {
    const std::vector<std::string> own = optionNames(*commands.front());
    candidates.insert(candidates.begin(), own.begin(), own.end());
  }
  return fmt::format("there is no option {}{}", excerpt(name), proposal(name, candidates));
}

std::string commandList(const CLI::App& program) {
  return fmt::format("name a command: {}", fmt::join(commandNames(program), ", "));
}

std::string nearest(const std::string& word, const std::vector<std::string>& candidates) {
  std::string best;
  std::size_t leastEdits = std::min(kMostEdits + 1, word.size());
  for (const std::string& candidate : candidates) {
    const std::size_t edits = editDistance(word, candidate);
    if (edits < leastEdits) {
      leastEdits = edits;
      best = candidate;
    }
  }
  return best;
}

}  // namespace mcbin
