/// What a text cell says: a number, nothing, or a text.
#ifndef MCBIN_TOOLKIT_INPUT_CELLS_H
#define MCBIN_TOOLKIT_INPUT_CELLS_H

#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/input/plain_decimal.h"

namespace mcbin {

/// The texts that are read as missing when the user names none. An empty cell always is missing.
const std::vector<std::string>& defaultNaTexts();

/// A cell without the blanks and tabs around it.
std::string_view trimmed(std::string_view cell);

/// Whether the cell is empty, blank or one of `naTexts` (blanks around it do not count), as it is
/// or as asUtf8() stores it.
bool isMissingCell(std::string_view cell, const std::vector<std::string>& naTexts);

enum class NumberReading { Number, NotANumber, OutOfRange };

/// Reads a decimal number (also inf, -inf, infinity; a leading +; blanks around it) to the nearest
/// double. "nan" is not a number: name it with --na. `value` is set only for Number.
NumberReading readNumber(std::string_view cell, double& value);

enum class CellKind { Missing, Number, Text, OutOfRange };

/// Reads the cells of scale columns.
class ScaleCells {
 public:
  explicit ScaleCells(const std::vector<std::string>& naTexts);

  /// What the cell says, missing texts first. `value` is set only for Number.
  CellKind Read(std::string_view cell, double& value) const {
    if (!numbersMayBeMissing_ && readPlainDecimal(cell, value)) return CellKind::Number;
    return ReadAnyCell(cell, value);
  }

  /// What a cell says that is a number already: NaN is missing, and so is a number whose shortest
  /// text is a missing text.
  CellKind OfNumber(double number) const {
    if (std::isnan(number)) return CellKind::Missing;
    return numbersMayBeMissing_ ? OfAnyNumber(number) : CellKind::Number;
  }

 private:
  CellKind OfAnyNumber(double number) const;
  CellKind ReadAnyCell(std::string_view cell, double& value) const;

  std::vector<std::string> naTexts_;
  bool numbersMayBeMissing_;  ///< Some missing text reads as a number.
};

}  // namespace mcbin

#endif
