#include "random/run_comparison.h"

#include <mcbinning/mcbinning.h>

#include <memory>
#include <vector>

#include "random/agreement.h"
#include "random/record_comparison.h"
#include "support/vector_cases.h"

namespace mcbinning_tests {

namespace {

using plain_model::EqualFrequencyModel;
using plain_model::Events;
using plain_model::Settings;
using plain_model::Status;
using plain_model::SupervisedModel;

// What both settings classes have.
template <typename HostSettings>
void applyShared(const Settings& settings, HostSettings& host) {
  host.SetRightBorderClosed(settings.rightClosed);
  if (settings.numberOfBins != -1) {
    host.SetNumberOfBins(settings.numberOfBins);
  }
}

MCBinning::MCStatus runLibrary(IBINAlgorithm& algorithm, BINCaseIterator& cases,
                               const Request& request) {
  return algorithm.Run(cases, pointerTo(request.attributes), pointerTo(request.targets));
}

MCBinning::MCStatus runLibrary(IEFBINAlgorithm& algorithm, BINCaseIterator& cases,
                               const Request& request) {
  return algorithm.Run(cases, pointerTo(request.attributes));
}

Status runModel(SupervisedModel& model, const Request& request) {
  return model.Run(request.cases, pointerTo(request.attributes), pointerTo(request.targets));
}

Status runModel(EqualFrequencyModel& model, const Request& request) {
  return model.Run(request.cases, pointerTo(request.attributes));
}

template <typename Algorithm, typename Model>
void compareRequest(Algorithm& algorithm, Model& model, const Request& request,
                    ComparisonHost& host) {
  apply(request.settings, *algorithm.GetSettings());
  model.settings = request.settings;
  if (request.cancelBefore) {
    algorithm.Cancel();
    model.Cancel();
  }
  const bool wasPrepared = model.IsPrepared();
  VectorCases cases(request.cases);
  const MCBinning::MCStatus status = runLibrary(algorithm, cases, request);
  compareStatuses("run", status, runModel(model, request));
  compareStatuses("stored", algorithm.GetStatus(), model.GetStatus());
  check(!wasPrepared || cases.HasNextCalls() + cases.NextCalls() == 0, "cases are read once");
  compareOutputs(*algorithm.GetOutput(), model.Records());
  host.AfterRun(algorithm, request, status);
}

// The model is only made for a list that is accepted.
template <typename Model, typename HostSettings, typename Factory>
void compareAlgorithm(RandomRun& run, const std::string& tempDirectory, ComparisonHost& host,
                      Events& events) {
  HostSettings settings;
  apply(run.requests.front().settings, settings);
  settings.SetTempDirName(tempDirectory);
  Factory factory;
  const auto algorithm = host.Make(factory, settings, run.list.host);
  const Status listStatus = checkList(run.list.plain);
  compareStatuses("factory", factory.GetStatus(), listStatus);
  compare("algorithm made", algorithm != nullptr, listStatus.IsOK());
  if (algorithm == nullptr) {
    events.Count(plain_model::Event::kListRefused);
    return;
  }
  Model model(run.list.plain, run.requests.front().settings, events);
  for (std::size_t i = 0; i < run.requests.size(); ++i) {
    within("run", i, [&] { compareRequest(*algorithm, model, run.requests[i], host); });
  }
}

}  // namespace

void apply(const Settings& settings, EFBINSettings& host) { applyShared(settings, host); }

void apply(const Settings& settings, BINSettings& host) {
  applyShared(settings, host);
  host.SetSmallBinDetectionThreshold(settings.smallBinThreshold);
  if (settings.distinctValueThreshold != -1) {
    host.SetNumDistinctValueThreshold(settings.distinctValueThreshold);
  }
}

std::unique_ptr<IBINAlgorithm> ComparisonHost::Make(BINFactory& factory, BINSettings& settings,
                                                    BINVarList& list) {
  return std::unique_ptr<IBINAlgorithm>(factory.CreateBINAlgorithm(settings, list));
}

std::unique_ptr<IEFBINAlgorithm> ComparisonHost::Make(EFBINFactory& factory,
                                                      EFBINSettings& settings, BINVarList& list) {
  return std::unique_ptr<IEFBINAlgorithm>(factory.CreateEFBINAlgorithm(settings, list));
}

void ComparisonHost::AfterRun(IBINAlgorithm& /*algorithm*/, const Request& /*request*/,
                              const MCBinning::MCStatus& /*status*/) {}

void ComparisonHost::AfterRun(IEFBINAlgorithm& /*algorithm*/, const Request& /*request*/,
                              const MCBinning::MCStatus& /*status*/) {}

const std::vector<int>* pointerTo(const std::optional<std::vector<int>>& selection) {
  return selection ? &*selection : nullptr;
}

void compareWithLibrary(RandomRun& run, const std::string& tempDirectory, Events& events) {
  ComparisonHost host;
  compareWithLibrary(run, tempDirectory, host, events);
}

void compareWithLibrary(RandomRun& run, const std::string& tempDirectory, ComparisonHost& host,
                        Events& events) {
  if (run.supervised) {
    compareAlgorithm<SupervisedModel, BINSettings, BINFactory>(run, tempDirectory, host, events);
  } else {
    compareAlgorithm<EqualFrequencyModel, EFBINSettings, EFBINFactory>(run, tempDirectory, host,
                                                                       events);
  }
}

}  // namespace mcbinning_tests
