#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/tuple.h>
#include <nanobind/stl/vector.h>

#include <memory>

#include "python/ext/bind.h"
#include "python/ext/evidence_rows.h"
#include "python/ext/run_monitor.h"
#include "toolkit/columns/column.h"
#include "toolkit/fit/column_cases.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/input/open_table.h"
#include "toolkit/score/score_model.h"

namespace mcbin::python {
namespace nb = nanobind;
using namespace nb::literals;  // NOLINT(google-build-using-namespace): how arguments are named
namespace {

ModelScore scoreSource(const Model& model, BatchReader& source,
                       const std::optional<std::string>& target,
                       const std::optional<std::string>& weight, nb::object progress) {
  RunMonitor monitor(std::move(progress));
  const nb::gil_scoped_release unlocked;
  source.Rewind();
  ColumnCases cases(source, model.options.naTexts);
  return scoreModel(model, {target, weight}, cases, monitor);
}

ModelScore scoreFile(const Model& model, const InputOptions& input,
                     const std::optional<std::string>& target,
                     const std::optional<std::string>& weight, nb::object progress) {
  RunMonitor monitor(std::move(progress));
  const nb::gil_scoped_release unlocked;
  const std::unique_ptr<TableReader> reader = openTable(input, monitor);
  TextCases cases(*reader, model.options.naTexts);
  return scoreModel(model, {target, weight}, cases, monitor);
}

std::vector<double> weightsOf(const AttributeScore& score) {
  std::vector<double> weights;
  for (const WeightedCounts& row : score.rows) weights.push_back(row.weight);
  return weights;
}

std::vector<std::vector<double>> classWeightsOf(const AttributeScore& score) {
  std::vector<std::vector<double>> weights;
  for (const WeightedCounts& row : score.rows) weights.push_back(row.classWeights);
  return weights;
}

}  // namespace

void bindScore(nb::module_& module) {
  nb::class_<AttributeScore>(module, "AttributeScore")
      .def_prop_ro("weights", &weightsOf)
      .def_prop_ro("class_weights", &classWeightsOf)
      .def_ro("information_gain", &AttributeScore::informationGain)
      .def_ro("stability_index", &AttributeScore::stabilityIndex)
      .def_prop_ro("evidence",
                   [](const AttributeScore& score) { return evidenceTuples(score.evidence); });
  nb::class_<ModelScore>(module, "ModelScore")
      .def_ro("attributes", &ModelScore::attributes)
      .def_prop_ro("cases", [](const ModelScore& score) { return score.cases.read; })
      .def_prop_ro("dropped", [](const ModelScore& score) { return score.cases.droppedForWeight; });
  module.def("score_source", &scoreSource, "model"_a, "source"_a, "target"_a.none(),
             "weight"_a.none(), "progress"_a.none());
  module.def("score_file", &scoreFile, "model"_a, "input"_a, "target"_a.none(), "weight"_a.none(),
             "progress"_a.none());
}

}  // namespace mcbin::python
