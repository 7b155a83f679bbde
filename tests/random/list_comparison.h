/// Compares everything that can be read of variables and lists with the plain model; a difference
/// is thrown.
#ifndef MCBINNING_TESTS_RANDOM_LIST_COMPARISON_H
#define MCBINNING_TESTS_RANDOM_LIST_COMPARISON_H

#include <mcbinning/user_missing.h>
#include <mcbinning/variable_list.h>

#include "plain_model/list.h"

namespace mcbinning_tests {

void compareDefinition(IBINUserMissing& definition, const plain_model::Definition& model);
void compareVariable(IBINVariable& variable, const plain_model::Variable& model);
void compareList(BINVarList& list, const plain_model::VariableList& model);

}  // namespace mcbinning_tests

#endif
