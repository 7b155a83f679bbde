#include "data/row_order.h"

#include <mccomvor/missing_value.h>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

// From the cases in their order to rows in ascending order, in four steps that keep the tie order:
//
//     cases              7   3   9   .   3'  1   8     a cell without a value makes no row
//     splitters              3 | 7 | 8                 FindSplitters: from a sorted sample
//     bucket of a case   2   1   3   -   1   0   3     AssignBuckets: a search in a tree
//     rows by bucket     [1] [3 3'] [7] [9 8]          Scatter: in the order of the cases
//     rows in order      [1] [3 3'] [7] [8 9]          SortBucket: by cells, in the cache
//     merged rows        [1] [3]    [7] [8] [9]        mergeRows: one per value and code
//                                                      (only where every sum is exact)
//
// SortBucket cuts the range of a bucket's keys into as many cells of equal width as it has rows. It
// counts the rows of each cell, scatters them once more, and then few rows are left to be compared.

namespace MCBinning {
namespace {

constexpr std::size_t kMostBuckets = 1024;     // more would cost a cache miss per row scattered
constexpr std::size_t kRowsPerBucket = 4096;   // aimed at: such a bucket fits into the cache
constexpr std::size_t kSamplesPerBucket = 16;  // no bucket is likely to be twice the average then
constexpr std::size_t kMostCells = std::size_t{1} << 15;  // whose ends stay in the cache
constexpr std::ptrdiff_t kFewRows = 16;                   // few enough to be inserted one by one

constexpr std::size_t kBlock = 64;  // keys whose buckets are searched together
using Keys = std::array<RowKey, kBlock>;
using Buckets = std::array<std::size_t, kBlock>;

/// A search of the splitters as a tree: node n has its children at 2 n and 2 n + 1, so that a
/// step is one comparison and no branch. Four searches at a time overlap.
void searchSplitters(const std::vector<RowKey>& tree, const Keys& keys, Buckets& buckets) {
  constexpr std::size_t kTogether = 4;
  for (std::size_t i = 0; i < kBlock; i += kTogether) {
    std::size_t a = 1;
    std::size_t b = 1;
    std::size_t c = 1;
    std::size_t d = 1;
    while (a < tree.size()) {
      a = 2 * a + static_cast<std::size_t>(keys[i] >= tree[a]);
      b = 2 * b + static_cast<std::size_t>(keys[i + 1] >= tree[b]);
      c = 2 * c + static_cast<std::size_t>(keys[i + 2] >= tree[c]);
      d = 2 * d + static_cast<std::size_t>(keys[i + 3] >= tree[d]);
    }
    buckets[i] = a - tree.size();
    buckets[i + 1] = b - tree.size();
    buckets[i + 2] = c - tree.size();
    buckets[i + 3] = d - tree.size();
  }
}

/// The ascending splitters as a tree, level by level from element 1 on.
std::vector<RowKey> treeOf(const std::vector<RowKey>& splitters) {
  std::vector<RowKey> tree(splitters.size() + 1);
  for (std::size_t width = 1; width < tree.size(); width *= 2) {
    const std::size_t stretch = tree.size() / width;
    for (std::size_t node = 0; node < width; ++node) {
      tree[width + node] = splitters[node * stretch + stretch / 2 - 1];
    }
  }
  return tree;
}

template <typename Row>
Row rowOf(const CaseColumns& cases, std::size_t i) {
  using Weight = typename Row::WeightType;
  return {keyOf(cases.values[i]),
          cases.weights != nullptr ? static_cast<Weight>(cases.weights[i]) : Weight{1},
          cases.codes != nullptr ? std::uint32_t{cases.codes[i]} : 0};
}

/// Stable, for the tie order.
template <typename Row>
void sortCell(Row* first, Row* last) {
  if (last - first > kFewRows) {
    const auto isBefore = [](const Row& left, const Row& right) { return left.key < right.key; };
    if (!std::is_sorted(first, last, isBefore)) {
      std::stable_sort(first, last, isBefore);
    }
    return;
  }
  for (Row* next = first + 1; next < last; ++next) {
    const Row row = *next;
    Row* place = next;
    for (; place > first && place[-1].key > row.key; --place) {
      *place = place[-1];
    }
    *place = row;
  }
}

/// Adds up the rows of one value by code, in the tie order, and writes them in that of merged rows.
template <typename Row>
class RunMerger {
 public:
  /// Returns the number of rows written to `merged`.
  std::size_t Merge(std::span<const Row> run, Row* merged) {
    nCodes_ = 0;
    const RowKey key = run.front().key;
    for (const Row& row : run) {
      if (!isPresent_[row.code]) {
        isPresent_[row.code] = true;
        weightOf_[row.code] = 0;
        codes_[nCodes_++] = row.code;
      }
      weightOf_[row.code] += row.weight;
    }
    std::sort(codes_.data(), codes_.data() + nCodes_);
    for (std::size_t i = 0; i < nCodes_; ++i) {
      const std::uint32_t code = codes_[i];
      merged[i] = {key, weightOf_[code], code};
      isPresent_[code] = false;
    }
    return nCodes_;
  }

