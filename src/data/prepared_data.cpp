#include "data/prepared_data.h"

#include <utility>

#include "data/attribute_table.h"
#include "data/data_preparator.h"
#include "mcbinning/case_iterator.h"
#include "status/status_codes.h"

namespace MCBinning {

PreparedData::PreparedData(BINVarList& varList, CancelState& cancelState, FileSystem& files)
    : varList_(varList), cancelState_(cancelState), files_(files) {}

PreparedData::~PreparedData() = default;

MCStatus PreparedData::Prepare(BINCaseIterator& cases, const Options& options) {
  if (!cases.HasNext()) {
    return errorStatus(kNoCases);
  }
  auto preparator =
      std::make_unique<BINDataPreparator>(options.tempDirName, options.listener,
                                          options.reportInterval, cancelState_, varList_, files_);
  auto table = std::make_unique<BINAttributeTable>(*preparator);
  const MCStatus status = preparator->PrepareData(cases);
  if (!status.IsError()) {
    preparator_ = std::move(preparator);
    table_ = std::move(table);
  }
  return status;
}

void PreparedData::Discard() {
  table_.reset();
  preparator_.reset();
}

void PreparedData::Display(std::ostream& os) const {
  if (preparator_ != nullptr) {
    preparator_->Display(os);
  }
}

}  // namespace MCBinning
