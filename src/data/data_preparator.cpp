#include "data/data_preparator.h"

#include <mccomvor/missing_value.h>
#include <mccomvor/record.h>

#include <limits>
#include <ostream>

#include "data/category_code.h"
#include "data/column_buffer.h"
#include "mcbinning/encoders.h"
#include "mcbinning/user_missing.h"
#include "platform/cpu_clock.h"
#include "status/status_codes.h"

namespace MCBinning {
namespace {

constexpr std::uint32_t kBufferedRecords = 10000;
constexpr std::uint32_t kMaxCases = std::numeric_limits<std::uint32_t>::max();

/// Tells the listener of every `interval`-th round of the pass.
class PassProgress {
 public:
  PassProgress(ProgressListener* listener, int interval)
      : listener_(listener), interval_(static_cast<std::uint32_t>(interval)), left_(interval_) {
    if (listener_ != nullptr) {
      start_ = readClock();
    }
  }

  void Round(std::uint32_t casesRead) {
    // An interval of 0 wraps round: no report for 2^32 rounds.
    if (listener_ == nullptr || --left_ != 0) {
      return;
    }
    reporter_.SetValues(casesRead, elapsedSeconds(start_));
    listener_->ReportProgress(reporter_);
    left_ = interval_;
  }

 private:
  ProgressListener* listener_;
  std::uint32_t interval_;
  std::uint32_t left_;
  ClockReading start_ = 0;
  BINProgressReporter reporter_;
};

/// Null also for a host's own definition, which claims a data type but holds no values to ask for.
const BINNumericUserMissing* numericUserMissing(const IBINVariable& variable) {
  return dynamic_cast<const BINNumericUserMissing*>(variable.GetUserMissingInfo());
}

bool isCategorical(IBINVariable::MeasureLevel level) {
  return level == IBINVariable::NumericCategoricalLevel ||
         level == IBINVariable::StringCategoricalLevel;
}

}  // namespace

BINDataPreparator::BINDataPreparator(const std::string& tempDirName, ProgressListener* listener,
                                     int reportInterval, CancelState& cancelState,
                                     BINVarList& varList, FileSystem& files)
    : listener_(listener),
      reportInterval_(reportInterval),
      cancelState_(cancelState),
      varList_(varList),
      files_(files),
      columnFiles_(tempDirName, cancelState, files),
      variableIndex_(static_cast<std::size_t>(varList.Size()), -1),
      nAttributes_(varList.GetNumAttributeVars()) {
  const int size = static_cast<int>(variableIndex_.size());
  for (int variable = 0; variable < size; ++variable) {
    levels_.push_back(varList.GetVarAt(variable)->GetMeasureLevel());
    roles_.push_back(varList.GetVariableRole(variable));
  }
  const int target = varList.GetTargetIndex();
  hasTarget_ = target >= 0 && target < size;
  if (hasTarget_) {
    AddColumn(target, true);
  }
  IBINEncoder* encoder = varList.GetEncoderAt(varList.GetWeightIndex());
  if (encoder != nullptr && encoder->GetEncoderType() == IBINEncoder::RoundEncoderType) {
    weightIndex_ = varList.GetWeightIndex();
    weightEncoder_ = static_cast<const BINRoundEncoder*>(encoder);
    weightColumn_ = GetNumberOfColumns();
    AddColumn(weightIndex_, false);
  }
  firstInput_ = columns_.size();
  for (int variable = 0; variable < size; ++variable) {
    const auto index = static_cast<std::size_t>(variable);
    if (variableIndex_[index] < 0 && roles_[index] == IBINVariable::AttributeRole) {
      AddColumn(variable, levels_[index] != IBINVariable::ContinuousLevel);
    }
  }
  SortInputs();
}

void BINDataPreparator::SortInputs() {
  for (std::size_t column = firstInput_; column < columns_.size(); ++column) {
    if (columns_[column].holdsCodes || columns_[column].userMissing != nullptr) {
      checkedInputs_.push_back(column);
    } else {
      plainInputs_.push_back({columns_[column].variable, column});
    }
  }
}

BINDataPreparator::~BINDataPreparator() = default;

void BINDataPreparator::AddColumn(int variable, bool holdsCodes) {
  int& index = variableIndex_[static_cast<std::size_t>(variable)];
  if (index < 0) {
    index = GetNumberOfColumns();
  }
  columns_.push_back({variable, holdsCodes,
                      holdsCodes ? nullptr : numericUserMissing(*varList_.GetVarAt(variable))});
}

int BINDataPreparator::GetColumnOf(int variable) const {
  const auto index = static_cast<std::size_t>(variable);
  return variable >= 0 && index < variableIndex_.size() ? variableIndex_[index] : -1;
}

MCStatus BINDataPreparator::GetColumnUseFlag(int column, bool& isUsed) const {
  if (column < 0 || column >= GetNumberOfColumns()) {
    return errorStatus(kNoSuchIndex);
  }
  isUsed = columns_[static_cast<std::size_t>(column)].isUsed;
  return MCStatus();
}

MCStatus BINDataPreparator::PrepareData(BINCaseIterator& cases) {
  StartAnew();
  try {
    const MCStatus status = RunPass(cases);
    if (!status.IsOK()) {
      status_ = status;
    }
  } catch (...) {
    DiscardPass();
    status_ = errorStatus(kFailed);
    throw;
  }
  if (status_.IsError()) {
    DiscardPass();
  }
  return status_;
}

void BINDataPreparator::StartAnew() {
  DiscardPass();
  status_ = MCStatus();
  for (Column& column : columns_) {
    column.isUsed = true;
    column.highestCode = 0;
  }
}

void BINDataPreparator::DiscardPass() noexcept {
  columnFiles_.Remove();
  casesUsed_ = 0;
}

MCStatus BINDataPreparator::RunPass(BINCaseIterator& cases) {
  ColumnBuffer buffer;
  MCStatus status = SetUp(buffer);
  if (status.IsOK()) {
    status = ReadCases(cases, buffer);
  }
  if (status.IsError()) {
    return status;
  }
  // What this flush loses is noticed when the column is read and ends early.
  columnFiles_.Flush(buffer);
  if (cancelState_.IsCancelled()) {
    return errorStatus(kCancelled);
  }
  if (casesUsed_ == 0) {
    return errorStatus(kNoCases);
  }
  GiveUpColumnsWithUnknownCodes();
  return MCStatus();
}

MCStatus BINDataPreparator::SetUp(ColumnBuffer& buffer) {
  if (!buffer.Allocate(columns_.size(), kBufferedRecords) &&
      !buffer.Allocate(columns_.size(), kBufferedRecords / 2)) {
    return errorStatus(kFailed);
  }
  return columnFiles_.SetUp(columns_.size());
}

MCStatus BINDataPreparator::ReadCases(BINCaseIterator& cases, ColumnBuffer& buffer) {
  PassProgress progress(listener_, reportInterval_);
  std::uint32_t casesRead = 0;
  while (cases.HasNext() && !cancelState_.IsCancelled()) {
    if (const MCCommon::Record* record = cases.Next()) {
      ++casesRead;
      const CaseOutcome outcome = TakeCase(*record, buffer);
      if (outcome == CaseOutcome::Failed) {
        return status_;
      }
      if (buffer.IsFull()) {
        const MCStatus status = columnFiles_.Flush(buffer);
        if (status.IsError()) {
          return status;
        }
      }
      if (outcome == CaseOutcome::Used) {
        // The count would wrap round. GCOVR_EXCL_START: no test has that many cases.
        if (casesUsed_ == kMaxCases) {
          return errorStatus(kFailed);
        }
        // GCOVR_EXCL_STOP
        ++casesUsed_;
      }
    }
    progress.Round(casesRead);
  }
  return MCStatus();
}

BINDataPreparator::CaseOutcome BINDataPreparator::TakeCase(const MCCommon::Record& record,
                                                           ColumnBuffer& buffer) {
  if (weightEncoder_ != nullptr) {
    const double weight = weightEncoder_->Encode(record[weightIndex_]);
    if (weight == MCMV::gMissingValue) {
      return CaseOutcome::Skipped;
    }
    buffer.Append(static_cast<std::size_t>(weightColumn_), weight);
  }
  if (hasTarget_ && !TakeTarget(record, buffer)) {
    return CaseOutcome::Failed;
  }
  for (const PlainInput& input : plainInputs_) {
    buffer.Append(input.column, record[input.variable]);
  }
  for (const std::size_t column : checkedInputs_) {
    TakeCheckedInput(column, record, buffer);
  }
  return CaseOutcome::Used;
}

bool BINDataPreparator::TakeTarget(const MCCommon::Record& record, ColumnBuffer& buffer) {
  Column& column = columns_.front();
  if (!column.isUsed) {
    return true;
  }
  const double cell = record[column.variable];
  const int code = truncatedCode(cell);
  // Unlike an input, a target between -2 and -1 is user-missing too: its truncated code is tested.
  if (cell == MCMV::gMissingValue || code == -1) {
    buffer.Append(0, MCMV::gMissingValue);
  } else if (TakeCode(column, code)) {
    buffer.Append(0, code);
  } else {
    const bool isWarning = varList_.GetNumCatVar() >= 2;
    NoteCodeTooHigh(isWarning, column.variable);
    return isWarning;
  }
  return true;
}

void BINDataPreparator::TakeCheckedInput(std::size_t index, const MCCommon::Record& record,
                                         ColumnBuffer& buffer) {
  Column& column = columns_[index];
  if (!column.isUsed) {
    return;
  }
  double cell = record[column.variable];
  if (column.holdsCodes) {
    if (cell == -1.0) {
      cell = MCMV::gMissingValue;
    } else if (cell != MCMV::gMissingValue) {
      const int code = truncatedCode(cell);
      if (!TakeCode(column, code)) {
        NoteCodeTooHigh(true, static_cast<int>(index));
        return;
      }
      cell = code;
    }
  } else if (column.userMissing->Contains(cell)) {
    cell = MCMV::gMissingValue;
  }
  buffer.Append(index, cell);
}

bool BINDataPreparator::TakeCode(Column& column, int code) {
  column.isUsed = isCategoryCode(code);
  if (column.isUsed && code > column.highestCode) {
    column.highestCode = code;
  }
  return column.isUsed;
}

void BINDataPreparator::NoteCodeTooHigh(bool isWarning, int datum) {
  if (status_.IsOK() || !isWarning) {
    status_ = about({kNoCategoryCode, isWarning}, datum);
  }
}

void BINDataPreparator::GiveUpColumnsWithUnknownCodes() {
  for (Column& column : columns_) {
    const IBINVariable& variable = *varList_.GetVarAt(column.variable);
    if (isCategorical(variable.GetMeasureLevel()) &&
        column.highestCode >= variable.GetNumberOfCategories()) {
      column.isUsed = false;
    }
  }
}

void BINDataPreparator::Display(std::ostream& os) const {
  os << "BINDataPreparator object: " << std::endl;
  os << "\tPossible inputs used? ";
  os << "\tOriginal record size = " << columns_.size() << std::endl;
  os << "\tProcessed record size = " << columns_.size() << std::endl;
  os << "\tInput-only record size = " << nAttributes_ << std::endl;
  os << "\tFrequency weight original and new indices: " << weightIndex_ << "   "
     << (weightEncoder_ != nullptr ? 1 : 0) << std::endl;
  os << "\tVariable index: ";
  for (const int column : variableIndex_) {
    os << column << ' ';
  }
  os << std::endl << "\tIndices of input variables in the variable list: ";
  for (std::size_t column = firstInput_; column < columns_.size(); ++column) {
    os << columns_[column].variable << ' ';
  }
  os << std::endl << "\tVariable measurement levels: ";
  for (const auto level : levels_) {
    os << static_cast<int>(level) << ' ';
  }
  os << std::endl << "\tVariable roles: ";
  for (const auto role : roles_) {
    os << static_cast<int>(role) << ' ';
  }
  os << std::endl << std::endl;
  if (status_.IsOK()) {
    os << "\tStatus is OK.\n";
  } else {
    os << "\tStatus has error code " << status_.GetErrorCode() << std::endl;
  }
  varList_.Display(os);
}

}  // namespace MCBinning
