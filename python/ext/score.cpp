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
#include "toolkit/fit/binning_pass.h"
#include "toolkit/fit/column_cases.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/input/open_table.h"
#include "toolkit/score/score_formats.h"
#include "toolkit/score/score_tables.h"

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
  return scoreModel(model, {target, weight, sourceOf(input)}, cases, monitor);
}

/// One attribute as Python takes it; empty without a target, or one of two categories.
struct AttributeScore {
  std::vector<double> weights;
  std::vector<std::vector<double>> classWeights;
  std::optional<double> informationGain;
  double stabilityIndex;
  const char* stability;
  std::string unseen;
  std::optional<EvidenceTuples> evidence;
};

AttributeScore attributeScore(const ModelScore& score, const Model& model, std::size_t position) {
  const AttributeModel& counted = score.counted.attributes.at(position);
  const double index = score.shifts.at(position).stabilityIndex;
  AttributeScore result{{},
                        {},
                        {},
                        index,
                        nameOf(kStabilities, stabilityOf(index)),
                        unseenText(model, score, position),
                        evidenceTuples(evidenceOf(score.counted, counted))};
  for (const ScoreRow& row : scoreRows(model, score, position)) {
    result.weights.push_back(row.counts.weight);
    result.classWeights.push_back(row.counts.classWeights);
  }
  if (score.counted.target) result.informationGain = counted.InformationGain();
  return result;
}

}  // namespace

void bindScore(nb::module_& module) {
  nb::class_<AttributeScore>(module, "AttributeScore")
      .def_ro("weights", &AttributeScore::weights)
      .def_ro("class_weights", &AttributeScore::classWeights)
      .def_ro("information_gain", &AttributeScore::informationGain)
      .def_ro("stability_index", &AttributeScore::stabilityIndex)
      .def_ro("stability", &AttributeScore::stability)
      .def_ro("unseen", &AttributeScore::unseen)
      .def_ro("evidence", &AttributeScore::evidence);
  nb::class_<ModelScore>(module, "ModelScore")
      .def("attribute", &attributeScore, "model"_a, "position"_a)
      .def(
          "export",
          [](const ModelScore& score, const Model& model, const std::string& format) {
            return scoreFormat(format).write(model, score);
          },
          "model"_a, "format"_a)
      .def_prop_ro("cases", [](const ModelScore& score) { return score.counted.cases.read; })
      .def_prop_ro("dropped",
                   [](const ModelScore& score) { return score.counted.cases.droppedForWeight; });
  module.def("score_source", &scoreSource, "model"_a, "source"_a, "target"_a.none(),
             "weight"_a.none(), "progress"_a.none());
  module.def("score_file", &scoreFile, "model"_a, "input"_a, "target"_a.none(), "weight"_a.none(),
             "progress"_a.none());
}

}  // namespace mcbin::python
