#include "plain_reference.h"

#include <mccomvor/record.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <stdexcept>

#include "supervised/cut_point_search.h"

namespace mcbinning_bench {
namespace {

constexpr std::size_t kBuffered = 10000;

std::string columnName(const std::string& directory, int column) {
  return directory + "/plain_" + std::to_string(column);
}

void flush(std::vector<std::vector<double>>& buffer, const std::string& directory) {
  for (std::size_t column = 0; column < buffer.size(); ++column) {
    std::FILE* file = std::fopen(columnName(directory, static_cast<int>(column)).c_str(), "ab");
    if (file == nullptr || std::fwrite(buffer[column].data(), sizeof(double), buffer[column].size(),
                                       file) != buffer[column].size()) {
      throw std::runtime_error("no room for a column");
    }
    std::fclose(file);
    buffer[column].clear();
  }
}

std::size_t spool(BINCaseIterator& cases, int columns, const std::string& directory) {
  std::vector<std::vector<double>> buffer(static_cast<std::size_t>(columns));
  std::size_t n = 0;
  while (cases.HasNext()) {
    const MCCommon::Record& record = *cases.Next();
    for (int column = 0; column < columns; ++column) {
      buffer[static_cast<std::size_t>(column)].push_back(record[column]);
    }
    if (++n % kBuffered == 0) {
      flush(buffer, directory);
    }
  }
  flush(buffer, directory);
  return n;
}

std::vector<PlainRow> readRows(std::size_t n, int attribute, int target,
                               const std::string& directory) {
  std::FILE* values = std::fopen(columnName(directory, attribute).c_str(), "rb");
  std::FILE* codes = std::fopen(columnName(directory, target).c_str(), "rb");
  std::vector<PlainRow> rows(n);
  for (PlainRow& row : rows) {
    double code = 0.0;
    if (std::fread(&row.value, sizeof(double), 1, values) != 1 ||
        std::fread(&code, sizeof(double), 1, codes) != 1) {
      throw std::runtime_error("a column ends early");
    }
    row.code = static_cast<int>(code);
    row.weight = 1.0;
  }
  std::fclose(values);
  std::fclose(codes);
  return rows;
}

double entropyOf(const double* counts, std::size_t k) {
  if (counts[0] == 0.0) {
    return 0.0;
  }
  double entropy = 0.0;
  for (std::size_t j = 1; j <= k; ++j) {
    const double p = counts[j] / counts[0];
    if (p != 0.0) {
      entropy -= p * std::log2(p);
    }
  }
  return entropy;
}

class PlainSearch {
 public:
  PlainSearch(const std::vector<PlainRow>& rows, std::size_t k) : k_(k) {
    for (std::size_t row = 0; row < rows.size(); ++row) {
      if (row == 0 || rows[row].value != rows[row - 1].value) {
        values_.push_back(rows[row].value);
        table_.resize(table_.size() + k);
      }
      table_[table_.size() - k + static_cast<std::size_t>(rows[row].code)] += rows[row].weight;
    }
  }

  std::vector<double> Run() {
    std::vector<double> cutPoints;
    std::vector<std::pair<std::size_t, std::size_t>> work{{0, values_.size() - 1}};
    while (!work.empty()) {
      const auto [first, last] = work.back();
      work.pop_back();
      std::size_t position = 0;
      if (first != last && Split(first, last, position)) {
        cutPoints.push_back(values_[position]);
        work.emplace_back(first, position);
        work.emplace_back(position + 1, last);
      }
    }
    std::sort(cutPoints.begin(), cutPoints.end());
    return cutPoints;
  }

 private:
  void Move(std::vector<double>& counts, std::size_t candidate, double sign) const {
    for (std::size_t j = 0; j < k_; ++j) {
      counts[j + 1] += sign * table_[candidate * k_ + j];
      counts[0] += sign * table_[candidate * k_ + j];
    }
  }

  bool IsPure(std::size_t candidate) const {
    std::size_t both = 0;
    for (std::size_t j = 0; j < k_; ++j) {
      const bool here = table_[candidate * k_ + j] != 0.0;
      const bool next = table_[(candidate + 1) * k_ + j] != 0.0;
      both += here && next ? 1 : 0;
      if (here != next || both > 1) {
        return false;
      }
    }
    return both == 1;
  }

  bool Split(std::size_t first, std::size_t last, std::size_t& best) const {
    std::vector<double> total(k_ + 1), left(k_ + 1), right;
    for (std::size_t candidate = first; candidate <= last; ++candidate) {
      Move(total, candidate, 1.0);
    }
    right = total;
    double least = std::numeric_limits<double>::infinity();
    bool carry = false;
    bool pure = false;
    for (std::size_t position = first; position <= last; ++position) {
      Move(left, position, 1.0);
      Move(right, position, -1.0);
      bool examined = !pure;
      if (position < last) {
        pure = IsPure(position);
        examined = !pure || carry;
        carry = !pure;
      }
      const double entropy = examined ? Weighted(left, right) : least;
      if (entropy < least) {
        least = entropy;
        best = position;
      }
    }
    if (least == std::numeric_limits<double>::infinity() || best == last) {
      return false;
    }
    std::fill(left.begin(), left.end(), 0.0);
    right = total;
    for (std::size_t candidate = first; candidate <= best; ++candidate) {
      Move(left, candidate, 1.0);
      Move(right, candidate, -1.0);
    }
    return MCBinning::isSplitWorthwhile(total, left, right, least);
  }

  double Weighted(const std::vector<double>& left, const std::vector<double>& right) const {
    return (left[0] * entropyOf(left.data(), k_) + right[0] * entropyOf(right.data(), k_)) /
           (left[0] + right[0]);
  }

  std::size_t k_;
  std::vector<double> values_;
  std::vector<double> table_;
};

}  // namespace

void sortPlainRows(std::vector<PlainRow>& rows) {
  std::sort(rows.begin(), rows.end(),
            [](const PlainRow& left, const PlainRow& right) { return left.value < right.value; });
}

std::vector<std::vector<double>> plainCutPoints(BINCaseIterator& cases, int attributes,
                                                std::size_t categories,
                                                const std::string& directory) {
  const std::size_t n = spool(cases, attributes + 1, directory);
  std::vector<std::vector<double>> cutPoints;
  for (int attribute = 0; attribute < attributes; ++attribute) {
    std::vector<PlainRow> rows = readRows(n, attribute, attributes, directory);
    sortPlainRows(rows);
    cutPoints.push_back(PlainSearch(rows, categories).Run());
  }
  for (int column = 0; column <= attributes; ++column) {
    std::remove(columnName(directory, column).c_str());
  }
  return cutPoints;
}

}  // namespace mcbinning_bench
