/// Random variable lists, data, settings and selections.
#ifndef MCBINNING_TESTS_RANDOM_RANDOM_RUN_H
#define MCBINNING_TESTS_RANDOM_RANDOM_RUN_H

#include <iosfwd>
#include <optional>
#include <vector>

#include "plain_model/model.h"
#include "random/choices.h"
#include "random/list_pair.h"
#include "random/planned_list.h"

namespace mcbinning_tests {

using plain_model::Case;

/// One call of `Run` and what is done to the algorithm before it.
struct Request {
  plain_model::Settings settings;
  std::vector<Case> cases;
  std::optional<std::vector<int>> attributes;
  std::optional<std::vector<int>> targets;
  bool cancelBefore = false;
};

/// One algorithm object from its creation to its last run. The first request's settings are those
/// the algorithm is made with.
struct RandomRun {
  bool supervised = true;
  ListPair list;
  std::vector<Request> requests;
};

/// Anything that a host may do, made to reach the rare rules often.
RandomRun makeRandomRun(Choices& choices);

/// One request for the whole of an ordinary list.
RandomRun makeOrdinaryRun(Choices& choices);

/// The whole run as text, for whoever has to reduce a difference.
std::ostream& operator<<(std::ostream& os, const RandomRun& run);

}  // namespace mcbinning_tests

#endif
