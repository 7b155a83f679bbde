/// User-missing definitions: values and one interval that a variable treats as missing.
///
/// A scale variable compares its cells with them in the pass over the cases, a weight variable when
/// its encoder rounds the cell. The cells of a categorical variable are codes already: there the
/// definition speaks when the host encodes a value, which then gives -1.0.
#ifndef MCBINNING_USER_MISSING_H
#define MCBINNING_USER_MISSING_H

#include <mcbinning/export.h>

#include <iosfwd>
#include <string>
#include <vector>

/// A user-missing definition of one variable. Whoever accepts a definition (a variable or the
/// encoder of a categorical variable) owns it from then on and deletes it; a definition that is
/// refused stays the caller's. Definitions and intervals that run out of memory while they are
/// copied or changed throw std::bad_alloc and stay as they were.
class MCBINNING_API IBINUserMissing {
 public:
  /// A numeric definition is for scale, weight and numeric categorical variables.
  enum DataType : int { NumericData = 0, StringData = 1 };

  IBINUserMissing();
  IBINUserMissing(const IBINUserMissing& other);
  IBINUserMissing& operator=(const IBINUserMissing& other);
  virtual ~IBINUserMissing();

  virtual DataType GetDataType() = 0;

  /// How many single values are missing, and whether an interval is, too.
  virtual int GetNDiscreteValues() const = 0;
  virtual bool HasInterval() const = 0;

  /// A copy that the caller owns.
  virtual IBINUserMissing* Clone() const = 0;

  /// Whether `other`, which may be null, is of the same kind and declares the same values in the
  /// same order and the same interval. Labels do not count; a NaN among the values equals nothing.
  virtual bool IsEqualTo(const IBINUserMissing* other) const = 0;

  virtual void Display(std::ostream& os) const = 0;
};

/// A closed interval of doubles: both ends belong to it. The left end -DBL_MAX stands for minus
/// infinity and the right end DBL_MAX for plus infinity.
class MCBINNING_API BINNumericInterval {
 public:
  /// The interval [0, 0].
  BINNumericInterval();

  /// The ends are stored as given, also when they are inverted or NaN.
  BINNumericInterval(double left, double right);

  /// From minus infinity to `end` when `upTo` is true, else from `end` to plus infinity.
  BINNumericInterval(double end, bool upTo);

  double GetLeftEnd() const;
  double GetRightEnd() const;

  /// Stores the end in any case. True when the left end is now at or below the right end; always
  /// false when either is NaN.
  bool SetLeftEnd(double left);
  bool SetRightEnd(double right);

  /// True when the left end is greater than the right end.
  bool IsEmpty() const;

  /// Whether the end is exactly the stand-in for infinity.
  bool IsLeftEndInfinite() const;
  bool IsRightEndInfinite() const;

  /// A NaN is in no interval.
  bool Contains(double value) const;

  /// Both ends equal as doubles.
  bool operator==(const BINNumericInterval& other) const;

  void Display(std::ostream& os) const;

 private:
  double leftEnd_ = 0.0;
  double rightEnd_ = 0.0;
};

/// An interval of strings in the order of their bytes, each end in or out by its own flag.
class MCBINNING_API BINStringInterval {
 public:
  /// Two empty strings, neither end included: contains nothing.
  BINStringInterval();

  /// The ends are stored as given, also when they are inverted.
  BINStringInterval(const std::string& left, bool leftIncluded, const std::string& right,
                    bool rightIncluded);
  BINStringInterval(const BINStringInterval& other);
  BINStringInterval(BINStringInterval&& other) noexcept;
  BINStringInterval& operator=(const BINStringInterval& other);
  BINStringInterval& operator=(BINStringInterval&& other) noexcept;
  ~BINStringInterval();

  const std::string& GetLeftEnd() const;
  const std::string& GetRightEnd() const;
  bool IsLeftEndIncluded() const;
  bool IsRightEndIncluded() const;

  /// Stores the end and its flag in any case. True when the interval is not empty afterwards.
  bool SetLeftEnd(const std::string& left, bool included);
  bool SetRightEnd(const std::string& right, bool included);

  /// True when the right end is below the left end, and for equal ends unless both are included.
  bool IsEmpty() const;

  /// Whether `value` lies between the ends, or at one that is included.
  bool Contains(const std::string& value) const;

  /// Ends and flags are the same.
  bool operator==(const BINStringInterval& other) const;

  void Display(std::ostream& os) const;

 private:
  std::string leftEnd_;
  bool leftEndIncluded_ = false;
  std::string rightEnd_;
  bool rightEndIncluded_ = false;
};

/// Discrete numeric values, each with a label, and at most one closed interval.
class MCBINNING_API BINNumericUserMissing : public IBINUserMissing {
 public:
  BINNumericUserMissing();
  BINNumericUserMissing(const BINNumericUserMissing& other);
  BINNumericUserMissing& operator=(const BINNumericUserMissing& other);
  ~BINNumericUserMissing() override;

  /// Appends a value; a value may be given more than once.
  void AddValue(double value, const std::string& label);

  /// Replaces an interval set before.
  void SetInterval(const BINNumericInterval& interval);

  /// The interval, null when there is none. It lives as long as the definition.
  const BINNumericInterval* GetInterval() const;

  /// The values and, parallel to them, their labels.
  const std::vector<double>& GetDiscreteValues() const;
  const std::vector<std::string>& GetValueLabels() const;

  /// Whether `value` equals a discrete value or lies in the interval. A NaN is never contained.
  bool Contains(double value) const;

  DataType GetDataType() override;
  int GetNDiscreteValues() const override;
  bool HasInterval() const override;
  IBINUserMissing* Clone() const override;
  bool IsEqualTo(const IBINUserMissing* other) const override;
  void Display(std::ostream& os) const override;

 private:
  std::vector<double> discreteValues_;
  std::vector<std::string> valueLabels_;
  BINNumericInterval interval_;
  bool hasInterval_ = false;
};

/// Discrete string values, each with a label.
class MCBINNING_API BINStringUserMissing : public IBINUserMissing {
 public:
  BINStringUserMissing();
  BINStringUserMissing(const BINStringUserMissing& other);
  BINStringUserMissing& operator=(const BINStringUserMissing& other);
  ~BINStringUserMissing() override;

  /// Appends a value; a value may be given more than once.
  void AddValue(const std::string& value, const std::string& label);

  /// The values and, parallel to them, their labels.
  const std::vector<std::string>& GetDiscreteValues() const;
  const std::vector<std::string>& GetValueLabels() const;

  /// Whether `value` equals a discrete value byte for byte.
  bool Contains(const std::string& value) const;

  DataType GetDataType() override;
  int GetNDiscreteValues() const override;
  /// Always false.
  bool HasInterval() const override;
  IBINUserMissing* Clone() const override;
  bool IsEqualTo(const IBINUserMissing* other) const override;
  void Display(std::ostream& os) const override;

 private:
  std::vector<std::string> discreteValues_;
  std::vector<std::string> valueLabels_;
};

#endif
