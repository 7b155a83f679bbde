#include <nanobind/ndarray.h>
#include <nanobind/stl/optional.h>
#include <nanobind/stl/string.h>

#include <limits>
#include <memory>
#include <vector>

#include "python/ext/bind.h"
#include "python/ext/run_monitor.h"
#include "toolkit/apply/column_binner.h"
#include "toolkit/model/bin_lookup.h"

namespace mcbin::python {
namespace nb = nanobind;
using namespace nb::literals;  // NOLINT(google-build-using-namespace): how arguments are named
namespace {

/// An array that owns its numbers.
nb::object arrayOf(std::vector<std::int32_t> numbers) {
  auto owned = std::make_unique<std::vector<std::int32_t>>(std::move(numbers));
  std::int32_t* const data = owned->data();
  const std::size_t size = owned->size();
  const nb::capsule owner(owned.release(), [](void* content) noexcept {
    delete static_cast<std::vector<std::int32_t>*>(content);
  });
  return nb::cast(nb::ndarray<nb::numpy, std::int32_t, nb::ndim<1>>(data, {size}, owner));
}

nb::list binSource(const Model& model, BatchReader& source, nb::object progress) {
  RunMonitor monitor(std::move(progress));
  std::vector<std::vector<std::int32_t>> bins;
  {
    const nb::gil_scoped_release unlocked;
    source.Rewind();
    bins = binColumns(model, source, monitor);
  }
  nb::list arrays;
  for (std::vector<std::int32_t>& numbers : bins) arrays.append(arrayOf(std::move(numbers)));
  return arrays;
}

int binNumberOf(const Model& model, std::size_t attribute, std::optional<double> value) {
  return binNumber(place(model.attributes.at(attribute), model.closedSide, value));
}

}  // namespace

void bindApply(nb::module_& module) {
  module.attr("missing_bin") = kMissingBin;
  module.attr("user_missing_bin") = kUserMissingBin;
  module.def("bin_source", &binSource, "model"_a, "source"_a, "progress"_a.none());
  module.def("bin_number", &binNumberOf, "model"_a, "attribute"_a, "value"_a.none());
}

}  // namespace mcbin::python
