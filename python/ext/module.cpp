#include "python/ext/bind.h"
#include "toolkit/errors.h"

namespace nb = nanobind;

// The text of an error speaks of options as the command line does; the package puts it in Python's
// words.
NB_MODULE(_core, module) {
  nb::exception<mcbin::DataError>(module, "DataError", PyExc_ValueError);
  nb::exception<mcbin::UsageError>(module, "UsageError", PyExc_ValueError);
  module.attr("version") = MCBIN_VERSION;
  mcbin::python::bindSources(module);
  mcbin::python::bindModel(module);
  mcbin::python::bindFit(module);
  mcbin::python::bindApply(module);
  mcbin::python::bindScore(module);
}
