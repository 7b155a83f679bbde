#include "toolkit/fit/status_text.h"

#include <fmt/format.h>

#include <cstring>
#include <new>
#include <stdexcept>

#include "toolkit/errors.h"
#include "toolkit/system/temporary_directory.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

std::string reasonOf(long code) {
  switch (code) {
    case 0:
      return "";
    case 120002:
      return "some values lie outside the pre-bins (infinite values?)";
    case 120014:
      return "not cut: the attribute has a single value";
    case 120015:
      return "not cut: no case has a value";
    case 120016:
      return "not cut: the cases with a value all have the same target category";
    case 120017:
      return "not cut: no cut tells the target's categories apart well enough";
    case 120019:
      return "not cut: the values are too few or too unevenly spread for another bin";
    default:
      return fmt::format("warning {} of the binning library", code);
  }
}

std::string inWords(int reason) {
  return reason == 0 ? "" : fmt::format(": {}", std::strerror(reason));
}

}  // namespace

AttributeStatus attributeStatus(const MCBinning::MCStatus& status) {
  const Severity severity = status.IsOK() ? Severity::Ok : Severity::Warning;
  return {status.GetErrorCode(), severity, reasonOf(status.GetErrorCode())};
}

void throwIfAttributeFailed(const MCBinning::MCStatus& status, const std::string& name,
                            bool filesAreWhole, int reason) {
  if (!status.IsError()) return;
  if (status.GetErrorCode() != 3) {
    throw std::runtime_error(
        fmt::format("status {} of the binning library for column {}", status.GetErrorCode(), name));
  }
  if (filesAreWhole) {
    throw DataError(
        fmt::format("cannot bin column {}{}", name,
                    reason == 0 ? ": its temporary file cannot be read back" : inWords(reason)));
  }
  throw DataError(
      fmt::format("cannot bin column {}: the temporary files in {} are not whole{}; TMPDIR names "
                  "another directory",
                  name, visibleText(temporaryRoot()), inWords(reason)));
}

void throwIfRunFailed(const MCBinning::MCStatus& status, int reason) {
  if (!status.IsError()) return;
  switch (status.GetErrorCode()) {
    case 3:
      throw std::bad_alloc();
    case 120001:
    case 120021:
      throw DataError(
          fmt::format("cannot write temporary files in {}{}; TMPDIR names another directory",
                      visibleText(temporaryRoot()), inWords(reason)));
    default:
      break;
  }
  throw std::runtime_error(fmt::format("status {} of the binning library", status.GetErrorCode()));
}

}  // namespace mcbin
