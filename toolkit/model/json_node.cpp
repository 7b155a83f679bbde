#include "toolkit/model/json_node.h"

#include <cmath>
#include <limits>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {

JsonNode::JsonNode(const Json& value, std::string fileName, std::string path)
    : value_(&value), fileName_(std::move(fileName)), path_(std::move(path)) {}

void JsonNode::Fail(const std::string& what) const {
  throw DataError(visibleText(fileName_) + ": " +
                  (path_.empty() ? "the model" : visibleText(path_)) + " " + what);
}

JsonNode JsonNode::operator[](const char* key) const {
  if (!value_->is_object()) Fail("must be an object");
  const auto member = value_->find(key);
  if (member == value_->end()) Fail(std::string("has no \"") + key + "\"");
  return {*member, fileName_, path_.empty() ? key : path_ + "." + key};
}

std::optional<JsonNode> JsonNode::Optional(const char* key) const {
  if (!value_->is_object()) Fail("must be an object");
  const auto member = value_->find(key);
  if (member == value_->end() || member->is_null()) return std::nullopt;
  return (*this)[key];
}

std::vector<JsonNode> JsonNode::Elements() const {
  if (!value_->is_array()) Fail("must be an array");
  std::vector<JsonNode> elements;
  for (const Json& element : *value_) {
    elements.emplace_back(element, fileName_, path_ + "[" + std::to_string(elements.size()) + "]");
  }
  return elements;
}

std::vector<std::string> JsonNode::Keys() const {
  if (!value_->is_object()) Fail("must be an object");
  std::vector<std::string> keys;
  for (const auto& item : value_->items()) keys.push_back(item.key());
  return keys;
}

std::string JsonNode::Text() const {
  if (!value_->is_string()) Fail("must be a text");
  return value_->get<std::string>();
}

bool JsonNode::Flag() const {
  if (!value_->is_boolean()) Fail("must be true or false");
  return value_->get<bool>();
}

std::int64_t JsonNode::Integer(std::int64_t low, std::int64_t high) const {
  // Compared as doubles first: a number beyond the range of the type has no defined conversion.
  if (value_->is_number_integer()) {
    const double approximate = value_->get<double>();
    if (approximate >= static_cast<double>(low) && approximate <= static_cast<double>(high)) {
      return value_->get<std::int64_t>();
    }
  }
  Fail("must be a whole number from " + std::to_string(low) + " to " + std::to_string(high));
}

double JsonNode::Number() const {
  if (value_->is_string()) {
    const std::string text = Text();
    if (text == "inf") return std::numeric_limits<double>::infinity();
    if (text == "-inf") return -std::numeric_limits<double>::infinity();
  }
  if (!value_->is_number()) Fail("must be a number, \"inf\" or \"-inf\"");
  return value_->get<double>();
}

double JsonNode::Weight() const {
  const double weight = Number();
  if (!std::isfinite(weight) || weight < 0.0) Fail("must be a finite number that is not negative");
  return weight;
}

std::optional<double> JsonNode::OptionalNumber() const {
  if (IsNull()) return std::nullopt;
  return Number();
}

std::optional<std::string> JsonNode::OptionalText() const {
  if (IsNull()) return std::nullopt;
  return Text();
}

std::vector<double> JsonNode::Numbers() const {
  std::vector<double> numbers;
  for (const JsonNode& element : Elements()) numbers.push_back(element.Number());
  return numbers;
}

std::vector<double> JsonNode::Weights() const {
  std::vector<double> weights;
  for (const JsonNode& element : Elements()) weights.push_back(element.Weight());
  return weights;
}

std::vector<std::string> JsonNode::Texts() const {
  std::vector<std::string> texts;
  for (const JsonNode& element : Elements()) texts.push_back(element.Text());
  return texts;
}

std::size_t JsonNode::PositionAmong(const std::vector<std::string>& names) const {
  const std::string text = Text();
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == text) return i;
    list += (i == 0 ? "\"" : " or \"") + names[i] + "\"";
  }
  Fail("must be " + list);
}

}  // namespace mcbin
