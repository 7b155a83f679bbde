#include "toolkit/model/attribute_choice.h"

#include <set>
#include <utility>

#include "toolkit/input/column_patterns.h"

namespace mcbin {

void keepAttributes(Model& model, const std::vector<std::string>& patterns) {
  if (patterns.empty()) return;
  std::vector<std::string> names;
  names.reserve(model.attributes.size());
  for (const AttributeModel& attribute : model.attributes) names.push_back(attribute.name);
  std::set<std::size_t> chosen;
  for (const std::string& pattern : patterns) {
    for (const std::size_t index : matchColumns(names, pattern, "--attribute")) {
      chosen.insert(index);
    }
  }
  std::vector<AttributeModel> kept;
  kept.reserve(chosen.size());
  for (const std::size_t index : chosen) kept.push_back(std::move(model.attributes[index]));
  model.attributes = std::move(kept);
}

}  // namespace mcbin
