#include "mcbinning/factories.h"

#include <utility>
#include <vector>

#include "api/make_algorithm.h"
#include "mcbinning/variable_list.h"
#include "status/status_codes.h"

using MCBinning::MCStatus;

namespace {

// OK or an error about the first variable that makes the list unusable.
MCStatus checkList(const BINVarList& varList) {
  std::vector<int> singleCategoryVars;
  std::vector<int> emptyVars;
  if (varList.IsValidList(singleCategoryVars, emptyVars)) {
    return {};
  }
  MCStatus status = MCBinning::errorStatus(MCBinning::kInvalidList);
  if (!emptyVars.empty()) {
    status.SetDiscreteDatum(1, emptyVars.front());
  } else if (!singleCategoryVars.empty()) {
    status.SetDiscreteDatum(1, singleCategoryVars.front());
  } else {
    status.SetDiscreteDatum(1, -1);
  }
  return status;
}

// The steps that both factories share. Leaves `pending` as it was: null, or the algorithm of a
// creation whose cancel query uses the factory again.
template <typename Algorithm, typename Settings, typename Make>
Algorithm* create(Settings& settings, BINVarList& varList, Make make, MCStatus& status,
                  std::unique_ptr<Algorithm>& pending) {
  std::unique_ptr<Algorithm> outer = std::move(pending);
  try {
    status = checkList(varList);
    if (!status.IsError()) {
      pending = make(settings, varList);
      status = pending->GetStatus();
    }
  } catch (...) {
    status = MCBinning::errorStatus(MCBinning::kFailed);
  }
  Algorithm* created = status.IsError() ? nullptr : pending.release();
  pending = std::move(outer);
  return created;
}

}  // namespace

BINFactory::BINFactory() = default;

BINFactory::BINFactory(const BINFactory& other) : status_(other.status_) {}

BINFactory& BINFactory::operator=(const BINFactory& other) {
  status_ = other.status_;
  return *this;
}

BINFactory::~BINFactory() = default;

IBINAlgorithm* BINFactory::CreateBINAlgorithm(BINSettings& settings, BINVarList& varList) {
  return create(settings, varList, MCBinning::makeBINAlgorithm, status_, pendingAlgorithm_);
}

MCStatus BINFactory::GetStatus() const { return status_; }

EFBINFactory::EFBINFactory() = default;

EFBINFactory::EFBINFactory(const EFBINFactory& other) : status_(other.status_) {}

EFBINFactory& EFBINFactory::operator=(const EFBINFactory& other) {
  status_ = other.status_;
  return *this;
}

EFBINFactory::~EFBINFactory() = default;

IEFBINAlgorithm* EFBINFactory::CreateEFBINAlgorithm(EFBINSettings& settings, BINVarList& varList) {
  return create(settings, varList, MCBinning::makeEFBINAlgorithm, status_, pendingAlgorithm_);
}

MCStatus EFBINFactory::GetStatus() const { return status_; }
