/// The settings of the two algorithms.
#ifndef MCBINNING_SETTINGS_H
#define MCBINNING_SETTINGS_H

#include <mcbinning/export.h>
#include <mcbinning/progress.h>

#include <cstdint>
#include <iosfwd>
#include <string>

/// Settings of the supervised algorithm. A setter that refuses a value returns false and keeps the
/// old one. The listener and the cancel query are borrowed: copies of the settings share them, and
/// they must outlive the runs. Constructors, copies and the operations on the directory name throw
/// std::bad_alloc when memory runs out.
class MCBINNING_API BINSettings {
 public:
  /// No listener, no cancel query, 0 skipped attribute reports, 100000 skipped case reports, right
  /// border closed, threshold and number of bins -1 (not set), the temporary directory of the C
  /// runtime, small-bin detection off.
  BINSettings();
  BINSettings(const BINSettings& other);
  BINSettings& operator=(const BINSettings& other);
  ~BINSettings();

  /// Host listener of progress reports, null for none.
  ProgressListener* GetProgressListener();
  void SetProgressListener(ProgressListener* listener);

  /// Host cancel query, null for none.
  MCQueryCancel* GetCancelPointer() const;
  void SetCancelPointer(MCQueryCancel* query);

  /// How many reports to skip between two that are sent while attributes are binned: 0 reports
  /// every attribute. Refused: a negative number.
  int GetNSkippedAttReports() const;
  bool SetNSkippedAttReports(int count);

  /// A report is sent after every so many cases of the data pass; 0 sends none. Refused: a negative
  /// number.
  int GetNSkippedCasesReports() const;
  bool SetNSkippedCasesReports(int count);

  /// Number of bins of the equal-frequency pre-processing, -1 when not set. Refused: less than 2.
  int GetNumberOfBins() const;
  bool SetNumberOfBins(int numberOfBins);

  /// An attribute with more distinct values than this is pre-processed; 0 and -1 (not set) switch
  /// the pre-processing off. Refused: a negative number.
  int GetNumDistinctValueThreshold() const;
  bool SetNumDistinctValueThreshold(int threshold);

  /// A bin between two others is merged with one of them when its weight is less than this fraction
  /// of the lighter one's: with the one that leaves the lower weighted entropy of the three, the
  /// lower one on a tie. 0.0, the default, merges none. Refused: a value outside [0, 1] or NaN.
  double GetSmallBinDetectionThreshold() const;
  bool SetSmallBinDetectionThreshold(double threshold);

  /// True for bins (a, b], false for bins [a, b).
  bool IsRightBorderClosed() const;
  void SetRightBorderClosed(bool closed);

  /// Directory of the temporary files. The setter takes any text as it stands.
  std::string GetTempDirName();
  void SetTempDirName(const std::string& directory);

  /// Compares skipped attribute reports, skipped case reports, right border, threshold of distinct
  /// values and number of bins; nothing else.
  bool operator==(const BINSettings& other) const;

  void Display(std::ostream& os) const;

 private:
  ProgressListener* progressListener_ = nullptr;
  std::int32_t skippedAttReports_ = 0;
  std::int32_t skippedCasesReports_ = 100000;
  MCQueryCancel* cancelPointer_ = nullptr;
  bool rightBorderClosed_ = true;
  std::int32_t numDistinctValueThreshold_ = -1;
  std::int32_t numberOfBins_ = -1;
  std::string tempDirName_;
  double smallBinDetectionThreshold_ = 0.0;
};

/// Settings of the equal-frequency algorithm. What is said of BINSettings holds here too.
class MCBINNING_API EFBINSettings {
 public:
  /// Defaults as for BINSettings.
  EFBINSettings();
  EFBINSettings(const EFBINSettings& other);
  EFBINSettings& operator=(const EFBINSettings& other);
  ~EFBINSettings();

  /// What a run tells, whom it asks, and how often: as in BINSettings.
  ProgressListener* GetProgressListener();
  void SetProgressListener(ProgressListener* listener);
  MCQueryCancel* GetCancelPointer() const;
  void SetCancelPointer(MCQueryCancel* query);
  int GetNSkippedAttReports() const;
  bool SetNSkippedAttReports(int count);
  int GetNSkippedCasesReports() const;
  bool SetNSkippedCasesReports(int count);

  /// Number of bins per attribute, -1 when not set. Refused: less than 2.
  int GetNumberOfBins() const;
  bool SetNumberOfBins(int numberOfBins);
  bool IsRightBorderClosed() const;
  void SetRightBorderClosed(bool closed);
  std::string GetTempDirName();
  void SetTempDirName(const std::string& directory);

  /// Compares skipped attribute reports, skipped case reports, right border and number of bins;
  /// nothing else.
  bool operator==(const EFBINSettings& other) const;

  void Display(std::ostream& os) const;

 private:
  ProgressListener* progressListener_ = nullptr;
  std::int32_t skippedAttReports_ = 0;
  std::int32_t skippedCasesReports_ = 100000;
  MCQueryCancel* cancelPointer_ = nullptr;
  bool rightBorderClosed_ = true;
  std::int32_t numberOfBins_ = -1;
  std::string tempDirName_;
};

#endif
