#ifndef MCBINNING_DATA_COLUMN_FILES_H
#define MCBINNING_DATA_COLUMN_FILES_H

#include <cstddef>
#include <string>
#include <vector>

#include "data/column_buffer.h"
#include "mcbinning/status.h"
#include "platform/file_system.h"
#include "status/cancel_state.h"

namespace MCBinning {

/// The temporary files of one pass, one per column (docs/column-files.md). Names are chosen by
/// SetUp(), files come into being at the first Flush(), and the destructor removes them. Only files
/// that this object created are ever written or removed: a name chosen and not yet used belongs to
/// nobody, and if somebody else takes it meanwhile the column gets the next free one. The copy of
/// the object that a forked process gets leaves the files to the process that created them.
class ColumnFiles {
 public:
  /// `cancelState` and `files` are borrowed and must outlive the object.
  ColumnFiles(std::string directory, CancelState& cancelState, FileSystem& files);
  ColumnFiles(const ColumnFiles&) = delete;
  ColumnFiles& operator=(const ColumnFiles&) = delete;
  ~ColumnFiles();

  /// Removes the earlier files, and those of processes of the same user that no longer exist, and
  /// chooses a free name for each of `columns` columns; creates nothing. Errors: 120001 the
  /// directory does not exist (none has a name with a zero byte in it), 120021 it may not be used
  /// or too many files are open, 1 the run was cancelled when a name turned out to be taken.
  MCStatus SetUp(std::size_t columns);

  /// Appends what the buffer holds to the files, a column without values included, and resets the
  /// buffer. Error 120021 when a file cannot be opened, does not take every byte or was created by
  /// another process, or an error of SetUp() when a name turned out to be taken and another had to
  /// be found. A file that was not reached ends early; a column that has no file then has an empty
  /// name.
  MCStatus Flush(ColumnBuffer& buffer);

  /// Removes the files and, once all are gone, forgets the names. A file that cannot be removed is
  /// tried again by the next Remove(), SetUp() or the destructor.
  void Remove() noexcept;

  /// One name per column, in column order; after the first flush every name that is not empty is
  /// that of a file of this object.
  const std::vector<std::string>& Names() const { return names_; }

 private:
  MCStatus ChooseName(std::string& name);
  MCStatus OpenToAppend(std::size_t column, FileHandle& file);
  MCStatus Append(std::size_t column, const double* values, std::size_t count);
  void ForgetUnusedNames();
  bool IsForkedCopy() const;
  void DropClaim() noexcept;

  std::string prefix_;
  CancelState& cancelState_;
  FileSystem& files_;
  std::vector<std::string> names_;
  std::vector<bool> created_;
  unsigned long tick_ = 0;
  FileClaim claim_;
  long creator_ = 0;  // the process that began to create the files, 0 before
};

}  // namespace MCBinning

#endif
