/// Calls made of any bytes, each made to the library and to the plain model, whose answers must be
/// the same.
#ifndef MCBINNING_TESTS_FUZZ_LIST_STEPS_H
#define MCBINNING_TESTS_FUZZ_LIST_STEPS_H

#include <mcbinning/variable_list.h>

#include "fuzz/input.h"
#include "fuzz/list_model.h"

namespace fuzz {

struct ListPair {
  BINVarList list;
  ListModel model;

  void Copy(const ListPair& other);
};

/// One call that adds, changes or removes a variable through the list, or asks it something.
void stepOfList(Input& input, ListPair& pair);

/// One call to a variable of the list, its encoder or its definition; `other` lends variables to be
/// assigned from.
void stepOfVariable(Input& input, ListPair& pair, ListPair& other);

/// Objects of their own, changed and copied.
void stepsOfSettings(Input& input);
void stepsOfIntervals(Input& input);
void stepsOfDefinitions(Input& input);
void stepsOfEncoders(Input& input);
void stepsOfOutputs(Input& input);

}  // namespace fuzz

#endif
