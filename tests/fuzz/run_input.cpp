#include "fuzz/run_input.h"

#include <mcbinning/encoders.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>

namespace fuzz {

namespace {

using plain_model::Case;
using plain_model::Kind;
using plain_model::MissingValues;
using plain_model::RandomRun;
using plain_model::Request;
using plain_model::Settings;
using MeasureLevel = IBINVariable::MeasureLevel;
using VariableRole = IBINVariable::VariableRole;

constexpr std::size_t kMostCases = 400;

// A NaN among the rows can become a cut point of every step of the equal-frequency routine.
constexpr int kMostBins = 200;

/// How the cells of a variable are made of bytes: one each, but for the last styles.
enum class CellStyle {
  kSmall,
  kTenths,
  kNeighbours,
  kOften,
  kCodes,
  kOddCodes,
  kCounts,
  kNumbers,
  kBits
};

struct MadeList {
  BINVarList host;
  plain_model::VariableList plain;
  std::vector<CellStyle> styles;  // parallel to the variables
};

class ListMaker {
 public:
  explicit ListMaker(Input& input) : input_(input) {}

  MadeList Make() {
    const int variables = input_.Between(0, 6);
    for (int i = 0; i < variables; ++i) {
      AddVariable("v" + std::to_string(i));
    }
    for (int i = input_.Pick({0, 0, 0, 1, 2}); i > 0; --i) {
      ChangeRole();
    }
    if (input_.OneIn(8) && made_.plain.Size() > 0) {
      const int index = input_.Below(made_.plain.Size());
      made_.host.RemoveVar(index);
      made_.plain.Remove(index);
      made_.styles.erase(made_.styles.begin() + index);
    }
    return std::move(made_);
  }

 private:
  void AddVariable(const std::string& name) {
    switch (input_.Below(8)) {
      case 0:
      case 1:
        return AddCategorical(name, VariableRole::TargetRole);
      case 2:
        return AddCategorical(name, AnyRole());
      case 3:
        return AddWeight(name);
      case 4:
        return AddScale(name, AnyRole());
      default:
        return AddScale(name, VariableRole::AttributeRole);
    }
  }

  VariableRole AnyRole() {
    return input_.Pick({VariableRole::AttributeRole, VariableRole::AttributeRole,
                        VariableRole::TargetRole, VariableRole::UndefinedRole,
                        VariableRole::FrequencyWeightRole, static_cast<VariableRole>(-9)});
  }

  void AddCategorical(const std::string& name, VariableRole role) {
    const int declared = input_.OneIn(6) ? input_.AnyInt() : input_.Between(2, 5);
    const MeasureLevel level = input_.OneIn(12)
                                   ? static_cast<MeasureLevel>(input_.Between(-1, 5))
                                   : input_.Pick({MeasureLevel::NumericCategoricalLevel,
                                                  MeasureLevel::StringCategoricalLevel});
    const int index = made_.host.AddCatVar(name, "", declared, level, role);
    const int known = input_.OneIn(4) ? input_.Below(6) : 0;
    for (int code = 0; code < known; ++code) {
      IBINEncoder* encoder = made_.host.GetEncoderAt(index);
      if (auto* numbers = dynamic_cast<BINCatNumEncoder*>(encoder)) {
        numbers->Encode(code);
      } else {
        static_cast<BINStringEncoder*>(encoder)->Encode(std::to_string(code));
      }
    }
    made_.plain.AddCategorical(level, std::max(declared, known), role);
    made_.styles.push_back(input_.Pick(
        {CellStyle::kCodes, CellStyle::kSmall, CellStyle::kNumbers, CellStyle::kOddCodes}));
    if (input_.OneIn(8)) {
      DeclareMissing(index);  // cells hold codes already, so it plays no part
    }
  }

  void AddScale(const std::string& name, VariableRole role) {
    const int index = made_.host.AddContVar(name, "", role);
    if (index < 0) {
      return;  // a scale variable cannot be added as target
    }
    made_.plain.AddScale(role, input_.OneIn(4) ? DeclareMissing(index) : MissingValues());
    made_.styles.push_back(input_.Pick({CellStyle::kSmall, CellStyle::kCodes, CellStyle::kTenths,
                                        CellStyle::kNeighbours, CellStyle::kOften,
                                        CellStyle::kNumbers, CellStyle::kBits}));
  }

  void AddWeight(const std::string& name) {
    if (made_.plain.weight >= 0) {
      return;
    }
    const int rounding = input_.OneIn(4) ? input_.AnyInt() : input_.Below(3);
    const int index =
        made_.host.AddWeightVar(name, "", static_cast<IBINVariable::BINWRoundingOption>(rounding));
    made_.plain.AddWeight(rounding, input_.OneIn(4) ? DeclareMissing(index) : MissingValues());
    made_.styles.push_back(
        input_.Pick({CellStyle::kCounts, CellStyle::kTenths, CellStyle::kNumbers}));
  }

  MissingValues DeclareMissing(int index) {
    MissingValues missing;
    for (int i = input_.Below(3); i > 0; --i) {
      missing.values.push_back(input_.Number());
      made_.host.AddDiscreteUserMissing(index, missing.values.back(), "missing");
    }
    if (input_.Flag()) {
      const double low = input_.Number();
      missing.interval = {low, input_.Number()};
      made_.host.SetMissingInterval(index, low, missing.interval->second);
    }
    return missing;
  }

