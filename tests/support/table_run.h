#ifndef MCBINNING_TESTS_SUPPORT_TABLE_RUN_H
#define MCBINNING_TESTS_SUPPORT_TABLE_RUN_H

#include <string>
#include <vector>

#include "data/attribute_table.h"
#include "data/data_preparator.h"
#include "status/cancel_state.h"
#include "support/failing_file_system.h"
#include "support/scratch_directory.h"
#include "support/vector_cases.h"

namespace mcbinning_tests {

/// A preparator and a table over cases in memory, with all that they borrow and a directory of
/// their own, which must be empty at the end.
struct TableRun {
  TableRun(BINVarList& list, const std::vector<std::vector<double>>& rows,
           MCQueryCancel* query = nullptr, ProgressListener* listener = nullptr,
           int reportInterval = 0)
      : cancel(query),
        cases(rows),
        preparator(directory.Path(), listener, reportInterval, cancel, list, files),
        table(preparator) {}

  MCBinning::MCStatus Prepare() { return preparator.PrepareData(cases); }

  ScratchDirectory directory;
  FailingFileSystem files;
  MCBinning::CancelState cancel;
  VectorCases cases;
  MCBinning::BINDataPreparator preparator;
  MCBinning::BINAttributeTable table;
};

}  // namespace mcbinning_tests

#endif
