#include "faults/faulty_host.h"

#include <gtest/gtest.h>

#include <exception>

#include "support/cell_reading.h"

namespace {

mcbinning_tests::FaultyHost* hostInUse = nullptr;

void queryCell(int /*index*/) { hostInUse->CellQueried(); }

}  // namespace

namespace mcbinning_tests {

FaultyHost::FaultyHost(const std::vector<std::vector<double>>& cases)
    : cases_(cases), record_(static_cast<int>(cases.front().size())) {
  hostInUse = this;
  onCellRead = queryCell;
}

FaultyHost::~FaultyHost() { onCellRead = nullptr; }

void FaultyHost::FailAt(HostCall call, std::size_t number, HostFault fault) {
  calls_[static_cast<std::size_t>(call)] = 0;
  failing_ = call;
  failAt_ = number;
  fault_ = fault;
}

bool FaultyHost::Meet(HostCall call) {
  const std::size_t number = ++calls_[static_cast<std::size_t>(call)];
  if (call != failing_ || failAt_ == 0 || number < failAt_) {
    return false;
  }
  if (fault_ == HostFault::True) {
    return true;
  }
  if (number > failAt_) {
    return false;
  }
  if (fault_ == HostFault::Exception) {
    throw std::exception();
  }
  throw 17;
}

bool FaultyHost::HasNext() {
  Meet(HostCall::HasNext);
  return next_ < cases_.size();
}

const MCCommon::Record* FaultyHost::Next() {
  Meet(HostCall::Next);
  const std::vector<double>& cells = cases_[next_++];
  for (std::size_t cell = 0; cell < cells.size(); ++cell) {
    record_[static_cast<int>(cell)] = cells[cell];
  }
  return cells.empty() ? nullptr : &record_;
}

void FaultyHost::ReportProgress(ProgressReport& report) {
  EXPECT_GE(report.DiscreteMeasure("IndexVar"), 0);
  Meet(HostCall::Report);
}

bool FaultyHost::IsCancelled() { return Meet(HostCall::CancelQuery); }

}  // namespace mcbinning_tests
