/// The parts of the module, one function each.
#ifndef MCBIN_PYTHON_BIND_H
#define MCBIN_PYTHON_BIND_H

#include <nanobind/nanobind.h>

namespace mcbin::python {

void bindSources(nanobind::module_& module);
void bindModel(nanobind::module_& module);
void bindFit(nanobind::module_& module);
void bindApply(nanobind::module_& module);
void bindScore(nanobind::module_& module);

}  // namespace mcbin::python

#endif
