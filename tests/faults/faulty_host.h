#ifndef MCBINNING_TESTS_FAULTS_FAULTY_HOST_H
#define MCBINNING_TESTS_FAULTS_FAULTY_HOST_H

#include <mccomvor/record.h>

#include <array>
#include <cstddef>
#include <vector>

#include "mcbinning/case_iterator.h"
#include "mcbinning/progress.h"

namespace mcbinning_tests {

/// What the library calls a host for.
enum class HostCall { HasNext, Next, CellQuery, Report, CancelQuery };

constexpr std::size_t kHostCalls = static_cast<std::size_t>(HostCall::CancelQuery) + 1;

/// How a call ends that does not go well. Only a cancel query can answer true.
enum class HostFault { Exception, NoException, True };

/// Every object of a host in one: the cases, the listener and the cancel query. Counts its calls,
/// and one of them can be made to fail. Needs no memory while it is called. One at a time.
class FaultyHost final : public BINCaseIterator, public ProgressListener, public MCQueryCancel {
 public:
  /// `cases` is borrowed. An empty record stands for a case to be passed over.
  explicit FaultyHost(const std::vector<std::vector<double>>& cases);
  FaultyHost(const FaultyHost&) = delete;
  FaultyHost& operator=(const FaultyHost&) = delete;
  ~FaultyHost() override;

  /// Counts the calls of one kind anew; that of number `number` (from 1) fails, and from it on a
  /// query answers true. 0 for none.
  void FailAt(HostCall call, std::size_t number, HostFault fault);

  std::size_t Calls(HostCall call) const { return calls_[static_cast<std::size_t>(call)]; }

  /// Hands out the cases from the first one on.
  void Restart() { next_ = 0; }

  bool HasNext() override;
  const MCCommon::Record* Next() override;
  void ReportProgress(ProgressReport& report) override;
  bool IsCancelled() override;

  /// Called by every record that is asked for a cell.
  void CellQueried() { Meet(HostCall::CellQuery); }

 private:
  /// Throws when the call is to; true when a query is to answer true.
  bool Meet(HostCall call);

  const std::vector<std::vector<double>>& cases_;
  std::size_t next_ = 0;
  MCCommon::Record record_;
  std::array<std::size_t, kHostCalls> calls_{};
  HostCall failing_ = HostCall::HasNext;
  std::size_t failAt_ = 0;
  HostFault fault_ = HostFault::Exception;
};

}  // namespace mcbinning_tests

#endif
