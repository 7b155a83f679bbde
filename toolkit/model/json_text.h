/// JSON as this program writes it.
#ifndef MCBIN_TOOLKIT_MODEL_JSON_TEXT_H
#define MCBIN_TOOLKIT_MODEL_JSON_TEXT_H

#include <nlohmann/json.hpp>
#include <string>

namespace mcbin {

/// Keeps keys in the order in which they were set, so that the same model gives the same bytes.
using Json = nlohmann::ordered_json;

/// The value as JSON text without a final line end: two blanks of indentation, arrays of plain
/// values on one line, and every double as its shortest text that reads back the same. Strings
/// must be UTF-8; a double that is not finite (see `numberToJson`) is a std::logic_error.
std::string jsonText(const Json& value);

/// A double as JSON; infinities, which JSON numbers cannot hold, become "inf" and "-inf".
Json numberToJson(double value);

}  // namespace mcbin

#endif
