#include "plain_model/comparison.h"

#include <mcbinning/mcbinning.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <memory>
#include <sstream>
#include <vector>

#include "support/vector_cases.h"

namespace plain_model {

namespace {

// Collects the first difference; later ones often follow from it.
class Differences {
 public:
  void Value(const char* what, double library, double model) {
    const bool same = std::bit_cast<std::uint64_t>(library) == std::bit_cast<std::uint64_t>(model);
    if (!same && !(std::isnan(library) && std::isnan(model))) {
      Report(what, library, model);
    }
  }

  template <typename T>
  void Number(const char* what, T library, T model) {
    if (library != model) {
      Report(what, library, model);
    }
  }

  void Values(const char* what, const std::vector<double>& library,
              const std::vector<double>& model) {
    Number((std::string(what) + " (how many)").c_str(), library.size(), model.size());
    for (std::size_t i = 0; i < std::min(library.size(), model.size()); ++i) {
      Value(what, library[i], model[i]);
    }
  }

  void Statuses(const char* what, const MCBinning::MCStatus& library, const Status& model) {
    const int severity = library.IsOK() ? 0 : (library.IsError() ? -1 : 1);
    Number(what, library.GetErrorCode(), static_cast<long>(model.code));
    Number((std::string(what) + " severity").c_str(), severity, model.severity);
    for (unsigned i = 0; i < 3; ++i) {
      Number((std::string(what) + " discrete datum").c_str(), library.GetDiscreteDatum(i),
             static_cast<long>(model.discrete[i]));
      Value((std::string(what) + " scale datum").c_str(), library.GetScaleDatum(i), model.scale[i]);
    }
  }

  void At(const std::string& where) { where_ = where; }
  const std::string& First() const { return first_; }

 private:
  template <typename T>
  void Report(const char* what, T library, T model) {
    if (first_.empty()) {
      std::ostringstream text;
      text.precision(17);
      text << where_ << ": " << what << ": library " << library << ", model " << model;
      first_ = text.str();
    }
  }

