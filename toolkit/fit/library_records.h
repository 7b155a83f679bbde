/// Between a model and what the library takes and gives.
#ifndef MCBIN_TOOLKIT_FIT_LIBRARY_RECORDS_H
#define MCBIN_TOOLKIT_FIT_LIBRARY_RECORDS_H

#include <mcbinning/outputs.h>
#include <mcbinning/settings.h>

#include <cstddef>
#include <cstdint>

#include "toolkit/model/model.h"

namespace mcbin {

/// std::logic_error when the library did not accept `what`.
void require(bool accepted, const char* what);

/// Sets what the model's options say about bins.
void setBins(const Model& model, BINSettings& settings);
void setBins(const Model& model, EFBINSettings& settings);

/// Files the record of an attribute, which did not end in error, without cuts that are impossible.
void fileRecord(const BINAttributeTargetResults& record, std::size_t categories,
                AttributeModel& attribute);
void fileRecord(const BINAttributeResults& record, AttributeModel& attribute);

/// DataError that says why no case can be used: there is none, or no weight lasts.
[[noreturn]] void failWithoutCases(const Model& model, std::uint64_t casesRead);

}  // namespace mcbin

#endif
