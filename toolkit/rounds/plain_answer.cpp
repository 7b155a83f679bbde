#include "toolkit/rounds/plain_answer.h"

#include <span>
#include <stdexcept>

#include "toolkit/fit/status_text.h"

namespace mcbin {
namespace {

void append(const std::vector<double>& weights, std::vector<double>& sums) {
  sums.insert(sums.end(), weights.begin(), weights.end());
}

[[noreturn]] void failUnfit() {
  throw std::runtime_error("the answer of the engine does not fit the question");
}

/// Takes numbers off the front of others.
class Taker {
 public:
  explicit Taker(const std::vector<double>& numbers) : rest_(numbers) {}

  std::vector<double> Take(std::size_t count) {
    if (rest_.size() < count) failUnfit();
    const std::span<const double> taken = rest_.first(count);
    rest_ = rest_.subspan(count);
    return {taken.begin(), taken.end()};
  }
  bool IsEmpty() const { return rest_.empty(); }

 private:
  std::span<const double> rest_;
};

}  // namespace

PlainAnswer plainAnswer(const BINRoundAnswer& answer) {
  PlainAnswer plain;
  plain.sums = {answer.cases, answer.missingTargetWeight};
  append(answer.classWeights, plain.sums);
  for (const BINAttributeAnswer& item : answer.attributes) {
    append(item.cellWeights, plain.sums);
    append(item.missingWeights, plain.sums);
    append(item.userMissingWeights, plain.sums);
    for (const BINValueWeight& value : item.values) {
      plain.items.push_back(static_cast<int>(plain.minima.size()));
      plain.values.push_back(value.value);
      plain.codes.push_back(value.code);
      plain.weights.push_back(value.weight);
    }
    plain.minima.push_back(item.minimum);
    plain.maxima.push_back(item.maximum);
  }
  return plain;
}

BINRoundAnswer answerOf(const PlainAnswer& plain, const BINRoundQuestion& question,
                        std::size_t categories) {
  const std::size_t items = question.attributes.size();
  const std::size_t values = plain.items.size();
  if (plain.minima.size() != items || plain.maxima.size() != items ||
      plain.values.size() != values || plain.codes.size() != values ||
      plain.weights.size() != values) {
    failUnfit();
  }
  Taker sums(plain.sums);
  BINRoundAnswer answer;
  answer.cases = sums.Take(1).front();
  answer.missingTargetWeight = sums.Take(1).front();
  answer.classWeights = sums.Take(categories);
  for (std::size_t i = 0; i < items; ++i) {
    BINAttributeAnswer item;
    item.cellWeights = sums.Take((2 * question.attributes[i].borders.size() + 1) * categories);
    item.missingWeights = sums.Take(categories);
    item.userMissingWeights = sums.Take(categories);
    item.minimum = plain.minima[i];
    item.maximum = plain.maxima[i];
    answer.attributes.push_back(std::move(item));
  }
  if (!sums.IsEmpty()) failUnfit();
  for (std::size_t v = 0; v < values; ++v) {
    answer.attributes.at(static_cast<std::size_t>(plain.items[v]))
        .values.push_back({plain.values[v], plain.codes[v], plain.weights[v]});
  }
  return answer;
}

BINNumericUserMissing userMissingOf(const MissingRules& rules) {
  BINNumericUserMissing userMissing;
  for (const double value : rules.values) userMissing.AddValue(value, "");
  if (rules.range) {
    userMissing.SetInterval(BINNumericInterval(rules.range->first, rules.range->second));
  }
  return userMissing;
}

BINRoundAnswer countCases(const BINRoundQuestion& question, std::size_t categories,
                          const std::vector<MissingRules>& rules, BINRoundCases cases) {
  std::vector<BINNumericUserMissing> userMissing;
  for (const MissingRules& rule : rules) userMissing.push_back(userMissingOf(rule));
  for (const BINNumericUserMissing& each : userMissing) cases.userMissing.push_back(&each);
  BINRoundCounter counter;
  BINRoundAnswer answer;
  throwIfRunFailed(counter.Prepare(question, static_cast<int>(categories)), 0);
  throwIfRunFailed(counter.Count(cases, answer), 0);
  return answer;
}

}  // namespace mcbin
