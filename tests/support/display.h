#ifndef MCBINNING_TESTS_SUPPORT_DISPLAY_H
#define MCBINNING_TESTS_SUPPORT_DISPLAY_H

#include <ostream>
#include <sstream>
#include <string>

namespace mcbinning_tests {

/// What `write` writes to a fresh stream, with "<flush>" after every flush of the stream.
template <typename Write>
std::string Written(Write write) {
  class FlushMarker : public std::stringbuf {
   protected:
    int sync() override { return sputn("<flush>", 7) == 7 ? 0 : -1; }
  };
  FlushMarker buffer;
  std::ostream os(&buffer);
  write(os);
  return buffer.str();
}

/// The whole display of `object`. A flushing line end reads "\n<flush>".
template <typename Displayed>
std::string DisplayOf(const Displayed& object) {
  return Written([&object](std::ostream& os) { object.Display(os); });
}

/// `text` with every line end turned into a flushing one.
inline std::string Flushing(const std::string& text) {
  std::string result;
  for (const char c : text) {
    result += c;
    if (c == '\n') {
      result += "<flush>";
    }
  }
  return result;
}

}  // namespace mcbinning_tests

#endif
