// Random runs as text.
#include <sstream>

#include "plain_model/comparison.h"

namespace plain_model {

namespace {

template <typename T>
void writeList(std::ostream& os, const char* name, const std::vector<T>& list) {
  os << name;
  for (const T& item : list) {
    os << ' ' << item;
  }
  os << '\n';
}

void writeVariable(std::ostream& os, const Variable& variable) {
  static constexpr const char* kKinds[] = {"categorical", "scale", "weight"};
  os << kKinds[static_cast<int>(variable.kind)] << " level " << variable.level << " role "
     << variable.role << " categories " << variable.categories << " rounding " << variable.rounding;
  if (variable.missing.interval) {
    os << " missing from " << variable.missing.interval->first << " to "
       << variable.missing.interval->second;
  }
  writeList(os, " missing", variable.missing.values);
}

void writeRequest(std::ostream& os, const Request& request) {
  const Settings& settings = request.settings;
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

std::string describe(const RandomRun& run) {
  std::ostringstream os;
  os.precision(17);
  os << (run.supervised ? "supervised" : "equal frequency") << ", target " << run.list.target
     << ", weight " << run.list.weight << '\n';
  for (const Variable& variable : run.list.variables) {
    writeVariable(os, variable);
  }
  for (const Request& request : run.requests) {
    writeRequest(os, request);
  }
  return os.str();
}

}  // namespace plain_model
