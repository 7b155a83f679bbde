/// Python objects as texts.
#ifndef MCBIN_PYTHON_OBJECT_TEXTS_H
#define MCBIN_PYTHON_OBJECT_TEXTS_H

#include <nanobind/nanobind.h>

#include <string>

namespace mcbin::python {

struct TextStore;

/// What each cell would be in a file of text. None and NaN are missing. TypeError, which names the
/// column and the row, for anything but strings, numbers and truth values.
TextStore textsOfObjects(const nanobind::list& cells, const std::string& column);

}  // namespace mcbin::python

#endif
