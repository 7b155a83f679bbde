#ifndef MCBINNING_SUPERVISED_ALGORITHM_FRAME_H
#define MCBINNING_SUPERVISED_ALGORITHM_FRAME_H

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "api/version_banner.h"
#include "data/prepared_data.h"
#include "mcbinning/case_iterator.h"
#include "mcbinning/progress.h"
#include "mcbinning/status.h"
#include "mcbinning/variable_list.h"
#include "platform/file_system.h"
#include "status/attribute_progress.h"
#include "status/cancel_state.h"
#include "status/status_codes.h"
#include "supervised/selection.h"

namespace MCBinning {

/// The steps of a run, which both algorithms take in one order:
///
///     number of bins -> Select -> prepare the cases, once -> CheckData
///         -> per request: NewRecord -> Compute -> file it -> progress
///
/// When a run is cancelled or anything throws in it, the prepared data are thrown away with their
/// files; the records filed so far stay, and after an exception the next run prepares anew.
///
/// `Kind` names the types of one algorithm, and `Kind::Algorithm`, which derives from this class,
/// has the steps that differ:
///
///     MCStatus Select(const Selection&, std::vector<Request>&) const;
///         Makes the requests of a selection that is not the whole list; an error ends the run.
///     MCStatus CheckData(const Selection&, const MCStatus& ofPass);
///         What the run answers when every request ends OK; an error ends it before the first.
///     Record NewRecord(const Request&) const;
///         The record of a request of which no more is known.
///     void Compute(Record&);
///     void FileInOutput(Record);
template <typename Kind>
class AlgorithmFrame : public Kind::Interface {
 public:
  AlgorithmFrame(const AlgorithmFrame&) = delete;
  AlgorithmFrame& operator=(const AlgorithmFrame&) = delete;

  std::string GetVersion() override { return kVersionBanner; }
  void SetCancelPointer(MCQueryCancel* query) override { cancelState_.SetQuery(query); }
  void Cancel() override { cancelState_.Cancel(); }
  void SetProgressListener(ProgressListener* listener) override {
    settings_.SetProgressListener(listener);
  }
  typename Kind::Output* GetOutput() override { return &output_; }
  typename Kind::Settings* GetSettings() override { return &settings_; }
  void Display(std::ostream& os) override;

  /// The algorithm's copy of the list; never null.
  virtual BINVarList* GetVarList() { return &varList_; }

 protected:
  /// Copies settings and list. `files` is borrowed and must outlive the algorithm.
  AlgorithmFrame(typename Kind::Settings& settings, BINVarList& varList, int targetIndex,
                 FileSystem& files)
      : settings_(settings),
        varList_(varList),
        cancelState_(settings.GetCancelPointer()),
        data_(varList_, cancelState_, files),
        targetIndex_(targetIndex),
        weightIndex_(varList_.GetWeightIndex()) {}

  /// The run; never throws.
  MCStatus RunSelection(BINCaseIterator& cases, const Selection& selection);

  std::uint32_t recordCount_ = 0;
  bool rightBorderClosed_ = true;  // as it stood when the cases were read
  int numberOfBins_ = 0;
  typename Kind::Settings settings_;
  BINVarList varList_;
  MCStatus status_;  // the last one of a record that was not OK
  CancelState cancelState_;
  PreparedData data_;
  int targetIndex_;
  int weightIndex_;
  typename Kind::Output output_;

 private:
  typename Kind::Algorithm& Self() { return static_cast<typename Kind::Algorithm&>(*this); }

  MCStatus RunSteps(BINCaseIterator& cases, const Selection& selection);
  MCStatus PrepareOnce(BINCaseIterator& cases);
  void BinRequests(const std::vector<Request>& requests);
  bool IsStopWished(const Request& next);
  void File(typename Kind::Record record);
};

template <typename Kind>
void AlgorithmFrame<Kind>::Display(std::ostream& os) {
  os << std::endl << "Start of " << Kind::kName << " display" << std::endl;
  os << "Record count: " << recordCount_ << std::endl;
  os << "out result: ";
  data_.Display(os);
  output_.Display(os);
  os << "End of " << Kind::kName << " display" << std::endl;
}

template <typename Kind>
MCStatus AlgorithmFrame<Kind>::RunSelection(BINCaseIterator& cases, const Selection& selection) {
  try {
    return RunSteps(cases, selection);
  } catch (...) {
    data_.Discard();
    return errorStatus(kFailed);
  }
}

template <typename Kind>
MCStatus AlgorithmFrame<Kind>::RunSteps(BINCaseIterator& cases, const Selection& selection) {
  numberOfBins_ = settings_.GetNumberOfBins();
  if (numberOfBins_ <= 0) {
    return errorStatus(kNoNumberOfBins);
  }
  std::vector<Request> requests;
  MCStatus status;
  if (!selection.IsWholeList()) {
    status = Self().Select(selection, requests);
    if (status.IsError()) {
      return status;
    }
  }
  if (!cancelState_.IsCancelled()) {
    status = PrepareOnce(cases);
    if (status.IsError()) {
      return status;
    }
    status = Self().CheckData(selection, status);
    if (!status.IsError()) {
      BinRequests(selection.IsWholeList() ? requestAll(varList_, targetIndex_, weightIndex_)
                                          : requests);
    }
  }
  if (!status_.IsOK()) {
    status = warningStatus(kSomeNotOK);
  }
  if (cancelState_.IsCancelled()) {
    data_.Discard();  // no later run gets as far as using them
    status_ = errorStatus(kCancelled);
    return status_;
  }
  return status;
}

template <typename Kind>
MCStatus AlgorithmFrame<Kind>::PrepareOnce(BINCaseIterator& cases) {
  if (data_.Exists()) {
    return {};
  }
  PreparedData::Options options;
  options.tempDirName = settings_.GetTempDirName();
  options.listener = settings_.GetProgressListener();
  options.reportInterval = settings_.GetNSkippedCasesReports();
  const MCStatus status = data_.Prepare(cases, options);
  rightBorderClosed_ = settings_.IsRightBorderClosed();
  return status;
}

template <typename Kind>
void AlgorithmFrame<Kind>::BinRequests(const std::vector<Request>& requests) {
  AttributeProgress progress(settings_.GetProgressListener(),
                             [this] { return settings_.GetNSkippedAttReports(); });
  for (const Request& request : requests) {
    if (IsStopWished(request)) {
      return;
    }
    typename Kind::Record record = Self().NewRecord(request);
    if (!request.status.IsOK()) {
      File(std::move(record));
      continue;
    }
    Self().Compute(record);
    const MCStatus status = record.GetStatus();
    File(std::move(record));
    if (Kind::kAsksAroundSteps && cancelState_.IsCancelled()) {
      return;
    }
    progress.AttributeDone(request.attribute, status);
  }
}

/// How often the host is asked differs, which it can see: before every request, or around every
/// step.
template <typename Kind>
bool AlgorithmFrame<Kind>::IsStopWished(const Request& next) {
  return Kind::kAsksAroundSteps && !next.status.IsOK() ? cancelState_.WasCancelled()
                                                       : cancelState_.IsCancelled();
}

template <typename Kind>
void AlgorithmFrame<Kind>::File(typename Kind::Record record) {
  const MCStatus status = record.GetStatus();
  Self().FileInOutput(std::move(record));
  if (!status.IsOK()) {
    status_ = status;
  }
}

}  // namespace MCBinning

#endif