  std::string where_;
  std::string first_;
};

void compareRecords(const BINAttributeTargetResults& library, const PairRecord& model,
                    Differences& differences) {
  differences.Statuses("status", library.GetStatus(), model.status);
  differences.Number("attribute", library.GetAttributeIndex(), model.attribute);
  differences.Number("target", library.GetTargetIndex(), model.target);
  differences.Number("distinct values", library.GetNDistinctValues(), model.distinctValues);
  differences.Value("total weight", library.GetTotalWeight(), model.totalWeight);
  differences.Value("total weight with missing", library.GetTotalWeightWithMissing(),
                    model.totalWeightWithMissing);
  differences.Value("minimum", library.GetMinimum(), model.minimum);
  differences.Value("maximum", library.GetMaximum(), model.maximum);
  differences.Values("cut points", library.GetCutPoints(), model.cutPoints);
  differences.Number("rows of cell counts", library.GetCellCounts().size(),
                     model.cellCounts.size());
  for (std::size_t i = 0; i < std::min(library.GetCellCounts().size(), model.cellCounts.size());
       ++i) {
    differences.Values("cell counts", library.GetCellCounts()[i], model.cellCounts[i]);
  }
  differences.Value("model entropy", library.GetModelEntropy(), model.modelEntropy);
}

void compareRecords(const BINAttributeResults& library, const AttributeRecord& model,
                    Differences& differences) {
  differences.Statuses("status", library.GetStatus(), model.status);
  differences.Number("attribute", library.GetAttributeIndex(), model.attribute);
  differences.Number("distinct values", library.GetNDistinctValues(), model.distinctValues);
  differences.Value("total weight", library.GetTotalWeight(), model.totalWeight);
  differences.Value("total weight with missing", library.GetTotalWeightWithMissing(),
                    model.totalWeightWithMissing);
  differences.Value("minimum", library.GetMinimum(), model.minimum);
  differences.Value("maximum", library.GetMaximum(), model.maximum);
  differences.Values("cut points", library.GetCutPoints(), model.cutPoints);
  differences.Values("cell counts", library.GetCellCounts(), model.cellCounts);
}

// All records in order, and that each can be asked for by its indexes.
void compareOutputs(const BINOutput& output, const std::vector<PairRecord>& model,
                    Differences& differences) {
  std::vector<BINAttributeTargetResults> records;
  differences.Statuses("all cut points", output.GetAllCutPoints(records),
                       model.empty() ? error(120020) : Status());
  differences.Number("records", records.size(), model.size());
  for (std::size_t i = 0; i < std::min(records.size(), model.size()); ++i) {
    differences.At("record " + std::to_string(i));
    compareRecords(records[i], model[i], differences);
  }
  for (const PairRecord& wanted : model) {
    BINAttributeTargetResults found;
    const MCBinning::MCStatus status =
        output.GetAttributeTargetCutPoints(wanted.attribute, wanted.target, found);
    if (wanted.attribute < 0 || wanted.target < 0 || wanted.attribute == wanted.target) {
      differences.Statuses("refused query of a pair", status, error(120013));
      continue;
    }
    for (const PairRecord& first : model) {
      if (first.attribute == wanted.attribute && first.target == wanted.target) {
        differences.Statuses("query of a pair", status, first.status);
        compareRecords(found, first, differences);
        break;
      }
    }
  }
}

void compareOutputs(const EFBINOutput& output, const std::vector<AttributeRecord>& model,
                    Differences& differences) {
  std::vector<BINAttributeResults> records;
  differences.Statuses("all cut points", output.GetAllCutPoints(records),
                       model.empty() ? error(120020) : Status());
  differences.Number("records", records.size(), model.size());
  for (std::size_t i = 0; i < std::min(records.size(), model.size()); ++i) {
    differences.At("record " + std::to_string(i));
    compareRecords(records[i], model[i], differences);
  }
}

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
void compareRequests(Algorithm& algorithm, Model& model, const RandomRun& run, ComparisonHost& host,
                     Differences& differences) {
  for (std::size_t i = 0; i < run.requests.size(); ++i) {
    const Request& request = run.requests[i];
    apply(request.settings, *algorithm.GetSettings());
    model.settings = request.settings;
    if (request.cancelBefore) {
      algorithm.Cancel();
      model.Cancel();
    }
    const bool wasPrepared = model.IsPrepared();
    mcbinning_tests::VectorCases cases(request.cases);
    differences.At("run " + std::to_string(i));
    const MCBinning::MCStatus status = runLibrary(algorithm, cases, request);
    differences.Statuses("run", status, runModel(model, request));
    differences.Statuses("stored", algorithm.GetStatus(), model.GetStatus());
    differences.Number("cases read again",
                       wasPrepared && cases.HasNextCalls() + cases.NextCalls() > 0, false);
    compareOutputs(*algorithm.GetOutput(), model.Records(), differences);
    host.AfterRun(algorithm, request, status);
  }
}

// The model is only made for a list that is accepted.
template <typename Model, typename HostSettings, typename Factory>
std::string compareAlgorithm(RandomRun& run, const std::string& tempDirectory, ComparisonHost& host,
                             Events& events) {
  Differences differences;
  HostSettings settings;
  apply(run.requests.front().settings, settings);
  settings.SetTempDirName(tempDirectory);
  Factory factory;
  const auto algorithm = host.Make(factory, settings, run.hostList);
  const Status listStatus = checkList(run.list);
  differences.At("factory");
  differences.Statuses("status", factory.GetStatus(), listStatus);
  differences.Number("algorithm made", algorithm != nullptr, listStatus.IsOK());
  if (listStatus.IsOK() && algorithm != nullptr) {
    Model model(run.list, run.requests.front().settings, events);
    compareRequests(*algorithm, model, run, host, differences);
  } else {
    events.Count(Event::kListRefused);
  }
  return differences.First();
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

std::string compareWithLibrary(RandomRun& run, const std::string& tempDirectory, Events& events) {
  ComparisonHost host;
  return compareWithLibrary(run, tempDirectory, host, events);
}

std::string compareWithLibrary(RandomRun& run, const std::string& tempDirectory,
                               ComparisonHost& host, Events& events) {
  return run.supervised ? compareAlgorithm<SupervisedModel, BINSettings, BINFactory>(
                              run, tempDirectory, host, events)
                        : compareAlgorithm<EqualFrequencyModel, EFBINSettings, EFBINFactory>(
                              run, tempDirectory, host, events);
}

}  // namespace plain_model
