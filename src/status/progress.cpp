#include "mcbinning/progress.h"

#include <mccomvor/missing_value.h>

ProgressReport::~ProgressReport() = default;

ProgressListener::~ProgressListener() = default;

MCQueryCancel::~MCQueryCancel() = default;

BINProgressReporter::BINProgressReporter() : elapsedTime_(MCMV::gMissingValue) {}

BINProgressReporter::~BINProgressReporter() = default;

int BINProgressReporter::DiscreteMeasure(const std::string& name) {
  return name == "IndexVar" ? static_cast<int>(index_) : -1;
}

double BINProgressReporter::ScaleMeasure(const std::string& name) {
  return name == "elapsedTime" ? elapsedTime_ : MCMV::gMissingValue;
}

void BINProgressReporter::SetValues(unsigned int index, double elapsedTime) {
  index_ = index;
  elapsedTime_ = elapsedTime;
}
