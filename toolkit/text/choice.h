/// Words that stand for values.
#ifndef MCBIN_TOOLKIT_TEXT_CHOICE_H
#define MCBIN_TOOLKIT_TEXT_CHOICE_H

namespace mcbin {

/// A value and the word by which a user, an option or a model file names it.
template <class Value>
struct Choice {
  const char* name;
  Value value;
};

/// The word of `value`, which must be among `choices`.
template <class Choices, class Value>
const char* nameOf(const Choices& choices, Value value) {
  for (const auto& choice : choices) {
    if (choice.value == value) return choice.name;
  }
  return "";
}

}  // namespace mcbin

#endif
