/// Rows of a table with the bins of a model's attributes.
#ifndef MCBIN_TOOLKIT_APPLY_ROW_BINNER_H
#define MCBIN_TOOLKIT_APPLY_ROW_BINNER_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/input/cells.h"
#include "toolkit/input/table_reader.h"
#include "toolkit/model/bin_labels.h"
#include "toolkit/model/model.h"

namespace mcbin {

/// Makes the lines of the binned table from the rows of a table that has a column for every
/// attribute of the model: all cells of the row, then the labels of the attributes in the order of
/// the model; or, in place, the labels where the attribute's cell was.
class RowBinner {
 public:
  struct Options {
    std::string data;  ///< What messages call the table.
    LabelStyle style = LabelStyle::Index;
    bool inPlace = false;
    char delimiter = ',';
  };

  /// `model` and `reader` are borrowed. DataError when the table lacks a column or has one of the
  /// names that the labels would get.
  RowBinner(const Model& model, const TableReader& reader, const Options& options);

  /// The first line, with its line end.
  std::string Header() const;

  /// The line of a row, with its line end; good until the next call. DataError when a cell that is
  /// to be binned holds a text.
  const std::string& Line(const TableRow& row);

 private:
  struct Attribute {
    const AttributeModel* model;
    std::size_t column;
    BinLabels labels;
  };

  void CheckNames(const std::vector<std::string>& names) const;
  std::vector<std::string> OutputNames() const;
  const std::vector<std::string>& LabelsOf(const Attribute& attribute, const TableRow& row) const;
  void AppendLabels(const Attribute& attribute, const TableRow& row);
  void AppendCell(std::string_view cell);

  const Model& model_;
  const TableReader& reader_;
  Options options_;
  ScaleCells cells_;
  std::vector<Attribute> attributes_;
  std::vector<const Attribute*> byColumn_;  ///< Null for a column that is not binned.
  std::string line_;
  bool lineIsNew_ = true;  ///< No cell was appended yet; an empty first cell leaves no byte.
};

}  // namespace mcbin

#endif
