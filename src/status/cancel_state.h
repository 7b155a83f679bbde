#ifndef MCBINNING_STATUS_CANCEL_STATE_H
#define MCBINNING_STATUS_CANCEL_STATE_H

#include "mcbinning/progress.h"

namespace MCBinning {

/// The one memory of a wish to stop: an algorithm owns it and everything that works for the
/// algorithm polls the same object.
class CancelState {
 public:
  /// `query` is borrowed and may be null.
  explicit CancelState(MCQueryCancel* query) : query_(query) {}

  /// True once the host or Cancel() has said so, without asking the host again; else asks it.
  bool IsCancelled();

  /// Whether an earlier question or Cancel() has said so; the host is not asked.
  bool WasCancelled() const { return cancelled_; }

  void Cancel() { cancelled_ = true; }

  /// Replaces the query; an earlier true answer stays.
  void SetQuery(MCQueryCancel* query) { query_ = query; }

 private:
  MCQueryCancel* query_;
  bool cancelled_ = false;
};

}  // namespace MCBinning

#endif
