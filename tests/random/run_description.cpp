// Random runs as text.
#include <ostream>

#include "random/random_run.h"

namespace mcbinning_tests {

namespace {

template <typename T>
void writeList(std::ostream& os, const char* name, const std::vector<T>& list) {
  os << name;
  for (const T& item : list) {
    os << ' ' << item;
  }
  os << '\n';
}

void writeVariable(std::ostream& os, const plain_model::Variable& variable) {
  static constexpr const char* kKinds[] = {"categorical", "scale", "weight"};
  os << kKinds[static_cast<int>(variable.kind)] << " level " << variable.level << " role "
     << variable.role << " categories " << variable.Categories() << " rounding "
     << variable.rounding << '\n';
  if (variable.missing) {
    writeList(os, " missing", variable.missing->numbers);
    if (variable.missing->interval) {
      os << " missing from " << variable.missing->interval->first << " to "
         << variable.missing->interval->second << '\n';
    }
  }
}

void writeRequest(std::ostream& os, const Request& request) {
  const plain_model::Settings& settings = request.settings;
  os << "run: " << (settings.rightClosed ? "right closed" : "right open") << ", threshold "
     << settings.distinctValueThreshold << ", bins " << settings.numberOfBins << ", small bins "
     << settings.smallBinThreshold << (request.cancelBefore ? ", cancelled before" : "") << '\n';
  if (request.attributes) {
    writeList(os, "attributes", *request.attributes);
  }
  if (request.targets) {
    writeList(os, "targets", *request.targets);
  }
  for (const Case& host : request.cases) {
    writeList(os, " case", host);
  }
}

}  // namespace

std::ostream& operator<<(std::ostream& os, const RandomRun& run) {
  os.precision(17);
  os << (run.supervised ? "supervised" : "equal frequency") << ", target " << run.list.plain.target
     << ", weight " << run.list.plain.weight << '\n';
  for (const plain_model::Variable& variable : run.list.plain.variables) {
    writeVariable(os, variable);
  }
  for (const Request& request : run.requests) {
    writeRequest(os, request);
  }
  return os;
}

}  // namespace mcbinning_tests
