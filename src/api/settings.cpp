#include "mcbinning/settings.h"

#include <ostream>

#include "platform/temp_directory.h"

namespace {

template <typename Value>
bool storeIf(bool accepted, Value& field, Value value) {
  if (accepted) {
    field = value;
  }
  return accepted;
}

void displaySkippedReports(std::ostream& os, int skippedAttReports, int skippedCasesReports) {
  os << "Number of progress reports to skip when create bins for attribute = " << skippedAttReports
     << std::endl;
  os << "Number of progress reports to skip when read data file = " << skippedCasesReports
     << std::endl;
}

}  // namespace

BINSettings::BINSettings() : tempDirName_(MCBinning::tempDirectory()) {}

BINSettings::BINSettings(const BINSettings& other) = default;

BINSettings& BINSettings::operator=(const BINSettings& other) {
  if (this != &other) {
    // The one assignment that can fail comes first.
    tempDirName_ = other.tempDirName_;
    progressListener_ = other.progressListener_;
    skippedAttReports_ = other.skippedAttReports_;
    skippedCasesReports_ = other.skippedCasesReports_;
    cancelPointer_ = other.cancelPointer_;
    rightBorderClosed_ = other.rightBorderClosed_;
    numDistinctValueThreshold_ = other.numDistinctValueThreshold_;
    numberOfBins_ = other.numberOfBins_;
    smallBinDetectionThreshold_ = other.smallBinDetectionThreshold_;
  }
  return *this;
}

BINSettings::~BINSettings() = default;

ProgressListener* BINSettings::GetProgressListener() { return progressListener_; }

void BINSettings::SetProgressListener(ProgressListener* listener) { progressListener_ = listener; }

MCQueryCancel* BINSettings::GetCancelPointer() const { return cancelPointer_; }

void BINSettings::SetCancelPointer(MCQueryCancel* query) { cancelPointer_ = query; }

int BINSettings::GetNSkippedAttReports() const { return skippedAttReports_; }

bool BINSettings::SetNSkippedAttReports(int count) {
  return storeIf(count >= 0, skippedAttReports_, count);
}

int BINSettings::GetNSkippedCasesReports() const { return skippedCasesReports_; }

bool BINSettings::SetNSkippedCasesReports(int count) {
  return storeIf(count >= 0, skippedCasesReports_, count);
}

int BINSettings::GetNumberOfBins() const { return numberOfBins_; }

bool BINSettings::SetNumberOfBins(int numberOfBins) {
  return storeIf(numberOfBins >= 2, numberOfBins_, numberOfBins);
}

int BINSettings::GetNumDistinctValueThreshold() const { return numDistinctValueThreshold_; }

bool BINSettings::SetNumDistinctValueThreshold(int threshold) {
  return storeIf(threshold >= 0, numDistinctValueThreshold_, threshold);
}

double BINSettings::GetSmallBinDetectionThreshold() const { return smallBinDetectionThreshold_; }

bool BINSettings::SetSmallBinDetectionThreshold(double threshold) {
  return storeIf(threshold >= 0.0 && threshold <= 1.0, smallBinDetectionThreshold_, threshold);
}

bool BINSettings::IsRightBorderClosed() const { return rightBorderClosed_; }

void BINSettings::SetRightBorderClosed(bool closed) { rightBorderClosed_ = closed; }

std::string BINSettings::GetTempDirName() { return tempDirName_; }

void BINSettings::SetTempDirName(const std::string& directory) { tempDirName_ = directory; }

bool BINSettings::operator==(const BINSettings& other) const {
  return skippedAttReports_ == other.skippedAttReports_ &&
         skippedCasesReports_ == other.skippedCasesReports_ &&
         rightBorderClosed_ == other.rightBorderClosed_ &&
         numDistinctValueThreshold_ == other.numDistinctValueThreshold_ &&
         numberOfBins_ == other.numberOfBins_;
}

void BINSettings::Display(std::ostream& os) const {
  os << std::endl << "Start of BINSettings display" << std::endl;
  displaySkippedReports(os, skippedAttReports_, skippedCasesReports_);
  os << "if use EF as proprecess = " << static_cast<int>(rightBorderClosed_) << std::endl;
  os << "Number of distinct value = " << numDistinctValueThreshold_ << std::endl;
  os << "Number of bins for EF = " << numberOfBins_ << std::endl;
  os << "End of BINSettings display" << std::endl;
}

EFBINSettings::EFBINSettings() : tempDirName_(MCBinning::tempDirectory()) {}

EFBINSettings::EFBINSettings(const EFBINSettings& other) = default;

EFBINSettings& EFBINSettings::operator=(const EFBINSettings& other) {
  if (this != &other) {
    // The one assignment that can fail comes first.
    tempDirName_ = other.tempDirName_;
    progressListener_ = other.progressListener_;
    skippedAttReports_ = other.skippedAttReports_;
    skippedCasesReports_ = other.skippedCasesReports_;
    cancelPointer_ = other.cancelPointer_;
    rightBorderClosed_ = other.rightBorderClosed_;
    numberOfBins_ = other.numberOfBins_;
  }
  return *this;
}

EFBINSettings::~EFBINSettings() = default;

ProgressListener* EFBINSettings::GetProgressListener() { return progressListener_; }

void EFBINSettings::SetProgressListener(ProgressListener* listener) {
  progressListener_ = listener;
}

MCQueryCancel* EFBINSettings::GetCancelPointer() const { return cancelPointer_; }

void EFBINSettings::SetCancelPointer(MCQueryCancel* query) { cancelPointer_ = query; }

int EFBINSettings::GetNSkippedAttReports() const { return skippedAttReports_; }

bool EFBINSettings::SetNSkippedAttReports(int count) {
  return storeIf(count >= 0, skippedAttReports_, count);
}

int EFBINSettings::GetNSkippedCasesReports() const { return skippedCasesReports_; }

bool EFBINSettings::SetNSkippedCasesReports(int count) {
  return storeIf(count >= 0, skippedCasesReports_, count);
}

int EFBINSettings::GetNumberOfBins() const { return numberOfBins_; }

bool EFBINSettings::SetNumberOfBins(int numberOfBins) {
  return storeIf(numberOfBins >= 2, numberOfBins_, numberOfBins);
}

bool EFBINSettings::IsRightBorderClosed() const { return rightBorderClosed_; }

void EFBINSettings::SetRightBorderClosed(bool closed) { rightBorderClosed_ = closed; }

std::string EFBINSettings::GetTempDirName() { return tempDirName_; }

void EFBINSettings::SetTempDirName(const std::string& directory) { tempDirName_ = directory; }

bool EFBINSettings::operator==(const EFBINSettings& other) const {
  return skippedAttReports_ == other.skippedAttReports_ &&
         skippedCasesReports_ == other.skippedCasesReports_ &&
         rightBorderClosed_ == other.rightBorderClosed_ && numberOfBins_ == other.numberOfBins_;
}

void EFBINSettings::Display(std::ostream& os) const {
  os << std::endl << "Start of EFBINSettings display" << std::endl;
  displaySkippedReports(os, skippedAttReports_, skippedCasesReports_);
  os << static_cast<int>(rightBorderClosed_) << std::endl;
  os << "Number of bins for EF = " << numberOfBins_ << std::endl;
  os << "End of EFBINSettings display" << std::endl;
}
