#include "toolkit/apply/column_binner.h"

#include <fmt/format.h>

#include <algorithm>

#include "toolkit/errors.h"
#include "toolkit/model/bin_lookup.h"

namespace mcbin {
namespace {

constexpr std::size_t kRowsPerReport = 65536;

std::size_t columnOf(const AttributeModel& attribute, const std::vector<ColumnHead>& heads) {
  const auto head = std::find_if(heads.begin(), heads.end(), [&](const ColumnHead& candidate) {
    return candidate.name == attribute.name;
  });
  if (head == heads.end()) {
    throw DataError(
        fmt::format("the data have no column {}, which the model cuts", attribute.name));
  }
  if (!head->whyUnfit.empty()) {
    throw DataError(fmt::format("column {}: {}", attribute.name, head->whyUnfit));
  }
  return static_cast<std::size_t>(head - heads.begin());
}

/// Tells the monitor of rows, over all attributes and batches.
class Watch {
 public:
  Watch(Monitor& monitor, std::uint64_t cells) : monitor_(monitor), cells_(cells) {}

  void Cell() {
    if (++done_ % kRowsPerReport != 0) return;
    monitor_.ThrowIfStopped();
    const double done = static_cast<double>(done_);
    monitor_.Update("binning cells", cells_ == 0 ? -1.0 : done / static_cast<double>(cells_), done,
                    "cells");
  }

 private:
  Monitor& monitor_;
  std::uint64_t cells_;
  std::uint64_t done_ = 0;
};

}  // namespace

std::vector<std::vector<std::int32_t>> binColumns(const Model& model, BatchReader& reader,
                                                  Monitor& monitor) {
  const ScaleCells cells(model.options.naTexts);
  std::vector<std::size_t> columns;
  for (const AttributeModel& attribute : model.attributes) {
    columns.push_back(columnOf(attribute, reader.Heads()));
  }
  std::vector<std::vector<std::int32_t>> bins(columns.size());
  Watch watch(monitor, reader.Rows() * columns.size());
  std::uint64_t rowsBefore = 0;
  for (ColumnBatch batch; reader.NextBatch(batch); rowsBefore += batch.rows) {
    for (std::size_t a = 0; a < columns.size(); ++a) {
      const AttributeModel& attribute = model.attributes[a];
      const Column& column = *batch.columns[columns[a]];
      for (std::size_t row = 0; row < batch.rows; ++row) {
        double value = 0.0;
        const CellKind kind = column.ReadNumber(row, cells, value);
        if (kind == CellKind::Text || kind == CellKind::OutOfRange) {
          std::string buffer;
          throw DataError(
              fmt::format("row {}: column {} holds '{}', which is no number that can be binned",
                          rowsBefore + row, attribute.name, column.ReadText(row, buffer)));
        }
        bins[a].push_back(binNumber(
            place(attribute, model.closedSide,
                  kind == CellKind::Number ? std::optional<double>(value) : std::nullopt)));
        watch.Cell();
      }
    }
  }
  monitor.ThrowIfStopped();
  monitor.Clear();
  return bins;
}

}  // namespace mcbin
