#include "status/cancel_state.h"

namespace MCBinning {

bool CancelState::IsCancelled() {
  if (!cancelled_ && query_ != nullptr) {
    cancelled_ = query_->IsCancelled();
  }
  return cancelled_;
}

}  // namespace MCBinning
