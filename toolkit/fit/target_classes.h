/// The classes of a target, from the texts in its cells.
#ifndef MCBIN_TOOLKIT_FIT_TARGET_CLASSES_H
#define MCBIN_TOOLKIT_FIT_TARGET_CLASSES_H

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace mcbin {

/// The library's codes go from 0 to 255.
inline constexpr std::size_t kMaxClasses = 256;

/// Hashes texts and views alike, so that looking a cell up copies nothing.
struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>()(text);
  }
};
/// The code of each text that names a class.
using ClassCodes = std::unordered_map<std::string, int, TextHash, std::equal_to<>>;

/// The number that a class text holds: a decimal of 15 digits at most, so that equal texts and
/// equal numbers are the same thing, and without leading zeros: 007 is a text.
std::optional<double> classNumber(std::string_view text);

/// Whether two texts name the same class of a numeric target, or are the same text.
bool namesSameClass(std::string_view a, std::string_view b);

/// Collects the texts of a target. Classes do not depend on the order of the cases: when every text
/// is a number they are those numbers in ascending order, written in the shortest way (1, 1.0 and
/// 1e0 are the class 1), else they are the texts in the order of their bytes.
class TargetClasses {
 public:
  /// Whether the text was added before.
  bool Has(std::string_view text) const { return texts_.find(text) != texts_.end(); }

  /// Takes the text of a case, which names a class. False when that is a class too many.
  bool Add(std::string_view text);

  /// In code order.
  std::vector<std::string> Names() const;

  /// The code of every text that was added.
  ClassCodes Codes() const;

 private:
  std::vector<std::string> SortedTexts() const;

  std::unordered_set<std::string, TextHash, std::equal_to<>> texts_;
  std::set<double> numbers_;
  bool isNumeric_ = true;
};

}  // namespace mcbin

#endif
