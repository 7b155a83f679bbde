#include <nanobind/stl/optional.h>
#include <nanobind/stl/pair.h>
#include <nanobind/stl/string.h>
#include <nanobind/stl/vector.h>

#include <memory>
#include <utility>

#include "python/ext/bind.h"
#include "python/ext/muted_output.h"
#include "python/ext/run_monitor.h"
#include "toolkit/errors.h"
#include "toolkit/fit/column_cases.h"
#include "toolkit/fit/fit_model.h"
#include "toolkit/fit/text_cases.h"
#include "toolkit/input/cells.h"
#include "toolkit/input/open_table.h"
#include "toolkit/rounds/fit_batches.h"

namespace mcbin::python {
namespace nb = nanobind;
using namespace nb::literals;  // NOLINT(google-build-using-namespace): how arguments are named
namespace {

/// A model, and what does not fit the data.
using Fitted = std::pair<Model, std::vector<std::string>>;

/// `fit` makes the model, given how to watch.
template <class Fit>
Fitted run(Monitor& monitor, const Fit& fit) {
  const MutedStandardOutput muted;
  FitTimings timings;
  std::vector<std::string> notes;
  FitWatch watch{monitor};
  watch.noted = [&notes](const std::string& text) { notes.push_back(text); };
  Model model = fit(watch, timings);
  monitor.ThrowIfStopped();
  return {std::move(model), std::move(notes)};
}

/// With at least `roundsFrom` rows in rounds; None for never.
Fitted fitSource(BatchReader& source, const FitRequest& request, nb::object progress,
                 std::size_t jobs, std::optional<std::uint64_t> roundsFrom) {
  RunMonitor monitor(std::move(progress));
  std::vector<std::unique_ptr<BatchReader>> others;  // to be destroyed with the interpreter lock
  const nb::gil_scoped_release unlocked;
  source.Rewind();
  return run(monitor, [&](FitWatch& watch, FitTimings& timings) {
    watch.jobs = jobs;
    watch.another = [&]() -> std::unique_ptr<CaseSource> {
      others.push_back(source.Another());
      if (!others.back()) return nullptr;
      return std::make_unique<ColumnCases>(*others.back(), request.naTexts);
    };
    if (roundsFrom) return fitBatches(request, source, watch, *roundsFrom, timings);
    ColumnCases cases(source, request.naTexts);
    return fitModel(request, cases, watch, timings);
  });
}

Fitted fitFile(const FitRequest& request, nb::object progress) {
  RunMonitor monitor(std::move(progress));
  const nb::gil_scoped_release unlocked;
  const std::unique_ptr<TableReader> reader = openTable(request.input, monitor);
  return run(monitor, [&](FitWatch& watch, FitTimings& timings) {
    TextCases cases(*reader, request.naTexts);
    return fitModel(request, cases, watch, timings);
  });
}

void append(std::vector<GivenCuts> more, std::vector<GivenCuts>& cuts) {
  for (GivenCuts& one : more) cuts.push_back(std::move(one));
}

void addCuts(FitRequest& request, const std::string& text) {
  RunMonitor monitor{nb::none()};
  append(readGivenCuts(text, monitor), request.cuts);
}

/// What is for binning with a target.
void bindScoring(nb::class_<FitRequest>& bound) {
  bound.def_rw("event", &FitRequest::event, nb::for_setter(nb::arg("value").none()))
      .def_rw("woe_adjustment", &FitRequest::evidenceAdjustment,
              nb::for_setter(nb::arg("value").none()))
      .def_rw("min_bin_share", &FitRequest::minBinShare, nb::for_setter(nb::arg("value").none()))
      .def_rw("min_bin_weight", &FitRequest::minBinWeight, nb::for_setter(nb::arg("value").none()))
      .def_rw("max_bins", &FitRequest::maxBins, nb::for_setter(nb::arg("value").none()))
      .def("add_cuts", &addCuts, "text"_a)
      .def(
          "add_cuts_of",
          [](FitRequest& request, const Model& model) { append(cutsOf(model), request.cuts); },
          "model"_a);
}

void bindRequest(nb::module_& module) {
  nb::class_<FitRequest> bound(module, "FitRequest");
  bound.def(nb::init<>())
      .def_rw("input", &FitRequest::input)
      .def_prop_rw(
          "equal_frequency",
          [](const FitRequest& request) { return request.method == Method::EqualFrequency; },
          [](FitRequest& request, bool value) {
            request.method = value ? Method::EqualFrequency : Method::Supervised;
          })
      .def_prop_rw(
          "left_closed",
          [](const FitRequest& request) { return request.closedSide == ClosedSide::Left; },
          [](FitRequest& request, bool value) {
            request.closedSide = value ? ClosedSide::Left : ClosedSide::Right;
          })
      .def_prop_rw(
          "round_weights",
          [](const FitRequest& request) { return request.rounding == WeightRounding::Round; },
          [](FitRequest& request, bool value) {
            request.rounding = value ? WeightRounding::Round : WeightRounding::Truncate;
          })
      .def_rw("target", &FitRequest::target, nb::for_setter(nb::arg("value").none()))
      .def_rw("weight", &FitRequest::weight, nb::for_setter(nb::arg("value").none()))
      .def_rw("bins", &FitRequest::bins)
      .def_rw("threshold", &FitRequest::distinctValueThreshold)
      .def_rw("small_bins", &FitRequest::smallBinThreshold)
      .def_rw("na", &FitRequest::naTexts)
      .def_rw("attributes", &FitRequest::attributePatterns)
      .def_rw("exclude", &FitRequest::excludePatterns)
      .def_rw("types", &FitRequest::types)
      .def_rw("missing", &FitRequest::missing)
      .def_rw("target_missing", &FitRequest::targetMissing)
      .def_rw("missing_ranges", &FitRequest::missingRanges);
  bindScoring(bound);
}

}  // namespace

void bindFit(nb::module_& module) {
  module.attr("default_na") = nb::cast(defaultNaTexts());
  module.attr("default_pre_bins") = kDefaultPreBins;
  module.attr("default_equal_frequency_bins") = kDefaultEqualFrequencyBins;
  nb::class_<InputOptions>(module, "InputOptions")
      .def(nb::init<>())
      .def_rw("data", &InputOptions::data)
      .def_rw("no_header", &InputOptions::noHeader)
      .def_rw("delimiter", &InputOptions::delimiter, nb::for_setter(nb::arg("value").none()))
      .def_rw("table", &InputOptions::table, nb::for_setter(nb::arg("value").none()))
      .def_rw("query", &InputOptions::query, nb::for_setter(nb::arg("value").none()));
  bindRequest(module);
  module.def("fit_source", &fitSource, "source"_a, "request"_a, "progress"_a.none(), "jobs"_a,
             "rounds_from"_a.none());
  module.def("fit_file", &fitFile, "request"_a, "progress"_a.none());
}

}  // namespace mcbin::python
