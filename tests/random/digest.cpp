#include "random/digest.h"

#include <mcbinning/outputs.h>

#include <bit>
#include <cmath>
#include <limits>

namespace mcbinning_tests {

void DigestingHost::AfterRun(IBINAlgorithm& algorithm, const Request& /*request*/,
                             const MCBinning::MCStatus& status) {
  std::vector<BINAttributeTargetResults> records;
  algorithm.GetOutput()->GetAllCutPoints(records);
  Add(status);
  for (const BINAttributeTargetResults& record : records) {
    AddRecord(record);
    Add(static_cast<std::uint64_t>(record.GetTargetIndex()));
    Add(record.GetModelEntropy());
  }
}

void DigestingHost::AfterRun(IEFBINAlgorithm& algorithm, const Request& /*request*/,
                             const MCBinning::MCStatus& status) {
  std::vector<BINAttributeResults> records;
  algorithm.GetOutput()->GetAllCutPoints(records);
  Add(status);
  for (const BINAttributeResults& record : records) {
    AddRecord(record);
  }
}

template <typename Record>
void DigestingHost::AddRecord(const Record& record) {
  Add(record.GetStatus());
  Add(static_cast<std::uint64_t>(record.GetAttributeIndex()));
  Add(record.GetCutPoints());
  Add(record.GetCellCounts());
  Add(std::uint64_t{record.GetNDistinctValues()});
  Add(record.GetTotalWeight());
  Add(record.GetTotalWeightWithMissing());
  Add(record.GetMinimum());
  Add(record.GetMaximum());
}

void DigestingHost::Add(std::uint64_t number) {
  digest_ = std::rotl(digest_ ^ number, 29) * 0x9e3779b97f4a7c15U;
}

void DigestingHost::Add(const MCBinning::MCStatus& status) {
  Add(static_cast<std::uint64_t>(status.GetErrorCode()));
  for (unsigned i = 0; i < 3; ++i) {
    Add(static_cast<std::uint64_t>(status.GetDiscreteDatum(i)));
    Add(status.GetScaleDatum(i));
  }
}

void DigestingHost::Add(double number) {
  Add(std::bit_cast<std::uint64_t>(std::isnan(number) ? std::numeric_limits<double>::quiet_NaN()
                                                      : number));
}

template <typename Element>
void DigestingHost::Add(const std::vector<Element>& elements) {
  Add(std::uint64_t{elements.size()});
  for (const Element& element : elements) {
    Add(element);
  }
}

}  // namespace mcbinning_tests
