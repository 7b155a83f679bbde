#ifndef MCBINNING_BENCH_PLAIN_REFERENCE_H
#define MCBINNING_BENCH_PLAIN_REFERENCE_H

#include <cstddef>
#include <string>
#include <vector>

#include "mcbinning/case_iterator.h"

namespace mcbinning_bench {

struct PlainRow {
  double value;
  int code;
  double weight;
};

/// What std::sort is measured on.
void sortPlainRows(std::vector<PlainRow>& rows);

/// The straightforward way to the same cut points (right-closed, no weight, no missing cells, no
/// pre-bins, no merging of bins): column files read one double at a time, 24-byte rows sorted by
/// std::sort, a dense table of candidates and every position's entropy from the direct formula.
std::vector<std::vector<double>> plainCutPoints(BINCaseIterator& cases, int attributes,
                                                std::size_t categories,
                                                const std::string& directory);

}  // namespace mcbinning_bench

#endif
