#include "toolkit/fit/given_cuts.h"

#include <fmt/format.h>

#include <cmath>
#include <sstream>
#include <string_view>

#include "toolkit/errors.h"
#include "toolkit/input/byte_source.h"
#include "toolkit/input/cells.h"
#include "toolkit/model/model_json.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

/// Throws `Error` with `place` in front.
template <class Error>
GivenCuts cutsOfText(std::string_view text, const std::string& place) {
  const std::size_t sign = text.rfind('=');
  if (sign == std::string_view::npos || sign == 0) {
    throw Error(fmt::format("{}: write COLUMN=NUMBER,NUMBER...", place));
  }
  GivenCuts cuts{std::string(trimmed(text.substr(0, sign))), {}};
  for (std::string_view rest = text.substr(sign + 1);;) {
    const std::size_t comma = rest.find(',');
    const std::string_view cell = trimmed(rest.substr(0, comma));
    double cut = 0.0;
    if (readNumber(cell, cut) != NumberReading::Number || !std::isfinite(cut)) {
      throw Error(fmt::format("{}: {} is not a finite number", place, quotedExcerpt(cell)));
    }
    if (!cuts.cutPoints.empty() && !(cuts.cutPoints.back() < cut)) {
      throw Error(fmt::format("{}: the cut points must ascend: {} is not above the one before",
                              place, quotedExcerpt(cell)));
    }
    cuts.cutPoints.push_back(cut);
    if (comma == std::string_view::npos) return cuts;
    rest.remove_prefix(comma + 1);
  }
}

std::vector<GivenCuts> cutsOfLines(const std::string& content, const std::string& name) {
  std::vector<GivenCuts> cuts;
  std::istringstream lines(content);
  std::size_t number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::string_view text = trimmed(line);
    if (text.empty() || text.front() == '#') continue;
    cuts.push_back(cutsOfText<DataError>(text, fmt::format("{}, line {}", name, number)));
  }
  if (cuts.empty()) throw DataError(name + ": there are no cut points");
  return cuts;
}

}  // namespace

std::vector<GivenCuts> cutsOf(const Model& model) {
  std::vector<GivenCuts> cuts;
  for (const AttributeModel& attribute : model.attributes) {
    cuts.push_back({attribute.name, attribute.cutPoints, model.closedSide});
  }
  return cuts;
}

std::vector<GivenCuts> readGivenCuts(const std::string& text, Monitor& monitor) {
  if (text.find('=') != std::string::npos) {
    return {cutsOfText<UsageError>(text, "--cuts " + excerpt(text))};
  }
  std::string content = readWhole(text, monitor);
  if (content.starts_with("\xEF\xBB\xBF")) content.erase(0, 3);
  const std::size_t start = content.find_first_not_of(" \t\r\n");
  const bool isModel = start != std::string::npos && content[start] == '{';
  return isModel ? cutsOf(modelFromJson(content, shownName(text)))
                 : cutsOfLines(content, shownName(text));
}

}  // namespace mcbin
