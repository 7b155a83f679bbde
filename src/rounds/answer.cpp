#include "rounds/answer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <tuple>
#include <utility>

namespace MCBinning {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

bool areWhole(const std::vector<double>& weights) {
  return std::all_of(weights.begin(), weights.end(), isWholeWeight);
}

bool isBefore(const BINValueWeight& left, const BINValueWeight& right) {
  return std::tie(left.value, left.code) < std::tie(right.value, right.code);
}

/// Of ascending, disjoint ranges.
bool areInside(const std::vector<BINValueWeight>& values,
               const std::vector<BINValueRange>& ranges) {
  auto range = ranges.begin();
  return std::all_of(values.begin(), values.end(), [&](const BINValueWeight& entry) {
    while (range != ranges.end() && range->high <= entry.value) {
      ++range;
    }
    return range != ranges.end() && range->low < entry.value;
  });
}

/// Whether there is any number in the stretch before a border, or after the last one.
bool hasRoom(const std::vector<double>& borders, std::size_t border) {
  if (borders.empty()) {
    return true;
  }
  if (border == 0) {
    return borders.front() > -kInfinity;
  }
  return border == borders.size()
             ? borders.back() < kInfinity
             : std::nextafter(borders[border - 1], kInfinity) < borders[border];
}

bool carriesWeight(const std::vector<double>& cellWeights, std::size_t cell,
                   std::size_t nCategories) {
  const auto first = cellWeights.begin() + static_cast<std::ptrdiff_t>(cell * nCategories);
  return std::any_of(first, first + static_cast<std::ptrdiff_t>(nCategories),
                     [](double weight) { return weight > 0.0; });
}

}  // namespace

bool isWholeWeight(double weight) {
  return weight >= 0.0 && weight < 0x1p53 && weight == std::floor(weight);
}

void mergeValueWeights(std::vector<BINValueWeight>& weights) {
  for (BINValueWeight& entry : weights) {
    entry.value += 0.0;
  }
  std::sort(weights.begin(), weights.end(), isBefore);
  std::size_t kept = 0;
  for (const BINValueWeight& entry : weights) {
    if (kept > 0 && !isBefore(weights[kept - 1], entry)) {
      weights[kept - 1].weight += entry.weight;
    } else {
      weights[kept++] = entry;
    }
  }
  weights.resize(kept);
}

std::optional<AttributeAnswer> AttributeAnswer::Read(const BINAttributeQuestion& question,
                                                     const BINAttributeAnswer& answer,
                                                     std::size_t nCategories) {
  const std::size_t nCells = 2 * question.borders.size() + 1;
  const auto isSound = [&](const BINValueWeight& entry) {
    return entry.value == entry.value && entry.code >= 0 &&
           static_cast<std::size_t>(entry.code) < nCategories && entry.weight > 0.0 &&
           isWholeWeight(entry.weight);
  };
  if (answer.cellWeights.size() != nCells * nCategories || !areWhole(answer.cellWeights) ||
      answer.missingWeights.size() != nCategories || !areWhole(answer.missingWeights) ||
      answer.userMissingWeights.size() != nCategories || !areWhole(answer.userMissingWeights) ||
      !std::all_of(answer.values.begin(), answer.values.end(), isSound) ||
      !isWholeWeight(answer.distinctValues)) {
    return std::nullopt;
  }
  for (std::size_t border = 0; border <= question.borders.size(); ++border) {
    if (!hasRoom(question.borders, border) &&
        carriesWeight(answer.cellWeights, 2 * border, nCategories)) {
      return std::nullopt;
    }
  }
  AttributeAnswer read;
  read.question_ = &question;
  read.answer_ = &answer;
  read.nCategories_ = nCategories;
  read.values_ = answer.values;
  mergeValueWeights(read.values_);
  if (!areInside(read.values_, question.ranges)) {
    return std::nullopt;
  }
  return read;
}

bool AttributeAnswer::AddsUpTo(const std::vector<double>& classWeights) const {
  std::vector<double> sums(nCategories_, 0.0);
  for (const auto* weights :
       {&answer_->cellWeights, &answer_->missingWeights, &answer_->userMissingWeights}) {
    for (std::size_t i = 0; i < weights->size(); ++i) {
      sums[i % nCategories_] += (*weights)[i];
    }
  }
  return sums == classWeights;
}

void AttributeAnswer::AppendCell(std::size_t cell, PieceTable& pieces) const {
  const std::vector<double>& borders = question_->borders;
  std::vector<ClassWeight> weights;
  for (std::size_t code = 0; code < nCategories_; ++code) {
    if (const double weight = answer_->cellWeights[cell * nCategories_ + code]; weight > 0.0) {
      weights.push_back({static_cast<std::uint32_t>(code), weight});
    }
  }
  pieces.Append(borders[(cell - 1) / 2], borders[cell / 2], weights);
}

PieceTable AttributeAnswer::AllPieces() const {
  PieceTable pieces;
  for (std::size_t cell = 1; cell + 1 < 2 * question_->borders.size() + 1; ++cell) {
    AppendCell(cell, pieces);
  }
  return pieces;
}

/// The cell of a value that is a border.
std::size_t AttributeAnswer::CellOf(double border) const {
  const std::vector<double>& borders = question_->borders;
  const auto found = std::lower_bound(borders.begin(), borders.end(), border);
  return 2 * static_cast<std::size_t>(found - borders.begin()) + 1;
}

void AttributeAnswer::AppendCells(const Piece& stretch, PieceTable& pieces) const {
  const std::size_t end = CellOf(stretch.high);
  for (std::size_t cell = CellOf(stretch.low) + 1; cell < end; ++cell) {
    AppendCell(cell, pieces);
  }
}

void AttributeAnswer::AppendValues(const Piece& stretch, PieceTable& pieces) const {
  auto entry =
      std::upper_bound(values_.begin(), values_.end(), stretch.low,
                       [](double low, const BINValueWeight& value) { return low < value.value; });
  std::vector<ClassWeight> weights;
  while (entry != values_.end() && entry->value < stretch.high) {
    const double value = entry->value;
    weights.clear();
    for (; entry != values_.end() && entry->value == value; ++entry) {
      weights.push_back({static_cast<std::uint32_t>(entry->code), entry->weight});
    }
    pieces.Append(value, value, weights);
  }
}

std::optional<PieceTable> AttributeAnswer::Fulfil(const PieceTable& pieces) const {
  PieceTable fulfilled;
  for (std::size_t i = 0; i < pieces.Size(); ++i) {
    const Piece& piece = pieces[i];
    if (piece.wish == Piece::Wish::kNothing) {
      fulfilled.AppendFrom(pieces, i);
      continue;
    }
    PieceTable inside;
    if (piece.wish == Piece::Wish::kValues) {
      AppendValues(piece, inside);
    } else {
      AppendCells(piece, inside);
    }
    if (inside.Count(nCategories_) != pieces.Part(i, i + 1).Count(nCategories_)) {
      return std::nullopt;
    }
    for (std::size_t k = 0; k < inside.Size(); ++k) {
      fulfilled.AppendFrom(inside, k);
    }
  }
  return fulfilled;
}

}  // namespace MCBinning
