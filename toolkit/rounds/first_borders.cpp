#include "toolkit/rounds/first_borders.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace mcbin {
namespace {

/// Two class weights for each of so many borders are a quarter of a megabyte in an answer.
constexpr std::size_t kMostWeights = 8192;
constexpr std::size_t kFewestBorders = 64;
constexpr std::size_t kMostRemembered = 16384;

}  // namespace

std::vector<double> firstBorders(std::vector<double> sample, std::size_t categories) {
  std::erase_if(sample, [](double value) { return std::isnan(value); });
  std::sort(sample.begin(), sample.end());
  const std::size_t most =
      std::max(kFewestBorders, kMostWeights / std::max<std::size_t>(categories, 1));
  std::vector<double> borders = sample;
  borders.erase(std::unique(borders.begin(), borders.end()), borders.end());
  if (borders.size() <= most) return borders;
  borders.clear();
  for (std::size_t part = 0; part < most; ++part) {
    borders.push_back(sample[(2 * part + 1) * sample.size() / (2 * most)]);
  }
  borders.erase(std::unique(borders.begin(), borders.end()), borders.end());
  return borders;
}

SampledCases::SampledCases(CaseSource& cases)
    : cases_(cases), samples_(cases.ColumnNames().size()) {}

bool SampledCases::NextCase() {
  if (!cases_.NextCase()) return false;
  if (--untilNext_ == 0) Remember();
  return true;
}

void SampledCases::Remember() {
  if (samples_.front().size() == kMostRemembered) ForgetEverySecond();
  for (std::size_t column = 0; column < samples_.size(); ++column) {
    double value = std::numeric_limits<double>::quiet_NaN();
    cases_.ReadNumber(column, value);
    samples_[column].push_back(value);
  }
  untilNext_ = stride_;
}

void SampledCases::ForgetEverySecond() {
  for (std::vector<double>& sample : samples_) {
    for (std::size_t kept = 0; kept < sample.size() / 2; ++kept) sample[kept] = sample[2 * kept];
    sample.resize(sample.size() / 2);
  }
  stride_ *= 2;
}

}  // namespace mcbin
