#ifndef MCBINNING_DATA_PREPARED_DATA_H
#define MCBINNING_DATA_PREPARED_DATA_H

#include <iosfwd>
#include <memory>
#include <string>

#include "mcbinning/status.h"
#include "status/cancel_state.h"

class BINCaseIterator;
class BINVarList;
class ProgressListener;

namespace MCBinning {

class BINAttributeTable;
class BINDataPreparator;
class FileSystem;

/// What an algorithm's first run makes of the host's cases and its later runs work on: the column
/// files and the table that reads them.
class PreparedData {
 public:
  /// All three are borrowed and must outlive this object.
  PreparedData(BINVarList& varList, CancelState& cancelState, FileSystem& files);

  /// Removes the files.
  ~PreparedData();
  PreparedData(const PreparedData&) = delete;
  PreparedData& operator=(const PreparedData&) = delete;

  bool Exists() const { return table_ != nullptr; }

  /// How Prepare reads the cases.
  struct Options {
    std::string tempDirName;
    ProgressListener* listener = nullptr;  // borrowed, may be null
    int reportInterval = 0;
  };

  /// Reads the cases; error 120004 when there is none. The data exist afterwards unless the status
  /// is an error: a preparation that fails, or in which a host object throws, is thrown away with
  /// its files.
  MCStatus Prepare(BINCaseIterator& cases, const Options& options);

  /// Throws the data away, so that the next run prepares anew.
  void Discard();

  /// Data must exist.
  BINAttributeTable& Table() { return *table_; }

  /// The preparator's text; nothing when no data exist.
  void Display(std::ostream& os) const;

 private:
  BINVarList& varList_;
  CancelState& cancelState_;
  FileSystem& files_;
  std::unique_ptr<BINDataPreparator> preparator_;
  std::unique_ptr<BINAttributeTable> table_;
};

}  // namespace MCBinning

#endif
