#ifndef MCBINNING_TESTS_EF_EF_RUN_H
#define MCBINNING_TESTS_EF_EF_RUN_H

#include <gtest/gtest.h>
#include <mccomvor/missing_value.h>

#include <memory>
#include <string>
#include <vector>

#include "mcbinning/factories.h"
#include "mcbinning/outputs.h"
#include "mcbinning/settings.h"
#include "mcbinning/variable_list.h"
#include "support/scratch_directory.h"

namespace mcbinning_tests {

using Rows = std::vector<std::vector<double>>;

/// x, weight, constant, all missing, outside (no column), colour (two categories).
enum Variable { kX, kWeight, kConstant, kAllMissing, kOutside, kColour, kSize };

inline BINVarList sixVariables() {
  BINVarList list;
  list.AddContVar("x", "", IBINVariable::AttributeRole);
  list.AddWeightVar("w", "", IBINVariable::TruncateToSmallerInt);
  list.AddContVar("constant", "", IBINVariable::AttributeRole);
  list.AddContVar("all missing", "", IBINVariable::AttributeRole);
  list.AddContVar("outside", "", IBINVariable::UndefinedRole);
  list.AddCatVar("colour", "", std::vector<std::string>{"red", "blue"},
                 IBINVariable::AttributeRole);
  EXPECT_EQ(list.Size(), static_cast<std::uint64_t>(kSize));
  return list;
}

inline Rows sixVariableRows() {
  return {{1.0, 1.0, 7.0, MCMV::gMissingValue, 5.0, 0.0},
          {2.0, 2.0, 7.0, MCMV::gMissingValue, 5.0, 0.0},
          {3.0, 3.0, 7.0, MCMV::gMissingValue, 5.0, 1.0},
          {MCMV::gMissingValue, 4.0, 7.0, MCMV::gMissingValue, 5.0, 1.0}};
}

inline BINVarList scaleVariables(int count) {
  BINVarList list;
  for (int i = 0; i < count; ++i) {
    list.AddContVar("x" + std::to_string(i), "", IBINVariable::AttributeRole);
  }
  return list;
}

/// Rows in which every one of `count` variables has the values 1 to 4.
inline Rows fourRows(int count) {
  Rows rows;
  for (int value = 1; value <= 4; ++value) {
    rows.emplace_back(static_cast<std::size_t>(count), value);
  }
  return rows;
}

/// An algorithm as a host gets it, over a temporary directory that must be empty at the end.
class EFRun {
 public:
  explicit EFRun(const BINVarList& list, int numberOfBins = 2, MCQueryCancel* query = nullptr) {
    EFBINSettings settings;
    settings.SetNumberOfBins(numberOfBins);
    settings.SetTempDirName(directory_.Path());
    settings.SetCancelPointer(query);
    BINVarList hostList(list);
    EFBINFactory factory;
    algorithm_.reset(factory.CreateEFBINAlgorithm(settings, hostList));
    EXPECT_TRUE(factory.GetStatus().IsOK());
  }

  IEFBINAlgorithm* operator->() const { return algorithm_.get(); }
  const ScratchDirectory& Directory() const { return directory_; }

  std::vector<BINAttributeResults> Records() const {
    std::vector<BINAttributeResults> records;
    algorithm_->GetOutput()->GetAllCutPoints(records);
    return records;
  }

  BINAttributeResults RecordOf(int attribute) const {
    BINAttributeResults record;
    algorithm_->GetOutput()->GetAttributeCutPoints(attribute, record);
    return record;
  }

 private:
  ScratchDirectory directory_;
  std::unique_ptr<IEFBINAlgorithm> algorithm_;
};

inline MCBinning::MCStatus warningAbout(long code, int attribute) {
  MCBinning::MCStatus status(code, true);
  status.SetDiscreteDatum(0, attribute);
  return status;
}

inline MCBinning::MCStatus errorAbout(long code, int attribute) {
  MCBinning::MCStatus status(code, false);
  status.SetDiscreteDatum(0, attribute);
  return status;
}

inline void expectStatus(const MCBinning::MCStatus& status, const MCBinning::MCStatus& expected) {
  EXPECT_TRUE(status == expected) << status.GetErrorCode() << " instead of "
                                  << expected.GetErrorCode();
}

/// Every variable of fourRows() cut in half.
inline void expectHalves(const BINAttributeResults& record) {
  EXPECT_TRUE(record.GetStatus().IsOK());
  EXPECT_EQ(record.GetCutPoints(), std::vector<double>{2.5});
  EXPECT_EQ(record.GetCellCounts(), (std::vector<double>{2, 2}));
  EXPECT_EQ(record.GetNDistinctValues(), 4U);
  EXPECT_EQ(record.GetTotalWeight(), 4.0);
  EXPECT_EQ(record.GetTotalWeightWithMissing(), 4.0);
  EXPECT_EQ(record.GetMinimum(), 1.0);
  EXPECT_EQ(record.GetMaximum(), 4.0);
}

}  // namespace mcbinning_tests

#endif
