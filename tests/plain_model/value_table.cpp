// The sorted rows of one attribute.
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>
#include <map>

#include "plain_model/model.h"

namespace plain_model {

namespace {

bool comesBefore(const Row& a, const Row& b) {
  if (std::isnan(a.value) || std::isnan(b.value)) {
    return !std::isnan(a.value) && std::isnan(b.value);
  }
  return a.value < b.value;
}

// The variable's column when it has one that is in use, else -1.
int usableColumn(const VariableList& list, const PreparedData& data, int index) {
  if (!list.Has(index)) {
    return -1;
  }
  const int column = data.columnOf[static_cast<std::size_t>(index)];
  const bool usable = column >= 0 && data.columnUsed[static_cast<std::size_t>(column)];
  return usable ? column : -1;
}

void countValueEvents(const ValueTable& table, Events& events) {
  for (const Row& row : table.rows) {
    events.CountIf(std::isnan(row.value), Event::kNaNValue);
    events.CountIf(std::isinf(row.value), Event::kInfiniteValue);
    events.CountIf(row.value == 0.0 && std::signbit(row.value), Event::kNegativeZero);
    events.CountIf(std::fpclassify(row.value) == FP_SUBNORMAL, Event::kDenormalValue);
    events.CountIf(row.weight != std::floor(row.weight), Event::kFractionalWeight);
  }
  events.CountIf(table.rows.size() > table.distinctValues, Event::kTiedValues);
}

// Reads the columns case by case; a negative target column stands for a table without target.
ValueTable readTable(const PreparedData& data, int attributeColumn, int targetColumn,
                     Events& events) {
  ValueTable table;
  for (std::size_t i = 0; i < data.usedCases; ++i) {
    const double weight =
        data.weightColumn < 0 ? 1.0 : data.columns[static_cast<std::size_t>(data.weightColumn)][i];
    const double value = data.columns[static_cast<std::size_t>(attributeColumn)][i];
    const double target =
        targetColumn < 0 ? 0.0 : data.columns[static_cast<std::size_t>(targetColumn)][i];
    table.totalWeightWithMissing += weight;
    if (value != MCMV::gMissingValue && target != MCMV::gMissingValue) {
      table.totalWeight += weight;
      table.rows.push_back({value, static_cast<int>(target), weight});
    }
  }
  sortRows(table.rows);
  if (!table.rows.empty()) {
    table.minimum = table.rows.front().value;
    table.maximum = table.rows.back().value;
  }
  table.distinctValues = countDistinctValues(table.rows);
  countValueEvents(table, events);
  return table;
}

}  // namespace

void sortRows(std::vector<Row>& rows) {
  const auto isZero = [](const Row& row) { return row.value == 0.0; };
  const auto first = std::find_if(rows.begin(), rows.end(), isZero);
  const double zero = first == rows.end() ? 0.0 : first->value;
  for (Row& row : rows) {
    row.value = isZero(row) ? zero : row.value;
  }
  std::stable_sort(rows.begin(), rows.end(), comesBefore);
}

std::vector<Row> mergeRows(const std::vector<Row>& rows) {
  std::vector<Row> merged;
  for (std::size_t begin = 0; begin < rows.size();) {
    std::map<int, double> weights;
    std::size_t end = begin;
    do {
      weights[rows[end].code] += rows[end].weight;
      ++end;
    } while (end < rows.size() && rows[end].value == rows[begin].value);
    for (const auto& [code, weight] : weights) {
      merged.push_back({rows[begin].value, code, weight});
    }
    begin = end;
  }
  return merged;
}

unsigned countDistinctValues(const std::vector<Row>& rows) {
  unsigned distinct = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    distinct += i == 0 || rows[i].value != rows[i - 1].value ? 1U : 0U;
  }
  return distinct;
}

ValueTable::ValueTable() : minimum(MCMV::gMissingValue), maximum(MCMV::gMissingValue) {}

Status checkTarget(const VariableList& list, const PreparedData& data, int target) {
  const bool holdsCodes = target == list.target || (target != list.weight && list.Has(target) &&
                                                    list.At(target).level != kScaleLevel);
  return usableColumn(list, data, target) < 0 || !holdsCodes ? error(120010) : Status();
}

ValueTable supervisedTable(const VariableList& list, const PreparedData& data, int attribute,
                           int target, Events& events) {
  ValueTable table;
  table.status = checkTarget(list, data, target);
  if (table.status.IsError()) {
    events.Count(Event::kUnusableTarget);
    return table;
  }
  const int attributeColumn = usableColumn(list, data, attribute);
  if (attributeColumn < 0) {
    events.Count(Event::kUnusableAttribute);
    table.status = error(120013, attribute);
    return table;
  }
  const int targetColumn = usableColumn(list, data, target);
  table = readTable(data, attributeColumn, targetColumn, events);
  table.targetCategories = data.highestCode[static_cast<std::size_t>(targetColumn)] + 1;
  return table;
}

ValueTable unsupervisedTable(const VariableList& list, const PreparedData& data, int attribute,
                             Events& events) {
  ValueTable table;
  const int attributeColumn = usableColumn(list, data, attribute);
  if (attributeColumn < 0) {
    events.Count(Event::kUnusableAttribute);
    table.status = error(120013, attribute);
    return table;
  }
  return readTable(data, attributeColumn, -1, events);
}

std::vector<std::vector<double>> countPerBin(const ValueTable& table,
                                             const std::vector<double>& boundaries,
                                             bool rightClosed, Status& status) {
  const auto categories = static_cast<std::size_t>(table.targetCategories);
  const std::size_t bins = boundaries.size() - 1;
  std::vector<std::vector<double>> counts(bins, std::vector<double>(categories, 0.0));
  std::vector<double> running(categories, 0.0);
  std::size_t bin = 0;
  for (const Row& row : table.rows) {
    for (;;) {
      const double upper = boundaries[bin + 1];
      if (rightClosed ? row.value <= upper : row.value < upper) {
        break;
      }
      counts[bin] = running;
      running.assign(categories, 0.0);
      ++bin;
      if (bin == bins) {
        status = warning(120002);
        return counts;
      }
    }
    running[static_cast<std::size_t>(row.code)] += row.weight;
  }
  if (bin + 1 == bins) {
    counts[bin] = running;
  } else {
    status = warning(120002);
  }
  return counts;
}

}  // namespace plain_model
