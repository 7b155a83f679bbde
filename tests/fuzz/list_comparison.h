/// Compares everything that can be read of variables and lists with the plain model.
#ifndef MCBINNING_TESTS_FUZZ_LIST_COMPARISON_H
#define MCBINNING_TESTS_FUZZ_LIST_COMPARISON_H

#include <mcbinning/user_missing.h>
#include <mcbinning/variable_list.h>

#include <sstream>
#include <string>

#include "fuzz/list_model.h"

namespace fuzz {

/// What an object's Display writes.
template <typename Object>
std::string displayed(const Object& object) {
  std::ostringstream text;
  object.Display(text);
  return text.str();
}

void compareDefinition(IBINUserMissing& definition, const DefinitionModel& model);
void compareVariable(IBINVariable& variable, const VariableModel& model);
void compareList(BINVarList& list, const ListModel& model);

}  // namespace fuzz

#endif
