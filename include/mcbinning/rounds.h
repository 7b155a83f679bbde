/// The two algorithms over cases that are not handed over: the host's engine, whatever it is,
/// answers questions about them, round by round, and the records are those of the ordinary run.
///
/// A round is one question and its answer, which the engine finds in one pass over its cases: any
/// part of them answers for itself (BINRoundCounter), and the answers of the parts are added up in
/// any order. Everything that is added is a whole number, so the sum is exact.
///
/// What counts as a case, a value and a weight is what the ordinary run makes of them, with these
/// differences: weights are whole numbers, a NaN is missing, and -0.0 is 0.0 (a record may show the
/// one where the ordinary run shows the other).
#ifndef MCBINNING_ROUNDS_H
#define MCBINNING_ROUNDS_H

#include <mcbinning/export.h>
#include <mcbinning/outputs.h>
#include <mcbinning/settings.h>
#include <mcbinning/status.h>

#include <cstddef>
#include <limits>
#include <memory>
#include <vector>

class BINNumericUserMissing;

namespace MCBinning {
class RoundsRun;
class QuestionCells;
}  // namespace MCBinning

/// The values strictly between two numbers.
struct BINValueRange {
  double low = 0.0;
  double high = 0.0;
};

/// What a round asks about one attribute.
struct BINAttributeQuestion {
  /// Its place in the plan's attributes.
  std::size_t attribute = 0;

  /// Strictly ascending; may hold infinities, may be empty. n borders make 2 n + 1 cells, in
  /// ascending order: the values before the first border, the first border itself, the values
  /// between it and the second, and so on.
  std::vector<double> borders;

  /// Whose values to hand over. They ascend and have no value in common.
  std::vector<BINValueRange> ranges;

  /// Whether to count the distinct values of the attribute.
  bool countDistinct = false;
};

/// What a round asks, one item an attribute.
struct BINRoundQuestion {
  std::vector<BINAttributeQuestion> attributes;
};

/// The weight of one class at one value.
struct BINValueWeight {
  double value = 0.0;
  int code = 0;
  double weight = 0.0;
};

/// What is known of an attribute's cases. "Class by class" is one weight for each category of the
/// plan, in code order; cases without a target category are in none of the weights here.
struct BINAttributeAnswer {
  /// Cell by cell, in each class by class.
  std::vector<double> cellWeights;

  /// Of the cases whose value is missing, and of those whose value is declared missing; class by
  /// class.
  std::vector<double> missingWeights;
  std::vector<double> userMissingWeights;

  /// The least and the greatest value; these infinities when there is none.
  double minimum = std::numeric_limits<double>::infinity();
  double maximum = -std::numeric_limits<double>::infinity();

  /// The values in the ranges, in any order. A value and code may occur more than once.
  std::vector<BINValueWeight> values;

  /// How many distinct values there are, when asked. It cannot be added up: the engine fills it in
  /// afterwards.
  double distinctValues = 0.0;
};

/// The answer to a question, or what one part of the cases adds to it.
struct BINRoundAnswer {
  /// The number of cases with a weight, their weight class by class, and the weight of those
  /// without a target category.
  double cases = 0.0;
  std::vector<double> classWeights;
  double missingTargetWeight = 0.0;

  /// Item by item of the question.
  std::vector<BINAttributeAnswer> attributes;
};

/// An attribute to bin.
struct BINRoundsAttribute {
  /// What its record and its statuses call it; the host's index of a variable.
  int index = 0;

  /// Values that cut the attribute into parts of similar weight, such as the quantiles of a small
  /// sample, in any order. They decide about the number of rounds, not about the result, and may
  /// be left out. Some thousands are a good number for two classes, less for more.
  std::vector<double> firstBorders;
};

/// What to bin, and how questions are asked.
struct BINRoundsPlan {
  std::vector<BINRoundsAttribute> attributes;

  /// The host's index of the target, and how many categories it has, 1 to 256. The equal-frequency
  /// algorithm reads neither: it has one class, to which every case belongs.
  int target = -1;
  int categories = 1;

  /// Without it no record has a number of distinct values (it is 0), and no attribute is
  /// pre-binned, whatever the threshold in the settings.
  bool countDistinct = true;

  /// What travels in one round. Where the best split of an interval may lie is cut by about so many
  /// borders a round, and the values there are asked for once they are of at most about so many
  /// cases.
  int mostBorders = 32768;
  double mostFetched = 10000.0;
};

/// How far a run in rounds is.
struct BINRoundsProgress {
  unsigned int rounds = 0;         ///< Answered so far.
  std::size_t attributesLeft = 0;  ///< Without a record.
  double weightLeft = 0.0;         ///< Asked about in this round, over all attributes.
  double weightsReceived = 0.0;    ///< Cell weights in all answers.
  double valuesReceived = 0.0;     ///< Value weights in all answers.
};

