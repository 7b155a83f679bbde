#include "status/cancel_state.h"

namespace MCBinning {

bool CancelState::IsCancelled() {
  if (!cancelled_ && query_ != nullptr) {
    const bool answer = query_->IsCancelled();  // the host may call Cancel() while it is asked
    cancelled_ = cancelled_ || answer;
  }
  return cancelled_;
}

}  // namespace MCBinning
