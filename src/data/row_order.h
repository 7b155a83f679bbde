#ifndef MCBINNING_DATA_ROW_ORDER_H
#define MCBINNING_DATA_ROW_ORDER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "data/row_key.h"

namespace MCBinning {

/// One attribute over all used cases, in the order of the cases.
struct CaseColumns {
  std::span<const double> values;        // system-missing where the case makes no row
  const std::uint16_t* codes = nullptr;  // target category codes; null: all 0
  const double* weights = nullptr;       // null: all 1
};

/// A row whose weight is a whole number. Rows of equal value and code are merged into one, which
/// leaves every sum of weights exact.
struct PackedRow {
  using WeightType = std::uint32_t;
  static constexpr bool kIsMerged = true;
  RowKey key;
  std::uint32_t weight;
  std::uint32_t code;
};

/// A row of any weight, one per case: what a sum rounds to depends on the order of its terms.
struct WideRow {
  using WeightType = double;
  static constexpr bool kIsMerged = false;
  RowKey key;
  double weight;
  std::uint32_t code;
};

struct RowCounts {
  std::size_t rows = 0;
  std::size_t distinctValues = 0;
};

/// Makes the rows of the cases that have a value, in ascending order.
///
/// The tie order (mcbinning.h) is made here: the steps keep rows of equal value as they come. Rows
/// that are merged stand in the order of their codes. Whoever reads rows adds up weights in that
/// order, which decides the last bit of sums that are not exact.
///
/// The rows are scattered into at most 1,024 buckets, the most that memory takes without a cache
/// miss per row. The splitters between them come from a sample of the values, so that the buckets
/// are nearly equal in size whatever the distribution; a value that occurs often gets a bucket of
/// its own, which is in order as it stands. Each other bucket fits into the cache and is split
/// there into as many cells as it has rows, by its key's place between the bucket's least and
/// greatest key; what is left to do in a cell is a few comparisons, or a merge sort where the keys
/// of a bucket crowd.
template <typename Row>
class RowOrder {
 public:
  /// `rows` has room for one row per case.
  RowCounts Fill(const CaseColumns& cases, Row* rows);

 private:
  std::size_t FindSplitters(std::span<const double> values);
  void AssignBuckets(std::span<const double> values);
  void Scatter(const CaseColumns& cases, Row* rows);
  std::span<const Row> SortBucket(std::span<const Row> bucket);

  std::size_t nBuckets_ = 1;
  std::vector<RowKey> tree_;  // of splitters; a key equal to one belongs above it
  std::unique_ptr<std::uint16_t[]> bucketOfCase_;  // nBuckets_ for a case without a value
  std::vector<std::size_t> bucketEnds_;
  std::vector<Row> sorted_;
  std::vector<std::uint32_t> cellEnds_;
};

/// Merges neighbouring rows of one value and one code, whose weights are added up in the
/// tie order; the rows of one value then ascend by code. `merged` may be where `rows` begin. Counts
/// the values as well.
template <typename Row>
RowCounts mergeRows(std::span<const Row> rows, Row* merged);

}  // namespace MCBinning

#endif