/// A run of either algorithm as a list of questions:
///
///     BINRounds rounds;
///     MCBinning::MCStatus status = rounds.Start(settings, plan);
///     while (!status.IsError() && !rounds.IsFinished()) {
///       status = rounds.Answer(myEngine(rounds.GetQuestion()));
///     }
///
/// No operation throws. What is handed out lives as long as the object. An object can be started
/// again; one object serves one thread at a time.
class MCBINNING_API BINRounds final {
 public:
  BINRounds();
  BINRounds(const BINRounds&) = delete;
  BINRounds& operator=(const BINRounds&) = delete;
  ~BINRounds();

  /// Begins a run and drops what was there. Of the settings it reads what is about bins. OK or an
  /// error: 3 no memory, 120008 no attribute, an index that is negative, twice there or the
  /// target's, a border that is NaN, or limits that are not positive, 120009 number of bins not
  /// set, 120010 categories below 1 or above 256.
  MCBinning::MCStatus Start(const BINSettings& settings, const BINRoundsPlan& plan);
  MCBinning::MCStatus Start(const EFBINSettings& settings, const BINRoundsPlan& plan);

  /// Whether every attribute has its record.
  bool IsFinished() const;

  /// The question to answer next; no attribute in it when there is none.
  const BINRoundQuestion& GetQuestion() const;

  /// Takes the answer to the question. OK, warning 120018 when this was the last one and a record
  /// is not OK, or an error, which ends the run: 3 no memory, 120004 no case has a weight, 120022
  /// the answer contradicts an earlier one (the data changed), 120023 the weights add up to 2^53 or
  /// more, 120024 the answer does not fit the question (datum 0 of these three: the index of the
  /// attribute, -1 for the cases as a whole), 120008 there is no question.
  MCBinning::MCStatus Answer(const BINRoundAnswer& answer);

  /// The records, in the order of the plan, once the run is finished; none before. Of the two, the
  /// one that was not started stays empty.
  const BINOutput& GetOutput() const;
  const EFBINOutput& GetEFOutput() const;

  BINRoundsProgress GetProgress() const;

 private:
  void Clear();

  BINRoundQuestion question_;
  BINOutput output_;
  EFBINOutput efOutput_;
  std::unique_ptr<MCBinning::RoundsRun> run_;
};

/// Cases in memory, column by column; everything is borrowed.
struct BINRoundCases {
  std::size_t size = 0;

  /// The code of each case's target category, negative when it has none; null: all 0.
  const int* codes = nullptr;

  /// The weight of each case as its encoder gives it, a whole number; a case of another than a
  /// positive, finite one is dropped. Null: all 1.
  const double* weights = nullptr;

  /// The values of each attribute of the plan; null for one that is not asked about. NaN and the
  /// host's system-missing value are missing.
  std::vector<const double*> columns;

  /// The declared missing values of each attribute, null for none. May be shorter than the plan.
  std::vector<const BINNumericUserMissing*> userMissing;
};

/// Answers one question about cases in memory. No operation throws; Count and Add may be called by
/// several threads at a time, each with an answer of its own.
class MCBINNING_API BINRoundCounter final {
 public:
  BINRoundCounter();
  BINRoundCounter(const BINRoundCounter&) = delete;
  BINRoundCounter& operator=(const BINRoundCounter&) = delete;
  ~BINRoundCounter();

  /// Takes the question in. `categories` is the plan's, 1 for the equal-frequency algorithm. OK or
  /// an error: 3 no memory, 120010 categories below 1 or above 256, 120024 borders or ranges that
  /// do not ascend.
  MCBinning::MCStatus Prepare(const BINRoundQuestion& question, int categories);

  /// Adds some cases to `answer`, which is new or has been used with this question only. OK or an
  /// error, after which `answer` is of no use: 3 no memory, 120012 a code that is no category's,
  /// 120025 a weight that is no whole number, 120024 the column of an attribute is missing or
  /// nothing was prepared.
  MCBinning::MCStatus Count(const BINRoundCases& cases, BINRoundAnswer& answer) const;

  /// Adds `part` to `answer`; both answer one question, `answer` may be new. OK or an error, after
  /// which `answer` is of no use: 3 no memory, 120024 they do not fit each other. Numbers of
  /// distinct values are left alone.
  static MCBinning::MCStatus Add(const BINRoundAnswer& part, BINRoundAnswer& answer);

 private:
  std::unique_ptr<MCBinning::QuestionCells> cells_;
};

#endif
