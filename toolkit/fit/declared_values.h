/// Whether the values that a user declared missing are there at all.
#ifndef MCBIN_TOOLKIT_FIT_DECLARED_VALUES_H
#define MCBIN_TOOLKIT_FIT_DECLARED_VALUES_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/fit/column_plan.h"

namespace mcbin {

/// Told of the cells of one column, knows which of its declarations never met one.
class DeclaredValues {
 public:
  /// `column` is borrowed.
  explicit DeclaredValues(const ColumnPlan& column)
      : column_(column), isMet_(column.missingTexts.size(), false) {}

  /// A value that the column's rules contain.
  void Meet(double value);
  /// A category of the target, which may or may not be declared.
  void Meet(std::string_view category);

  /// "column age: no case has the declared missing value 999", by position among the declarations.
  std::map<std::size_t, std::string> NeverMet() const;

 private:
  const ColumnPlan& column_;
  std::vector<bool> isMet_;  ///< By position among the column's missing texts.
  bool rangeIsMet_ = false;
};

}  // namespace mcbin

#endif
