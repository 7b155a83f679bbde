#ifndef MCBINNING_DATA_SORTED_ROWS_H
#define MCBINNING_DATA_SORTED_ROWS_H

#include <cstddef>
#include <vector>

namespace MCBinning {

/// The usable rows of one attribute, ascending by value (NaN after all numbers, -0.0 equal to
/// 0.0), rows of equal value in the order of the cases. How the rows are held is nobody else's
/// matter: algorithms read them through the accessors only.
class SortedRows {
 public:
  struct Row {
    double value;
    int code;
    double weight;
  };

  SortedRows();

  /// Takes rows that are already in order.
  explicit SortedRows(const std::vector<Row>& sortedRows);

  std::size_t Size() const { return rows_.size(); }

  /// Rows count from 0 to Size() - 1 (not checked).
  double Value(std::size_t row) const { return rows_[row].value; }

  /// The target's category code, from 0; 0 in rows without a target.
  int Code(std::size_t row) const { return rows_[row].code; }

  /// 1.0 in rows without a weight variable.
  double Weight(std::size_t row) const { return rows_[row].weight; }

  /// Empties the rows and makes room for `rows` of them, so that no Append allocates. Throws
  /// std::bad_alloc or std::length_error when there is no such room.
  void Restart(std::size_t rows);

  void Append(double value, int code, double weight) { rows_.push_back({value, code, weight}); }

  /// Puts the appended rows in order.
  void Sort();

 private:
  std::vector<Row> rows_;
};

}  // namespace MCBinning

#endif