  void ChangeRole() {
    if (made_.plain.Size() > 0) {
      const int index = input_.Below(made_.plain.Size());
      const VariableRole role = AnyRole();
      made_.host.SetVariableRole(index, role);
      made_.plain.SetRole(index, role);
    }
  }

  Input& input_;
  MadeList made_;
};

double makeCell(Input& input, CellStyle style) {
  switch (style) {
    case CellStyle::kSmall:
      return input.Between(-1, 14);
    case CellStyle::kTenths:
      return 0.1 * input.Between(-10, 60);
    case CellStyle::kNeighbours:
      return 1.0 + input.Below(256) * std::numeric_limits<double>::epsilon();
    case CellStyle::kOften:
      return input.Between(-128, 127);
    case CellStyle::kCodes:
      return input.OneIn(12) ? -1.0 : input.Below(3);
    case CellStyle::kOddCodes:
      return input.Pick({0.0, 1.0, 2.0, 1.9, -0.5, -1.0, -1.5, -2.0, 254.0, 255.0, 255.9, 256.0});
    case CellStyle::kCounts:
      return input.Between(0, 9);
    case CellStyle::kNumbers:
      return input.Number();
    default:
      return std::bit_cast<double>((static_cast<std::uint64_t>(input.AnyInt()) << 32U) |
                                   static_cast<std::uint32_t>(input.AnyInt()));
  }
}

void addCases(Input& input, const MadeList& list, bool hasNulls, std::size_t most,
              std::vector<Case>& cases) {
  while (cases.size() < most && !input.IsUsedUp()) {
    Case& cells = cases.emplace_back();
    if (hasNulls && input.OneIn(4)) {
      continue;
    }
    for (const CellStyle style : list.styles) {
      cells.push_back(makeCell(input, style));
    }
  }
}

std::vector<Case> makeCases(Input& input, const MadeList& list) {
  const auto most = static_cast<std::size_t>(input.Pick({0, 1, 2, 10, 50, 400, 400, 400}));
  const bool hasNulls = input.OneIn(6);
  const int copies = input.Pick({1, 1, 1, 2, 3, 10});
  const int drawn = input.OneIn(12) ? input.Between(1, 255) : 0;
  std::vector<Case> cases;
  addCases(input, list, hasNulls, most, cases);
  const std::size_t made = cases.size();
  for (int copy = 1; copy < copies && cases.size() + made <= kMostCases; ++copy) {
    cases.insert(cases.end(), cases.begin(), cases.begin() + static_cast<std::ptrdiff_t>(made));
  }
  if (drawn != 0) {
    // More candidates than the bytes of a short input make: the rest is drawn.
    std::minstd_rand random(static_cast<unsigned int>(drawn));
    std::vector<std::uint8_t> bytes(kMostCases * (list.styles.size() + 1));
    std::generate(bytes.begin(), bytes.end(),
                  [&random] { return static_cast<std::uint8_t>(random() >> 8U); });
    Input more(bytes.data(), bytes.size());
    addCases(more, list, hasNulls, kMostCases, cases);
  }
  return cases;
}

// Values that the setters take; what they refuse is another target's matter.
Settings makeSettings(Input& input) {
  Settings settings;
  settings.rightClosed = input.Flag();
  settings.numberOfBins = input.OneIn(4) ? input.Between(2, kMostBins) : input.Between(2, 12);
  settings.distinctValueThreshold =
      input.Pick({0, 0, 0, 1, 2, 5, 20, std::numeric_limits<int>::max()});
  settings.smallBinThreshold = input.Flag() ? 0.0 : input.Below(101) / 100.0;
  return settings;
}

std::vector<int> makeSelection(Input& input, const MadeList& list, std::size_t length) {
  std::vector<int> selection;
  while (selection.size() < length) {
    selection.push_back(input.Index(static_cast<std::size_t>(list.plain.Size())));
  }
  return selection;
}

void makeRequest(Input& input, const MadeList& list, bool supervised, Request& request) {
  const int form = input.Below(6);
  const auto length = static_cast<std::size_t>(input.Below(5));
  if (form >= 2) {
    request.attributes = makeSelection(input, list, length);
  }
  if (supervised && (form >= 4 || form == 1)) {
    request.targets = makeSelection(input, list, input.OneIn(12) ? length + 1 : length);
  }
  if (supervised && request.targets && input.Flag()) {
    // The list's own target makes more pairs that can be binned.
    std::fill(request.targets->begin(), request.targets->end(), list.plain.target);
  }
  request.cancelBefore = input.OneIn(24);
}

}  // namespace

RandomRun makeRun(Input& input) {
  MadeList list = ListMaker(input).Make();
  RandomRun run;
  run.supervised = input.Below(3) != 0;
  run.requests.resize(static_cast<std::size_t>(input.Pick({1, 1, 2, 3})));
  Settings settings = makeSettings(input);
  if (input.OneIn(24)) {
    settings.numberOfBins = -1;
  }
  for (Request& request : run.requests) {
    request.settings = settings;
    makeRequest(input, list, run.supervised, request);
    settings = input.Flag() ? makeSettings(input) : settings;
  }
  for (Request& request : run.requests) {
    request.cases = makeCases(input, list);
  }
  run.hostList = list.host;
  run.list = list.plain;
  return run;
}

}  // namespace fuzz
