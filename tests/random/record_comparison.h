/// Compares everything that can be read of outputs with the plain model; a difference is thrown.
#ifndef MCBINNING_TESTS_RANDOM_RECORD_COMPARISON_H
#define MCBINNING_TESTS_RANDOM_RECORD_COMPARISON_H

#include <mcbinning/outputs.h>
#include <mcbinning/status.h>

#include <vector>

#include "plain_model/model.h"

namespace mcbinning_tests {

void compareStatuses(const char* what, const MCBinning::MCStatus& library,
                     const plain_model::Status& model);

void compareRecords(const BINAttributeTargetResults& library, const plain_model::PairRecord& model);
void compareRecords(const BINAttributeResults& library, const plain_model::AttributeRecord& model);

/// All records in order, and that each can be asked for by its indexes.
void compareOutputs(const BINOutput& output, const std::vector<plain_model::PairRecord>& model);
void compareOutputs(const EFBINOutput& output,
                    const std::vector<plain_model::AttributeRecord>& model);

}  // namespace mcbinning_tests

#endif
