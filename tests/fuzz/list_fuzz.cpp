// Makes calls of any bytes to variable lists, variables, encoders, user-missing definitions,
// intervals, settings and outputs. After every call everything that can be read must be as the
// plain model says.
#include <cstddef>
#include <cstdint>

#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/list_comparison.h"
#include "fuzz/list_steps.h"

namespace {

using fuzz::check;
using fuzz::Input;
using fuzz::ListPair;

void compareMerging(const ListPair& left, const ListPair& right) {
  constexpr int kUntouched = -77;
  int where = kUntouched;
  const auto difference = left.model.FirstDifference(right.model);
  check(left.list.CanMergeWith(right.list, where) == !difference, "lists can be merged");
  check(where == difference.value_or(kUntouched), "where lists differ");
}

void copyLists(Input& input, ListPair& left, ListPair& right) {
  switch (input.Below(4)) {
    case 0: {
      const BINVarList& self = left.list;
      left.list = self;
      return;
    }
    case 1: {
      const BINVarList copy(left.list);
      check(copy.Size() == left.list.Size(), "copy of a list");
      return;
    }
    case 2:
      return right.Copy(left);
    default:
      return left.Copy(right);
  }
}

void stepsOfLists(Input& input) {
  ListPair left;
  ListPair right;
  while (!input.IsUsedUp()) {
    const bool isRight = input.OneIn(6);
    ListPair& changed = isRight ? right : left;
    switch (input.Below(12)) {
      case 0:
        copyLists(input, left, right);
        break;
      case 1:
        compareMerging(left, right);
        compareMerging(left, left);
        break;
      case 2:
        check(!fuzz::displayed(left.list).empty(), "list is displayed");
        break;
      case 3:
      case 4:
      case 5:
      case 6:
        fuzz::stepOfVariable(input, changed, isRight ? left : right);
        break;
      default:
        fuzz::stepOfList(input, changed);
    }
    fuzz::compareList(left.list, left.model);
    fuzz::compareList(right.list, right.model);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  switch (input.Below(16)) {
    case 0:
      fuzz::stepsOfSettings(input);
      break;
    case 1:
      fuzz::stepsOfIntervals(input);
      break;
    case 2:
      fuzz::stepsOfDefinitions(input);
      break;
    case 3:
      fuzz::stepsOfEncoders(input);
      break;
    case 4:
      fuzz::stepsOfOutputs(input);
      break;
    default:
      stepsOfLists(input);
  }
  return 0;
}
