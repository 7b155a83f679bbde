#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

#include "python/ext/arrow_batches.h"
#include "python/ext/bind.h"
#include "python/ext/memory_columns.h"

namespace mcbin::python {
namespace nb = nanobind;
using namespace nb::literals;  // NOLINT(google-build-using-namespace): how arguments are named

void bindSources(nb::module_& module) {
  nb::class_<BatchReader>(module, "Source")
      .def_prop_ro("column_names",
                   [](const BatchReader& source) {
                     std::vector<std::string> names;
                     for (const ColumnHead& head : source.Heads()) names.push_back(head.name);
                     return names;
                   })
      .def(
          "why_unfit",
          [](const BatchReader& source, std::size_t column) {
            return source.Heads().at(column).whyUnfit;
          },
          "column"_a);
  nb::class_<MemoryColumns, BatchReader>(module, "MemoryColumns")
      .def(nb::init<>())
      .def("add_numbers", &MemoryColumns::AddNumbers, "name"_a, "buffer"_a, "mask"_a.none())
      .def("add_codes", &MemoryColumns::AddCodes, "name"_a, "codes"_a, "values"_a)
      .def("add_objects", &MemoryColumns::AddObjects, "name"_a, "cells"_a)
      .def("add_unfit", &MemoryColumns::AddUnfit, "name"_a, "why"_a, "rows"_a);
  nb::enum_<StreamUse>(module, "StreamUse")
      .value("Once", StreamUse::Once)
      .value("InTurn", StreamUse::InTurn)
      .value("AtATime", StreamUse::AtATime);
  nb::class_<ArrowBatches, BatchReader>(module, "ArrowBatches")
      .def(nb::init<nb::callable, StreamUse>(), "open"_a, "use"_a);
}

}  // namespace mcbin::python