 private:
  static constexpr std::size_t kCodes = 256;
  std::array<bool, kCodes> isPresent_{};
  std::array<typename Row::WeightType, kCodes> weightOf_;
  std::array<std::uint32_t, kCodes> codes_;
  std::size_t nCodes_ = 0;
};

/// What mergeRows does, without the merging.
template <typename Row>
RowCounts copyRows(std::span<const Row> rows, Row* copy) {
  RowCounts counts{rows.size(), rows.empty() ? std::size_t{0} : std::size_t{1}};
  for (std::size_t row = 1; row < rows.size(); ++row) {
    counts.distinctValues += isSameValue(rows[row].key, rows[row - 1].key) ? 0 : 1;
  }
  if (copy != rows.data()) {
    std::copy(rows.begin(), rows.end(), copy);
  }
  return counts;
}

}  // namespace

template <typename Row>
RowCounts mergeRows(std::span<const Row> rows, Row* merged) {
  RunMerger<Row> merger;
  RowCounts counts;
  for (std::size_t begin = 0; begin < rows.size();) {
    std::size_t end = begin + 1;
    while (end < rows.size() && isSameValue(rows[end].key, rows[begin].key)) {
      ++end;
    }
    if (end - begin == 1) {
      merged[counts.rows++] = rows[begin];
    } else {
      counts.rows += merger.Merge(rows.subspan(begin, end - begin), merged + counts.rows);
    }
    ++counts.distinctValues;
    begin = end;
  }
  return counts;
}

template <typename Row>
RowCounts RowOrder<Row>::Fill(const CaseColumns& cases, Row* rows) {
  nBuckets_ = FindSplitters(cases.values);
  AssignBuckets(cases.values);
  Scatter(cases, rows);
  RowCounts counts;
  std::size_t begin = 0;
  for (std::size_t bucket = 0; bucket < nBuckets_; ++bucket) {
    const std::size_t end = bucketEnds_[bucket];
    const std::span<const Row> sorted = SortBucket(std::span(rows + begin, end - begin));
    const RowCounts kept = Row::kIsMerged ? mergeRows(sorted, rows + counts.rows)
                                          : copyRows(sorted, rows + counts.rows);
    counts.rows += kept.rows;
    counts.distinctValues += kept.distinctValues;
    begin = end;
  }
  bucketOfCase_.reset();
  return counts;
}

/// Returns the number of buckets, a power of 2.
template <typename Row>
std::size_t RowOrder<Row>::FindSplitters(std::span<const double> values) {
  tree_.assign(1, 0);
  const std::size_t buckets =
      std::min(kMostBuckets, std::bit_floor(values.size() / kRowsPerBucket));
  if (buckets < 2) {
    return 1;
  }
  // One value from each of as many stretches of cases, at a place that moves on from stretch to
  // stretch: neither order nor a period in the cases makes the sample lopsided.
  const std::size_t samples = buckets * kSamplesPerBucket;
  const std::size_t stretch = values.size() / samples;
  constexpr std::size_t kStride = 7919;  // a prime, which few stretches are a multiple of
  std::vector<RowKey> sample(samples);
  for (std::size_t i = 0; i < samples; ++i) {
    sample[i] = keyOf(values[i * stretch + i * kStride % stretch]);
  }
  std::sort(sample.begin(), sample.end());
  std::vector<RowKey> splitters(buckets - 1);
  for (std::size_t i = 0; i < splitters.size(); ++i) {
    splitters[i] = sample[(i + 1) * kSamplesPerBucket];
    if (i > 0 && splitters[i] <= splitters[i - 1]) {
      // Often met: a bucket for this one value.
      splitters[i] = std::max(splitters[i - 1], splitters[i] + 1);
    }
  }
  tree_ = treeOf(splitters);
  return buckets;
}

template <typename Row>
void RowOrder<Row>::AssignBuckets(std::span<const double> values) {
  const double missing = MCMV::gMissingValue;
  bucketOfCase_ = std::make_unique_for_overwrite<std::uint16_t[]>(values.size());
  bucketEnds_.assign(nBuckets_ + 1, 0);
  Keys keys{};
  Buckets buckets;
  for (std::size_t first = 0; first < values.size(); first += kBlock) {
    const auto block = values.subspan(first, std::min(kBlock, values.size() - first));
    std::transform(block.begin(), block.end(), keys.begin(), keyOf);
    searchSplitters(tree_, keys, buckets);
    for (std::size_t i = 0; i < block.size(); ++i) {
      const std::size_t bucket = block[i] == missing ? nBuckets_ : buckets[i];
      bucketOfCase_[first + i] = static_cast<std::uint16_t>(bucket);
      ++bucketEnds_[bucket];
    }
  }
}

/// Case by case, for the tie order. Leaves each bucket's end in bucketEnds_, which holds its number
/// of rows on entry.
template <typename Row>
void RowOrder<Row>::Scatter(const CaseColumns& cases, Row* rows) {
  std::size_t begin = 0;
  for (std::size_t& bucket : bucketEnds_) {
    begin += std::exchange(bucket, begin);
  }
  for (std::size_t i = 0; i < cases.values.size(); ++i) {
    const std::uint16_t bucket = bucketOfCase_[i];
    if (bucket != nBuckets_) {
      rows[bucketEnds_[bucket]++] = rowOf<Row>(cases, i);
    }
  }
}

/// Returns the sorted rows, which stand in the bucket or in sorted_.
template <typename Row>
std::span<const Row> RowOrder<Row>::SortBucket(std::span<const Row> bucket) {
  RowKey least = std::numeric_limits<RowKey>::max();
  RowKey greatest = 0;
  for (const Row& row : bucket) {
    least = std::min(least, row.key);
    greatest = std::max(greatest, row.key);
  }
  if (least >= greatest) {
    return bucket;
  }
  const auto cellBits = std::bit_width(std::min(bucket.size(), kMostCells));
  const auto keyBits = std::bit_width(greatest - least);
  const auto shift = keyBits > cellBits ? keyBits - cellBits : 0;
  const auto cellOf = [&](const Row& row) { return (row.key - least) >> shift; };
  cellEnds_.assign(((greatest - least) >> shift) + 1, 0);
  for (const Row& row : bucket) {
    ++cellEnds_[cellOf(row)];
  }
  std::uint32_t begin = 0;
  for (std::uint32_t& cell : cellEnds_) {
    begin += std::exchange(cell, begin);
  }
  sorted_.resize(std::max(sorted_.size(), bucket.size()));
  for (const Row& row : bucket) {
    sorted_[cellEnds_[cellOf(row)]++] = row;
  }
  Row* first = sorted_.data();
  for (const std::uint32_t end : cellEnds_) {
    sortCell(first, sorted_.data() + end);
    first = sorted_.data() + end;
  }
  return {sorted_.data(), first};
}

template class RowOrder<PackedRow>;
template class RowOrder<WideRow>;
template RowCounts mergeRows(std::span<const PackedRow> rows, PackedRow* merged);
template RowCounts mergeRows(std::span<const WideRow> rows, WideRow* merged);

}  // namespace MCBinning
