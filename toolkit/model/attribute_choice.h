/// Which attributes of a model a command is about.
#ifndef MCBIN_TOOLKIT_MODEL_ATTRIBUTE_CHOICE_H
#define MCBIN_TOOLKIT_MODEL_ATTRIBUTE_CHOICE_H

#include <cstddef>
#include <string>
#include <vector>

#include "toolkit/model/model.h"

namespace mcbin {

/// Drops every attribute that none of `patterns` names (by name, number from 1 or pattern); without
/// patterns all stay. DataError when a pattern names none.
void keepAttributes(Model& model, const std::vector<std::string>& patterns);

}  // namespace mcbin

#endif
