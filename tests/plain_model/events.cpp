#include "plain_model/events.h"

namespace plain_model {

namespace {

constexpr std::array<const char*, kEventCount> kNames = {
    "null case passed over",
    "case without a weight passed over",
    "missing target",
    "user-missing value",
    "target code refused",
    "attribute code refused",
    "code of an undeclared category",
    "more cases than one buffer holds",
    "NaN value",
    "infinite value",
    "-0.0 value",
    "denormal value",
    "fractional weight",
    "tied values",
    "unusable target",
    "unusable attribute",
    "equal-frequency boundary repeated",
    "equal-frequency target met exactly",
    "border cut point removed",
    "empty bin removed",
    "position in a pure stretch skipped",
    "equal entropies at two positions",
    "last position examined",
    "last position best",
    "split accepted",
    "split refused",
    "split at NaN refused",
    "three cut points or more",
    "pre-bins used",
    "pre-bins without a cut point",
    "pre-bins that miss rows",
    "outer pre-bin cut point dropped",
    "small bin merged left",
    "small bin merged right",
    "small bin with equal scores",
    "three bins folded into one",
    "target of one category",
    "target of two categories",
    "target of three categories or more",
    "right borders closed",
    "right borders open",
    "no valid case",
    "single value",
    "no cut point found",
    "pair refused",
    "selection refused",
    "selection of pairs",
    "selection of attributes",
    "whole list",
    "target refused for the whole list",
    "number of bins unset",
    "no case used",
    "data pass ended in an error",
    "cancelled",
    "repeated run",
    "list refused",
    "run OK",
    "attribute cut by equal frequency",
    "attribute not cut by equal frequency",
};

}  // namespace

const char* eventName(Event event) { return kNames[static_cast<std::size_t>(event)]; }

}  // namespace plain_model
