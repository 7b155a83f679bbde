#include "toolkit/fit/bin_recount.h"

#include <fmt/format.h>
#include <mccomvor/missing_value.h>

#include <algorithm>
#include <bit>
#include <bitset>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <utility>

#include "toolkit/errors.h"
#include "toolkit/model/bin_lookup.h"
#include "toolkit/system/files.h"
#include "toolkit/system/paths.h"
#include "toolkit/text/visible_text.h"

namespace mcbin {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kChunk = 8192;

[[noreturn]] void failReading(const std::string& path, const std::string& reason) {
  throw DataError(fmt::format("cannot read the temporary file {}: {}", visibleText(path), reason));
}

/// The values of a column file, a chunk at a time.
class ColumnFile {
 public:
  ColumnFile(const std::filesystem::path& path, std::uint64_t rows)
      : path_(path), stream_(path, std::ios::binary), rowsLeft_(rows) {
    if (!stream_.is_open()) failReading(bytesOf(path), std::strerror(errno));
  }

  /// The next values; none behind the last.
  const std::vector<double>& Next() {
    values_.resize(std::min<std::uint64_t>(kChunk, rowsLeft_));
    rowsLeft_ -= values_.size();
    const auto bytes = static_cast<std::streamsize>(sizeof(double) * values_.size());
    if (bytes > 0 && !stream_.read(reinterpret_cast<char*>(values_.data()), bytes)) {
      failReading(bytesOf(path_), stream_.bad() ? std::strerror(errno) : "it was cut short");
    }
    return values_;
  }

 private:
  std::filesystem::path path_;
  std::ifstream stream_;
  std::uint64_t rowsLeft_;
  std::vector<double> values_;
};

/// The doubles next to the cut points, on the side whose rows a cut point does not take: only where
/// one of them is in the data was a cut point rounded onto a value of the other side.
class Neighbours {
 public:
  Neighbours(const std::vector<double>& cutPoints, ClosedSide side) {
    for (const double cut : cutPoints) {
      doubles_.push_back(std::nextafter(cut, side == ClosedSide::Right ? -kInfinity : kInfinity));
      marks_[MarkOf(doubles_.back())] = true;
    }
  }

  bool Hold(double value) const {
    return marks_[MarkOf(value)] &&
           std::find(doubles_.begin(), doubles_.end(), value) != doubles_.end();
  }

 private:
  /// Spares nearly all values the search.
  static std::size_t MarkOf(double value) {
    constexpr std::uint64_t kFactor = 0x9e3779b97f4a7c15;
    return std::bit_cast<std::uint64_t>(value + 0.0) * kFactor >> 52U;  // -0.0 becomes 0.0
  }

  std::vector<double> doubles_;
  std::bitset<4096> marks_;
};

/// What recounting an attribute needs to know of the run.
struct Run {
  const std::filesystem::path* weights;  ///< Null where each row weighs 1.
  std::uint64_t rows;
  ClosedSide side;
  Monitor& monitor;
};

bool mayBeMiscounted(const AttributeModel& attribute, const std::filesystem::path& path,
                     const Run& run) {
  const std::vector<double>& cuts = attribute.cutPoints;
  if (cuts.empty()) return false;
  if (std::any_of(cuts.begin(), cuts.end(), [](double cut) { return std::isinf(cut); })) {
    return true;
  }
  const Neighbours neighbours(cuts, run.side);
  ColumnFile file(path, run.rows);
  for (const auto* values = &file.Next(); !values->empty(); values = &file.Next()) {
    run.monitor.ThrowIfStopped();
    if (std::any_of(values->begin(), values->end(),
                    [&](double value) { return neighbours.Hold(value); })) {
      return true;
    }
  }
  return false;
}

/// The weight of the rows in each bin.
std::vector<double> rowWeights(const AttributeModel& attribute, const std::filesystem::path& path,
                               const Run& run) {
  std::vector<double> sums(attribute.bins.size(), 0.0);
  ColumnFile file(path, run.rows);
  ColumnFile weightFile(run.weights != nullptr ? *run.weights : path, run.rows);
  for (const auto* values = &file.Next(); !values->empty(); values = &file.Next()) {
    run.monitor.ThrowIfStopped();
    const std::vector<double>& weights = weightFile.Next();
    for (std::size_t row = 0; row < values->size(); ++row) {
      const double value = (*values)[row];
      if (value == MCMV::gMissingValue) continue;
      sums[binOf(attribute.cutPoints, run.side, value)] +=
          run.weights != nullptr ? weights[row] : 1.0;
    }
  }
  return sums;
}

}  // namespace

std::vector<std::filesystem::path> columnFiles(const std::string& directory,
                                               std::error_code& failure) {
  std::vector<std::pair<unsigned long, std::filesystem::path>> numbered;
  for (const std::string& name : namesIn(directory, failure)) {
    unsigned long number = 0;
    const char* const end = name.data() + name.size();
    const auto parsed = std::from_chars(name.data(), end, number, 16);
    if (parsed.ec == std::errc() && parsed.ptr == end) {
      numbered.emplace_back(number, pathOf(directory) / name);
    }
  }
  std::sort(numbered.begin(), numbered.end());
  std::vector<std::filesystem::path> files;
  files.reserve(numbered.size());
  for (auto& [number, path] : numbered) files.push_back(std::move(path));
  return files;
}

void recountBins(const std::string& directory, std::uint64_t rows, Monitor& monitor, Model& model) {
  std::error_code failure;
  const std::vector<std::filesystem::path> files = columnFiles(directory, failure);
  const std::size_t first = model.weight ? 1 : 0;
  if (failure) failReading(directory, failure.message());
  if (files.size() != first + model.attributes.size()) failReading(directory, "files are gone");
  const Run run = {model.weight ? &files.front() : nullptr, rows, model.closedSide, monitor};
  for (std::size_t a = 0; a < model.attributes.size(); ++a) {
    AttributeModel& attribute = model.attributes[a];
    if (!mayBeMiscounted(attribute, files[first + a], run)) continue;
    const std::vector<double> sums = rowWeights(attribute, files[first + a], run);
    for (std::size_t bin = 0; bin < sums.size(); ++bin) {
      attribute.miscountedWeight += std::max(0.0, attribute.bins[bin].weight - sums[bin]);
    }
  }
}

}  // namespace mcbin
