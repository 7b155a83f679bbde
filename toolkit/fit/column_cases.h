/// The rows of typed columns as cases.
#ifndef MCBIN_TOOLKIT_FIT_COLUMN_CASES_H
#define MCBIN_TOOLKIT_FIT_COLUMN_CASES_H

#include <cstdint>
#include <string>
#include <vector>

#include "toolkit/columns/column.h"
#include "toolkit/fit/case_source.h"

namespace mcbin {

class ColumnCases : public CaseSource {
 public:
  /// Borrows `reader`, which must stand in front of its first batch. `place` is what Where() says
  /// of a table whose rows have no order; empty for the row.
  ColumnCases(BatchReader& reader, const std::vector<std::string>& naTexts, std::string place = {});

  const std::vector<std::string>& ColumnNames() const override { return names_; }
  std::string WhyUnfit(std::size_t column) const override {
    return reader_.Heads()[column].whyUnfit;
  }
  bool HoldsOnlyNumbers(std::size_t column) const override {
    return reader_.Heads()[column].onlyNumbers;
  }
  void Rewind() override;
  bool NextCase() override;
  CellKind ReadNumber(std::size_t column, double& value) override {
    return batch_.columns[column]->ReadNumber(row_, cells_, value);
  }
  std::string_view ReadText(std::size_t column) override {
    return batch_.columns[column]->ReadText(row_, text_);
  }
  /// "row 17", counting from 0, or the place.
  std::string Where() const override;
  double ShareRead() const override;

 private:
  BatchReader& reader_;
  ScaleCells cells_;
  std::vector<std::string> names_;
  ColumnBatch batch_;
  std::size_t row_ = 0;  ///< In the batch.
  std::string text_;
  std::string place_;
};

}  // namespace mcbin

#endif
