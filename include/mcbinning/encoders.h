/// Encoders: from the raw values of a variable to category codes and case weights.
///
/// A host that reads raw categories encodes each with its variable's encoder and puts the code into
/// the record's cell (`EncodeConst` when the list knows all categories, `Encode` to meet them on
/// the way). Weights are put in raw: the run encodes them itself.
///
///     value       "no"  "yes"  "no"  user-missing
///     Encode        0      1     0           -1.0
#ifndef MCBINNING_ENCODERS_H
#define MCBINNING_ENCODERS_H

#include <mcbinning/export.h>
#include <mcbinning/user_missing.h>
#include <mcbinning/variables.h>

#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <vector>

/// What the encoders of all kinds of variables have in common. The encoding operations themselves
/// belong to the classes below. Constructors, Clone, the operations that add a code or set labels
/// and the getters that return a string throw std::bad_alloc when memory runs out and leave the
/// encoder as it was.
class MCBINNING_API IBINEncoder {
 public:
  /// The values equal the measure levels of the variables that own the encoders.
  enum EncoderType : int { CatNumEncoderType = 2, StringEncoderType = 3, RoundEncoderType = 4 };

  IBINEncoder();
  IBINEncoder(const IBINEncoder& other);
  IBINEncoder& operator=(const IBINEncoder& other);
  virtual ~IBINEncoder();

  virtual EncoderType GetEncoderType() = 0;

  /// The number of codes given so far; 0 for a weight encoder.
  virtual int GetNumberOfCategories() const = 0;

  /// Replaces all labels; label c belongs to code c. The number of labels is not checked. A weight
  /// encoder has no labels and ignores both operations.
  virtual void SetValueLabels(const std::vector<std::string>& labels) = 0;

  /// First lengthens the labels with empty ones to the number of categories, then sets the label of
  /// `code` when that is a code given so far.
  virtual void SetValueLabel(int code, const std::string& label) = 0;

  /// The labels, null for a weight encoder. They live as long as the encoder.
  virtual const std::vector<std::string>* GetValueLabels() const = 0;

  /// Replaces the user-missing definition; null removes it. False for a definition of the wrong
  /// data type: nothing changes and the definition stays the caller's. A categorical encoder owns
  /// the definition it accepts, a weight encoder only borrows it. The definition already held is
  /// answered true and nothing changes.
  virtual bool SetUserMissingInfo(IBINUserMissing* userMissing) = 0;

  /// The user-missing definition, null when there is none. It stays with its owner.
  virtual IBINUserMissing* GetUserMissingInfo() const = 0;

  /// A copy that the caller owns.
  virtual IBINEncoder* Clone() const = 0;

  virtual void Display(std::ostream& os) const = 0;
};

/// Codes for numeric categories, from 0 in the order in which the values are first met. 0.0 and
/// -0.0 are one value; all NaN values are one value.
class MCBINNING_API BINCatNumEncoder : public IBINEncoder {
 public:
  /// An encoder without codes. `expectedCategories` only reserves room; any number is allowed.
  explicit BINCatNumEncoder(int expectedCategories);

  /// Encodes each value in order.
  explicit BINCatNumEncoder(const std::vector<double>& values);
  BINCatNumEncoder(const BINCatNumEncoder& other);
  BINCatNumEncoder& operator=(const BINCatNumEncoder& other) = delete;
  ~BINCatNumEncoder() override;

  /// The code of `value`, the next free one for a new value; -1.0 for a value that is
  /// system-missing or user-missing.
  double Encode(double value);

  /// The code of `value`; -1.0 for a value that is user-missing or unknown. Adds nothing.
  double EncodeConst(double value) const;

  /// The value of `code`, the system-missing value when there is no such code.
  double Decode(int code) const;

