#include "toolkit/apply/row_binner.h"

#include <fmt/format.h>

#include <set>
#include <unordered_map>

#include "toolkit/errors.h"
#include "toolkit/model/bin_lookup.h"
#include "toolkit/text/csv_text.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

using Positions = std::unordered_map<std::string_view, std::size_t>;

Positions positionsOf(const std::vector<std::string>& names) {
  Positions positions;
  for (const std::string& name : names) positions.emplace(name, positions.size());
  return positions;
}

}  // namespace

RowBinner::RowBinner(const Model& model, const TableReader& reader, const Options& options)
    : model_(model), reader_(reader), options_(options), cells_(model.options.naTexts) {
  const std::vector<std::string>& names = reader.ColumnNames();
  const Positions positions = positionsOf(names);
  for (const AttributeModel& attribute : model.attributes) {
    const auto column = positions.find(attribute.name);
    if (column == positions.end()) {
      throw DataError(fmt::format(
          "{}: there is no column {}, which the model cuts; choose others with --attribute",
          options.data, excerpt(attribute.name)));
    }
    attributes_.push_back({&attribute, column->second, BinLabels(model, attribute, options.style)});
  }
  byColumn_.resize(names.size());
  for (const Attribute& attribute : attributes_) byColumn_[attribute.column] = &attribute;
  CheckNames(OutputNames());
}

void RowBinner::CheckNames(const std::vector<std::string>& names) const {
  std::set<std::string_view> seen;
  for (const std::string& name : names) {
    if (!seen.insert(name).second) {
      throw DataError(
          fmt::format("the binned data would have two columns {}; rename the one in the data{}",
                      excerpt(name), options_.inPlace ? "" : " or use --replace"));
    }
  }
}

std::vector<std::string> RowBinner::OutputNames() const {
  std::vector<std::string> names;
  const auto addLabels = [&](const Attribute& attribute) {
    for (std::string& name :
         labelColumns(attribute.model->name, options_.style, options_.inPlace)) {
      names.push_back(std::move(name));
    }
  };
  for (std::size_t column = 0; column < byColumn_.size(); ++column) {
    if (options_.inPlace && byColumn_[column] != nullptr) {
      addLabels(*byColumn_[column]);
    } else {
      names.push_back(reader_.ColumnNames()[column]);
    }
  }
  if (!options_.inPlace) {
    for (const Attribute& attribute : attributes_) addLabels(attribute);
  }
  return names;
}

std::string RowBinner::Header() const {
  std::string line;
  bool first = true;
  for (const std::string& name : OutputNames()) {
    appendCsvCell(line, name, options_.delimiter, first);
    first = false;
  }
  return line + "\n";
}

const std::string& RowBinner::Line(const TableRow& row) {
  line_.clear();
  lineIsNew_ = true;
  for (std::size_t column = 0; column < row.cells.size(); ++column) {
    if (options_.inPlace && byColumn_[column] != nullptr) {
      AppendLabels(*byColumn_[column], row);
    } else {
      AppendCell(row.cells[column]);
    }
  }
  if (!options_.inPlace) {
    for (const Attribute& attribute : attributes_) AppendLabels(attribute, row);
  }
  // A line without a byte would be passed over when it is read again.
  if (line_.empty()) line_ = "\"\"";
  line_ += '\n';
  return line_;
}

const std::vector<std::string>& RowBinner::LabelsOf(const Attribute& attribute,
                                                    const TableRow& row) const {
  const std::string_view cell = row.cells[attribute.column];
  std::optional<double> value;
  double number = 0.0;
  switch (cells_.Read(cell, number)) {
    case CellKind::Missing:
      break;
    case CellKind::Number:
      value = number;
      break;
    case CellKind::Text:
    case CellKind::OutOfRange:
      throw DataError(fmt::format("{}: column {} holds {}, which is no number that can be binned",
                                  reader_.Where(row), excerpt(attribute.model->name),
                                  quotedExcerpt(cell)));
  }
  return attribute.labels.Of(place(*attribute.model, model_.closedSide, value));
}

void RowBinner::AppendLabels(const Attribute& attribute, const TableRow& row) {
  for (const std::string& label : LabelsOf(attribute, row)) AppendCell(label);
}

void RowBinner::AppendCell(std::string_view cell) {
  appendCsvCell(line_, cell, options_.delimiter, lineIsNew_);
  lineIsNew_ = false;
}

}  // namespace mcbin
