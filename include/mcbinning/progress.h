/// Progress reports to the host and the host's wish to stop a run.
#ifndef MCBINNING_PROGRESS_H
#define MCBINNING_PROGRESS_H

#include <mcbinning/export.h>

#include <string>

/// A progress report that a listener questions for named measures.
class MCBINNING_API ProgressReport {
 public:
  ProgressReport() = default;
  ProgressReport(const ProgressReport&) = default;
  ProgressReport(ProgressReport&&) = default;
  ProgressReport& operator=(const ProgressReport&) = default;
  ProgressReport& operator=(ProgressReport&&) = default;
  virtual ~ProgressReport();

  /// The measure of that name, a whole number or a double.
  virtual int DiscreteMeasure(const std::string& name) = 0;
  virtual double ScaleMeasure(const std::string& name) = 0;
};

/// The report of a run: which item was just finished and how long the phase has taken so far.
/// During the pass over the cases the item is the number of cases read (null ones are not counted),
/// during the binning it is the index of the attribute in the variable list.
class MCBINNING_API BINProgressReporter : public ProgressReport {
 public:
  /// Index 0, elapsed time system-missing.
  BINProgressReporter();
  BINProgressReporter(const BINProgressReporter&) = default;
  BINProgressReporter(BINProgressReporter&&) = default;
  BINProgressReporter& operator=(const BINProgressReporter&) = default;
  BINProgressReporter& operator=(BINProgressReporter&&) = default;
  ~BINProgressReporter() override;

  /// The index for "IndexVar" (case matters), -1 for any other name.
  int DiscreteMeasure(const std::string& name) override;

  /// Seconds of processor time since the phase began, to the millisecond, for "elapsedTime" (case
  /// matters), the system-missing value for any other name.
  double ScaleMeasure(const std::string& name) override;

  void SetValues(unsigned int index, double elapsedTime);

 private:
  unsigned int index_ = 0;
  double elapsedTime_;
};

/// Implemented by the host. The listener is borrowed: it must outlive the runs it is set for.
/// Calls come synchronously, on the thread of the run. An exception that it throws ends the run
/// with status 3.
class MCBINNING_API ProgressListener {
 public:
  ProgressListener() = default;
  ProgressListener(const ProgressListener&) = default;
  ProgressListener& operator=(const ProgressListener&) = default;
  virtual ~ProgressListener();

  /// `report` lives for this call only.
  virtual void ReportProgress(ProgressReport& report) = 0;
};

/// Implemented by the host. The query is borrowed: it must outlive the runs it is set for. It is
/// asked before every case and around each attribute, by a supervised algorithm also when it is
/// made or asked for its status; after its first true answer it is not asked again and the run ends
/// with status 1. An exception that it throws ends the run with status 3.
class MCBINNING_API MCQueryCancel {
 public:
  MCQueryCancel() = default;
  MCQueryCancel(const MCQueryCancel&) = default;
  MCQueryCancel& operator=(const MCQueryCancel&) = default;
  virtual ~MCQueryCancel();

  /// True when the run must stop.
  virtual bool IsCancelled() = 0;
};

#endif
