#ifndef MCBINNING_DATA_DATA_PREPARATOR_H
#define MCBINNING_DATA_DATA_PREPARATOR_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "data/column_files.h"
#include "mcbinning/case_iterator.h"
#include "mcbinning/progress.h"
#include "mcbinning/status.h"
#include "mcbinning/variable_list.h"
#include "platform/file_system.h"
#include "status/cancel_state.h"

class BINNumericUserMissing;
class BINRoundEncoder;

namespace MCBinning {

class ColumnBuffer;

/// Makes the one pass over the host's cases and spools what the algorithms need, column by column,
/// to temporary files (docs/column-files.md). Columns: the target (the variable at the list's
/// target index, whatever its role) is column 0; then the weight; then the other variables with
/// AttributeRole in list order. No other variable has a column, a second one with TargetRole
/// included. A target index outside the list counts as no target.
///
/// Each cell that has a column is asked of the host's record once; a categorical column that has
/// been given up is not asked for any more. Within a case and over the pass the first warning
/// 120012 is the one that stays.
class BINDataPreparator {
 public:
  /// `listener` may be null. Listener, cancel state, list and file system are borrowed and must
  /// outlive the preparator. `reportInterval` is the number of cases between two progress reports;
  /// 0 sends none (in effect).
  BINDataPreparator(const std::string& tempDirName, ProgressListener* listener, int reportInterval,
                    CancelState& cancelState, BINVarList& varList, FileSystem& files);
  BINDataPreparator(const BINDataPreparator&) = delete;
  BINDataPreparator& operator=(const BINDataPreparator&) = delete;

  /// Removes the files.
  ~BINDataPreparator();

  /// The pass. OK, the warning 120012 (a category code above 255; datum 0 is the input's column or
  /// the target's list index; that column is given up), or an error: 1 cancelled, 3 no memory for
  /// the column buffer, 120001 the temporary directory does not exist, 120004 no case was used,
  /// 120012 as above for the target of a list with fewer than two categorical variables, 120021 a
  /// temporary file could not be made or written, or the directory may not be used.
  ///
  /// Exceptions of the host's objects and std::bad_alloc pass through and leave status 3. After an
  /// error or an exception the files are gone and the number of cases used is 0. A further call
  /// starts anew.
  MCStatus PrepareData(BINCaseIterator& cases);

  /// What the last pass ended with; OK before.
  MCStatus GetStatus() const { return status_; }

  BINVarList& GetVarList() const { return varList_; }

  FileSystem& GetFileSystem() const { return files_; }

  /// One file name per column, itself empty for a column whose file could not be made by the last
  /// flush; no names before a pass and after one that failed.
  const std::vector<std::string>& GetFileNames() const { return columnFiles_.Names(); }

  int GetNumberOfColumns() const { return static_cast<int>(columns_.size()); }

  /// The column of the variable at index `variable` of the list, -1 when it has none or the index
  /// is bad.
  int GetColumnOf(int variable) const;

  /// The column of the weights, -1 without a weight variable.
  int GetWeightColumn() const { return weightColumn_; }

  /// Sets `isUsed` to whether the column is spooled and fit for use; error 120013 for a column that
  /// does not exist, `isUsed` is then left alone.
  MCStatus GetColumnUseFlag(int column, bool& isUsed) const;

  /// Whether the column holds category codes from 0 to 255 (the target's and every categorical
  /// input's do). The column must exist.
  bool HoldsCodes(int column) const {
    return columns_[static_cast<std::size_t>(column)].holdsCodes;
  }

  /// The highest category code met, 0 when there was none. The column must exist.
  int GetHighestCode(int column) const {
    return columns_[static_cast<std::size_t>(column)].highestCode;
  }

  std::uint32_t GetNumberOfCasesUsed() const { return casesUsed_; }

  /// Writes the layout, as it was at construction, and the list, as it is now.
  void Display(std::ostream& os) const;

 private:
  struct Column {
    int variable;
    bool holdsCodes;
    const BINNumericUserMissing* userMissing;  // of a scale input, null for none
    bool isUsed = true;
    int highestCode = 0;
  };

  enum class CaseOutcome { Used, Skipped, Failed };

  /// An input whose cells are spooled as they are.
  struct PlainInput {
    int variable;
    std::size_t column;
  };

  void AddColumn(int variable, bool holdsCodes);
  void SortInputs();
  void StartAnew();
  void DiscardPass() noexcept;
  MCStatus RunPass(BINCaseIterator& cases);
  MCStatus SetUp(ColumnBuffer& buffer);
  MCStatus ReadCases(BINCaseIterator& cases, ColumnBuffer& buffer);
  CaseOutcome TakeCase(const MCCommon::Record& record, ColumnBuffer& buffer);
  bool TakeTarget(const MCCommon::Record& record, ColumnBuffer& buffer);
  void TakeCheckedInput(std::size_t column, const MCCommon::Record& record, ColumnBuffer& buffer);
  static bool TakeCode(Column& column, int code);
  void NoteCodeTooHigh(bool isWarning, int datum);
  void GiveUpColumnsWithUnknownCodes();

  ProgressListener* listener_;
  int reportInterval_;
  CancelState& cancelState_;
  BINVarList& varList_;
  FileSystem& files_;
  ColumnFiles columnFiles_;
  std::vector<int> variableIndex_;
  std::vector<IBINVariable::MeasureLevel> levels_;
  std::vector<IBINVariable::VariableRole> roles_;
  int nAttributes_;
  std::vector<Column> columns_;
  bool hasTarget_ = false;
  int weightIndex_ = -1;
  int weightColumn_ = -1;
  const BINRoundEncoder* weightEncoder_ = nullptr;
  std::size_t firstInput_ = 0;
  std::vector<PlainInput> plainInputs_;
  std::vector<std::size_t> checkedInputs_;  // columns of the other inputs
  std::uint32_t casesUsed_ = 0;
  MCStatus status_;
};

}  // namespace MCBinning

#endif
