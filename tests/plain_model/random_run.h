/// Random variable lists, data, settings and selections, made to reach the rare rules often.
#ifndef MCBINNING_TESTS_PLAIN_MODEL_RANDOM_RUN_H
#define MCBINNING_TESTS_PLAIN_MODEL_RANDOM_RUN_H

#include <mcbinning/variable_list.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "plain_model/model.h"

namespace plain_model {

/// One call of `Run` and what is done to the algorithm before it.
struct Request {
  Settings settings;
  std::vector<Case> cases;
  std::optional<std::vector<int>> attributes;
  std::optional<std::vector<int>> targets;
  bool cancelBefore = false;
};

/// One algorithm object from its creation to its last run. The first request's settings are those
/// the algorithm is made with.
struct RandomRun {
  bool supervised = true;
  BINVarList hostList;
  VariableList list;  // describes `hostList`
  std::vector<Request> requests;
};

RandomRun makeRandomRun(std::uint64_t seed);

}  // namespace plain_model

#endif
