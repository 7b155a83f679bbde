/// The rows of a table of text cells as cases.
#ifndef MCBIN_TOOLKIT_FIT_TEXT_CASES_H
#define MCBIN_TOOLKIT_FIT_TEXT_CASES_H

#include <string>
#include <vector>

#include "toolkit/fit/case_source.h"
#include "toolkit/input/table_reader.h"

namespace mcbin {

class TextCases : public CaseSource {
 public:
  /// Borrows `reader`, which must stand in front of its first row.
  TextCases(TableReader& reader, const std::vector<std::string>& naTexts)
      : reader_(reader), cells_(naTexts) {}

  const std::vector<std::string>& ColumnNames() const override { return reader_.ColumnNames(); }
  void Rewind() override { reader_.Rewind(); }
  bool NextCase() override { return reader_.NextRow(row_); }
  CellKind ReadNumber(std::size_t column, double& value) override {
    return cells_.Read(row_.cells[column], value);
  }
  std::string_view ReadText(std::size_t column) override { return row_.cells[column]; }
  std::string Where() const override { return reader_.Where(row_); }
  double ShareRead() const override { return reader_.ShareRead(); }

 private:
  TableReader& reader_;
  ScaleCells cells_;
  TableRow row_;
};

}  // namespace mcbin

#endif
