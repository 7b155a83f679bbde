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

const std::vector<int>* pointerTo(const std::optional<std::vector<int>>& selection) {
  return selection ? &*selection : nullptr;
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
  const MCBinning::MCStatus status = run(algorithm, cases, request);
  const Status expected = run(model, request);
  compareStatuses("run", status, expected);
  const bool isRefused =
      expected.code == 120008 || expected.code == 120009 || expected.code == 120011;
  compareStatuses("stored", algorithm.GetStatus(), model.GetStatus());
  check(!(wasPrepared || isRefused) || cases.HasNextCalls() + cases.NextCalls() == 0,
        "no case is read again, or for a run that is refused");
  compareOutputs(*algorithm.GetOutput(), model.Records());
  host.AfterRun(algorithm, request, status);
}

// The model is only made for a list that is accepted.
template <typename Model, typename HostSettings, typename Factory>
void compareAlgorithm(RandomRun& made, const std::string& tempDirectory, ComparisonHost& host,
                      Events& events) {
  HostSettings settings;
  apply(made.requests.front().settings, settings);
  settings.SetTempDirName(tempDirectory);
  Factory factory;
  const auto algorithm = host.Make(factory, settings, made.list.host);
  const Status listStatus = checkList(made.list.plain);
  compareStatuses("factory", factory.GetStatus(), listStatus);
  compare("algorithm made", algorithm != nullptr, listStatus.IsOK());
  if (algorithm == nullptr) {
    events.Count(plain_model::Event::kListRefused);
    return;
  }
  Model model(made.list.plain, made.requests.front().settings, events);
  for (std::size_t i = 0; i < made.requests.size(); ++i) {
    within("run", i, [&] { compareRequest(*algorithm, model, made.requests[i], host); });
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

MCBinning::MCStatus run(IBINAlgorithm& algorithm, BINCaseIterator& cases, const Request& request) {
  return algorithm.Run(cases, pointerTo(request.attributes), pointerTo(request.targets));
}

MCBinning::MCStatus run(IEFBINAlgorithm& algorithm, BINCaseIterator& cases,
                        const Request& request) {
  return algorithm.Run(cases, pointerTo(request.attributes));
}

Status run(SupervisedModel& model, const Request& request) {
  return model.Run(request.cases, pointerTo(request.attributes), pointerTo(request.targets));
}

Status run(EqualFrequencyModel& model, const Request& request) {
  return model.Run(request.cases, pointerTo(request.attributes));
}

void compareWithLibrary(RandomRun& made, const std::string& tempDirectory, Events& events) {
  ComparisonHost host;
  compareWithLibrary(made, tempDirectory, host, events);
}

void compareWithLibrary(RandomRun& made, const std::string& tempDirectory, ComparisonHost& host,
                        Events& events) {
  if (made.supervised) {
    compareAlgorithm<SupervisedModel, BINSettings, BINFactory>(made, tempDirectory, host, events);
  } else {
    compareAlgorithm<EqualFrequencyModel, EFBINSettings, EFBINFactory>(made, tempDirectory, host,
                                                                       events);
  }
}

}  // namespace mcbinning_tests
