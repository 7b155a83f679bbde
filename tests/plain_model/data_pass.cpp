// The check of the list and the single pass over the cases.
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <cmath>

#include "plain_model/model.h"

namespace plain_model {

namespace {

constexpr int kHighestCode = 255;

// The category code in a cell; anything that is no whole number of 32 bits counts as too high.
int cellCode(double cell) {
  if (!(std::abs(std::trunc(cell)) < 2147483648.0)) {
    return kHighestCode + 1;
  }
  return static_cast<int>(std::trunc(cell));
}

bool codeIsRefused(int code) { return code < 0 || code > kHighestCode; }

bool isCategoricalLevel(int level) { return level == kNumericLevel || level == kStringLevel; }

// A variable has one column: the target is no input, whatever its role.
bool isInput(const VariableList& list, int index) {
  return list.At(index).role == kAttributeRole && index != list.target;
}

// Gives the variables their columns: the target first, then the weight, then the attributes.
int layOutColumns(const VariableList& list, PreparedData& data) {
  int columns = 0;
  data.columnOf.assign(list.variables.size(), -1);
  if (list.Has(list.target)) {
    ++columns;
  }
  if (list.weight >= 0) {
    data.columnOf[static_cast<std::size_t>(list.weight)] = columns;
    data.weightColumn = columns++;
  }
  for (int i = 0; i < list.Size(); ++i) {
    if (isInput(list, i)) {
      data.columnOf[static_cast<std::size_t>(i)] = columns++;
    }
  }
  if (list.Has(list.target)) {
    data.columnOf[static_cast<std::size_t>(list.target)] = 0;
  }
  return columns;
}

// Stores a code in its column, or ends the column's use. True when the code was refused.
bool storeCode(double raw, std::size_t column, PreparedData& data, Case& cells) {
  if (!data.columnUsed[column]) {
    return false;
  }
  const int code = cellCode(raw);
  if (codeIsRefused(code)) {
    data.columnUsed[column] = false;
    return true;
  }
  cells[column] = code;
  data.highestCode[column] = std::max(data.highestCode[column], code);
  return false;
}

struct CaseResult {
  bool used = true;
  Status status;  // the first problem of the case
};

void processTarget(const VariableList& list, const Case& host, PreparedData& data, Case& cells,
                   CaseResult& result, Events& events) {
  const double raw = host[static_cast<std::size_t>(list.target)];
  if (raw == MCMV::gMissingValue || (raw > -2.0 && raw <= -1.0)) {
    cells[0] = MCMV::gMissingValue;
    events.Count(Event::kMissingTarget);
  } else if (storeCode(raw, 0, data, cells)) {
    events.Count(Event::kTargetCodeRefused);
    const bool goesOn = list.categorical >= 2;
    result.status = goesOn ? warning(120012, list.target) : error(120012, list.target);
  }
}

void processAttribute(const Variable& variable, double raw, std::size_t column, PreparedData& data,
                      Case& cells, CaseResult& result, Events& events) {
  if (variable.level == kScaleLevel) {
    const bool userMissing = variable.kind == Kind::kScale && variable.IsMissing(raw);
    cells[column] = userMissing ? MCMV::gMissingValue : raw;
    events.CountIf(userMissing, Event::kUserMissingValue);
  } else if (raw == MCMV::gMissingValue || raw == -1.0) {
    cells[column] = MCMV::gMissingValue;
  } else if (storeCode(raw, column, data, cells)) {
    events.Count(Event::kAttributeCodeRefused);
    if (result.status.IsOK()) {
      result.status = warning(120012, static_cast<int>(column));
    }
  }
}

CaseResult processCase(const VariableList& list, const Case& host, PreparedData& data, Case& cells,
                       Events& events) {
  CaseResult result;
  if (list.weight >= 0) {
    const auto index = static_cast<std::size_t>(list.weight);
    const std::optional<double> weight = list.At(list.weight).EncodeWeight(host[index]);
    if (!weight) {
      events.Count(Event::kCaseWithoutWeight);
      result.used = false;
      return result;
    }
    cells[static_cast<std::size_t>(data.weightColumn)] = *weight;
  }
  if (list.Has(list.target)) {
    processTarget(list, host, data, cells, result, events);
    if (result.status.IsError()) {
      return result;
    }
  }
  std::size_t column = (list.Has(list.target) ? 1U : 0U) + (list.weight >= 0 ? 1U : 0U);
  for (int i = 0; i < list.Size(); ++i) {
    if (isInput(list, i)) {
      processAttribute(list.At(i), host[static_cast<std::size_t>(i)], column++, data, cells, result,
                       events);
    }
  }
  return result;
}

// A categorical column with a code that its variable does not know of is not to be used.
void dropColumnsWithUnknownCodes(const VariableList& list, PreparedData& data, Events& events) {
  for (std::size_t i = 0; i < list.variables.size(); ++i) {
    if (isCategoricalLevel(list.variables[i].level) && data.columnOf[i] >= 0) {
      const auto column = static_cast<std::size_t>(data.columnOf[i]);
      if (data.highestCode[column] >= list.variables[i].Categories()) {
        data.columnUsed[column] = false;
        events.Count(Event::kUndeclaredCategory);
      }
    }
  }
}

}  // namespace

Status error(int code, int datum) {
  Status status;
  status.code = code;
  status.severity = -1;
  status.discrete[0] = datum;
  return status;
}

Status warning(int code, int datum) {
  Status status = error(code, datum);
  status.severity = 1;
  return status;
}

Status checkList(VariableList list) {
  std::vector<int> single;
  std::vector<int> empty;
  if (list.IsValid(single, empty)) {
    return {};
  }
  Status status = error(120003);
  empty.insert(empty.end(), single.begin(), single.end());
  status.discrete[1] = empty.empty() ? -1 : empty.front();
  return status;
}

PreparedData prepare(const VariableList& list, const std::vector<Case>& cases, Events& events) {
  PreparedData data;
  const auto columns = static_cast<std::size_t>(layOutColumns(list, data));
  data.columns.resize(columns);
  data.columnUsed.assign(columns, true);
  data.highestCode.assign(columns, 0);
  for (const Case& host : cases) {
    if (host.empty()) {
      events.Count(Event::kNullCase);
      continue;
    }
    Case cells(columns, 0.0);
    const CaseResult result = processCase(list, host, data, cells, events);
    if (result.status.IsError()) {
      data.status = result.status;
      return data;
    }
    if (data.status.IsOK()) {
      data.status = result.status;
    }
    if (!result.used) {
      continue;
    }
    for (std::size_t column = 0; column < columns; ++column) {
      data.columns[column].push_back(cells[column]);
    }
    ++data.usedCases;
  }
  if (data.usedCases == 0) {
    data.status = error(120004);
    return data;
  }
  events.CountIf(data.usedCases > 10000, Event::kManyCases);
  dropColumnsWithUnknownCodes(list, data, events);
  return data;
}

}  // namespace plain_model
