/// Calls made of choices, each made to the library and to the plain model, whose answers must be
/// the same. A function throws a Difference when they are not.
#ifndef MCBINNING_TESTS_RANDOM_STEPS_H
#define MCBINNING_TESTS_RANDOM_STEPS_H

#include "random/choices.h"
#include "random/list_pair.h"

namespace mcbinning_tests {

/// Two lists, changed and copied in many steps; after each of them everything that can be read is
/// compared.
void stepsOfLists(Choices& choices);

/// Objects of their own, changed and copied.
void stepsOfSettings(Choices& choices);
void stepsOfIntervals(Choices& choices);
void stepsOfDefinitions(Choices& choices);
void stepsOfEncoders(Choices& choices);
void stepsOfOutputs(Choices& choices);

/// One call to a variable of the list, its encoder or its definition; `other` lends variables to be
/// assigned from.
void stepOfVariable(Choices& choices, ListPair& pair, ListPair& other);

/// Of the definitions that these steps made, and their clones, those live that the lists hold.
void compareDefinitionsAlive(const ListPair& left, const ListPair& right);

}  // namespace mcbinning_tests

#endif
