/// Reading JSON values with messages that name the place.
#ifndef MCBIN_TOOLKIT_MODEL_JSON_NODE_H
#define MCBIN_TOOLKIT_MODEL_JSON_NODE_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "toolkit/model/json_text.h"
#include "toolkit/text/choice.h"

namespace mcbin {

/// A value inside a model file that knows its path ("attributes[2].cutPoints"), so that whatever
/// is wrong with it can be said in one sentence. Every failure is a DataError.
class JsonNode {
 public:
  JsonNode(const Json& value, std::string fileName, std::string path = "");

  /// The member of that name; DataError when this is no object or has no such member.
  JsonNode operator[](const char* key) const;
  /// The member of that name; empty when this is an object without it or with null. Members that
  /// came into the format later are read so.
  std::optional<JsonNode> Optional(const char* key) const;
  /// The elements; DataError when this is no array.
  std::vector<JsonNode> Elements() const;
  /// Keys of an object, in order.
  std::vector<std::string> Keys() const;

  bool IsNull() const { return value_->is_null(); }
  std::string Text() const;
  bool Flag() const;
  /// A whole number from `low` to `high`.
  std::int64_t Integer(std::int64_t low, std::int64_t high) const;
  /// A finite number or "inf" or "-inf".
  double Number() const;
  /// A finite number that is not negative.
  double Weight() const;
  std::optional<double> OptionalNumber() const;
  std::optional<std::string> OptionalText() const;
  std::vector<double> Numbers() const;
  std::vector<double> Weights() const;
  std::vector<std::string> Texts() const;
  /// The value that the text names.
  template <class Value, std::size_t N>
  Value OneOf(const Choice<Value> (&choices)[N]) const {
    std::vector<std::string> names;
    for (const Choice<Value>& choice : choices) names.emplace_back(choice.name);
    return choices[PositionAmong(names)].value;
  }

  /// Throws the DataError "FILE: PATH what".
  [[noreturn]] void Fail(const std::string& what) const;

 private:
  std::size_t PositionAmong(const std::vector<std::string>& names) const;

  const Json* value_;
  std::string fileName_;
  std::string path_;
};

}  // namespace mcbin

#endif
