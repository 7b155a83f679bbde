#include "toolkit/model/model.h"

#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/tuple.h>
#include <nanobind/stl/vector.h>

#include <algorithm>

#include "python/ext/bind.h"
#include "python/ext/evidence_rows.h"
#include "python/ext/run_monitor.h"
#include "toolkit/errors.h"
#include "toolkit/export/export_formats.h"
#include "toolkit/model/attribute_choice.h"
#include "toolkit/model/bin_labels.h"
#include "toolkit/model/model_json.h"
#include "toolkit/report/report_page.h"
#include "toolkit/system/output_file.h"
#include "toolkit/tables/model_tables.h"

namespace mcbin::python {
namespace nb = nanobind;
using namespace nb::literals;  // NOLINT(google-build-using-namespace): how arguments are named
namespace {

std::string exported(const Model& model, const std::string& format) {
  return exportFormat(format).write(model, {});
}

/// The value that `name` stands for.
template <class Choices>
auto valueOf(const Choices& choices, const char* what, const std::string& name) {
  const auto* const found =
      std::find_if(std::begin(choices), std::end(choices),
                   [&name](const auto& choice) { return choice.name == name; });
  if (found == std::end(choices)) throw UsageError("there is no " + (what + (" " + name)));
  return found->value;
}

std::string sql(const Model& model, const std::string& style,
                const std::optional<std::string>& table, const std::string& dialect) {
  return exportFormat("sql").write(model, {valueOf(kLabelStyles, "style", style), table,
                                           valueOf(kSqlDialects, "dialect", dialect)});
}

std::optional<EvidenceTuples> evidence(const Model& model, std::size_t attribute) {
  return evidenceTuples(evidenceOf(model, model.attributes.at(attribute)));
}

std::vector<std::string> intervals(const Model& model, std::size_t attribute) {
  const std::vector<double>& cutPoints = model.attributes.at(attribute).cutPoints;
  std::vector<std::string> texts;
  for (std::size_t bin = 0; bin <= cutPoints.size(); ++bin) {
    texts.push_back(intervalText(cutPoints, model.closedSide, bin));
  }
  return texts;
}

Model load(const std::string& path) {
  RunMonitor monitor{nb::none()};
  const nb::gil_scoped_release unlocked;
  return loadModel(path, monitor);
}

void save(const Model& model, const std::string& path) {
  RunMonitor monitor{nb::none()};
  const nb::gil_scoped_release unlocked;
  OutputFile file(path, monitor);
  file.Write(modelToJson(model));
  file.Commit();
}

std::string textOfAttribute(const Model& model, std::size_t attribute) {
  return attributeText(model, model.attributes.at(attribute));
}

}  // namespace

void bindModel(nb::module_& module) {
  nb::class_<Model>(module, "Model")
      .def_static("from_json",
                  nb::overload_cast<const std::string&, const std::string&>(&modelFromJson),
                  "text"_a, "name"_a)
      .def_static("load", &load, "path"_a)
      .def("to_json", &modelToJson)
      .def("save", &save, "path"_a)
      .def("export", &exported, "format"_a)
      .def("sql", &sql, "style"_a, "table"_a.none(), "dialect"_a)
      .def("report", &reportPage)
      .def("text", &modelText)
      .def("attribute_text", &textOfAttribute, "attribute"_a)
      .def("event", &eventOf)
      .def("ranking", &rankByGain)
      .def(
          "information_gain",
          [](const Model& model, std::size_t attribute) {
            return model.attributes.at(attribute).InformationGain();
          },
          "attribute"_a)
      .def(
          "gain_over_all_cases",
          [](const Model& model, std::size_t attribute) {
            return model.attributes.at(attribute).GainOverAllCases();
          },
          "attribute"_a)
      .def("intervals", &intervals, "attribute"_a)
      .def("evidence", &evidence, "attribute"_a)
      .def(
          "select",
          [](Model model, const std::vector<std::string>& patterns) {
            keepAttributes(model, patterns);
            return model;
          },
          "patterns"_a);
}

}  // namespace mcbin::python