  EncoderType GetEncoderType() override;
  int GetNumberOfCategories() const override;
  void SetValueLabels(const std::vector<std::string>& labels) override;
  void SetValueLabel(int code, const std::string& label) override;
  const std::vector<std::string>* GetValueLabels() const override;
  bool SetUserMissingInfo(IBINUserMissing* userMissing) override;
  IBINUserMissing* GetUserMissingInfo() const override;
  IBINEncoder* Clone() const override;
  void Display(std::ostream& os) const override;

 private:
  /// Numbers in ascending order, then NaN.
  struct NaNLast {
    bool operator()(double left, double right) const;
  };

  std::map<double, int, NaNLast> codes_;
  std::vector<double> values_;
  std::vector<std::string> valueLabels_;
  int lastCode_ = -1;
  std::unique_ptr<IBINUserMissing> userMissing_;
};

/// Codes for string categories, from 0 in the order in which the values are first met. Strings are
/// compared byte for byte; an empty string is a value like any other.
class MCBINNING_API BINStringEncoder : public IBINEncoder {
 public:
  /// An encoder without codes. `expectedCategories` only reserves room; any number is allowed.
  explicit BINStringEncoder(int expectedCategories);

  /// Encodes each value in order.
  explicit BINStringEncoder(const std::vector<std::string>& values);
  BINStringEncoder(const BINStringEncoder& other);
  BINStringEncoder& operator=(const BINStringEncoder& other) = delete;
  ~BINStringEncoder() override;

  /// The code of `value`, the next free one for a new value; -1.0 for a user-missing value.
  double Encode(const std::string& value);

  /// The code of `value`; -1.0 for a value that is user-missing or unknown. Adds nothing.
  double EncodeConst(const std::string& value) const;

  /// The string of `code`, empty when there is no such code.
  std::string Decode(int code);

  EncoderType GetEncoderType() override;
  int GetNumberOfCategories() const override;
  void SetValueLabels(const std::vector<std::string>& labels) override;
  void SetValueLabel(int code, const std::string& label) override;
  const std::vector<std::string>* GetValueLabels() const override;
  bool SetUserMissingInfo(IBINUserMissing* userMissing) override;
  IBINUserMissing* GetUserMissingInfo() const override;
  IBINEncoder* Clone() const override;
  void Display(std::ostream& os) const override;

 private:
  void CreateLinks();

  std::map<std::string, int> codes_;
  std::vector<const std::string*> links_;  // into the keys of codes_
  std::vector<std::string> valueLabels_;
  int lastCode_ = -1;
  std::unique_ptr<IBINUserMissing> userMissing_;
};

/// Turns raw weights into case counts.
class MCBINNING_API BINRoundEncoder : public IBINEncoder {
 public:
  /// Truncates.
  BINRoundEncoder();
  explicit BINRoundEncoder(IBINVariable::BINWRoundingOption option);
  BINRoundEncoder(const BINRoundEncoder& other);
  BINRoundEncoder& operator=(const BINRoundEncoder& other);
  ~BINRoundEncoder() override;

  /// `weight` rounded by the option (a value outside the enumeration rounds nothing). The
  /// system-missing value when `weight` is system-missing, user-missing, NaN or infinite, or when
  /// the result is 0 or less.
  double Encode(double weight) const;

  EncoderType GetEncoderType() override;
  int GetNumberOfCategories() const override;
  void SetValueLabels(const std::vector<std::string>& labels) override;
  void SetValueLabel(int code, const std::string& label) override;
  const std::vector<std::string>* GetValueLabels() const override;
  /// Borrows the definition, which must outlive the encoder or be replaced before it dies.
  bool SetUserMissingInfo(IBINUserMissing* userMissing) override;
  IBINUserMissing* GetUserMissingInfo() const override;
  /// The copy borrows the same definition.
  IBINEncoder* Clone() const override;
  void Display(std::ostream& os) const override;

 private:
  IBINVariable::BINWRoundingOption option_ = IBINVariable::TruncateToSmallerInt;
  IBINUserMissing* userMissing_ = nullptr;
};

#endif
