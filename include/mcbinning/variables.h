/// The variables that describe the columns of the data. A host adds them through a `BINVarList`
/// (variable_list.h) and rarely needs more of them than the enumerations below:
///
///     class         level                   kind of cell                   cut
///     BINContVar    continuous              a number                       yes
///     BINCatVar     numeric, string         a category code, from 0        as numbers, its codes
///     BINWeightVar  frequency weight        a number, rounded by its rule  no
#ifndef MCBINNING_VARIABLES_H
#define MCBINNING_VARIABLES_H

#include <mcbinning/export.h>

#include <iosfwd>
#include <memory>
#include <string>

class IBINEncoder;
class IBINUserMissing;

/// One variable. Constructors, copies, Clone, the label's setter and the getters that return a
/// string throw std::bad_alloc when memory runs out; what throws leaves the variable as it was.
class MCBINNING_API IBINVariable {
 public:
  /// What the values mean. A scale variable is continuous; categories are numbers or strings.
  enum MeasureLevel : int {
    UnknownLevel = 0,
    ContinuousLevel = 1,
    NumericCategoricalLevel = 2,
    StringCategoricalLevel = 3,
    FrequencyWeightLevel = 4
  };

  /// What a run does with the variable. The cells of one without a role are never asked for.
  enum VariableRole : int {
    UndefinedRole = 0,
    AttributeRole = 1,
    TargetRole = 2,
    FrequencyWeightRole = 3
  };

  /// Whether a list that holds the variable can be run: a categorical one needs two categories.
  enum VarStatus : int { VarValid = 0, VarSingleCategory = 1, VarNoCategories = 2 };

  /// How a weight becomes a whole number; any other value leaves weights as they are.
  enum BINWRoundingOption : int { TruncateToSmallerInt = 0, RoundToClosestInt = 1 };

  IBINVariable();
  IBINVariable(const IBINVariable& other);
  IBINVariable& operator=(const IBINVariable& other);
  virtual ~IBINVariable();

  /// Level, name and label as given at construction, the label until it is set anew.
  virtual MeasureLevel GetMeasureLevel() const = 0;
  virtual std::string GetVariableName() const = 0;
  virtual std::string GetVariableLabel() const = 0;
  virtual void SetVariableLabel(const std::string& label) = 0;

  /// The stored number of categories; 0 for scale and weight variables.
  virtual int GetNumberOfCategories() const = 0;

  /// Through a list, roles are set by BINVarList::SetVariableRole, which keeps count of the target.
  virtual VariableRole GetVariableRole() const = 0;
  virtual void SetVariableRole(VariableRole role) = 0;

  /// Raises the stored number of categories to the number of codes that the encoder holds, never
  /// lowers it, and returns it. 0 for scale and weight variables.
  virtual int UpdateNumberOfCategories() = 0;

  /// Replaces the user-missing definition; null removes it. True when the definition was accepted:
  /// it is then owned and the one before it deleted. False for a definition of the wrong data type:
  /// nothing changes and the definition stays the caller's. The definition already held is answered
  /// true and nothing changes.
  virtual bool SetUserMissingInfo(IBINUserMissing* userMissing) = 0;

  /// The user-missing definition, null when there is none. It stays owned by the variable.
  virtual IBINUserMissing* GetUserMissingInfo() const = 0;

  /// A deep copy that the caller owns.
  virtual IBINVariable* Clone() const = 0;

  /// The encoder, null for scale variables. It stays owned by the variable.
  virtual IBINEncoder* GetEncoder() = 0;
  virtual const IBINEncoder* GetEncoder() const = 0;

  /// Whether a categorical variable has enough categories; raises the stored number of categories
  /// as UpdateNumberOfCategories does. Always VarValid for scale and weight variables.
  virtual VarStatus GetVarStatus() = 0;

  virtual void Display(std::ostream& os) const = 0;

  /// Each writes the display text of the value and a line end. A level or role outside its
  /// enumeration shows its number, a rounding option outside its enumeration shows nothing.
  static void WriteMeasureLevelText(std::ostream& os, MeasureLevel level);
  static void WriteRoleText(std::ostream& os, VariableRole role);
  static void WriteRoundingOptionText(std::ostream& os, BINWRoundingOption option);
};

/// A categorical variable, numeric or string coded. Its encoder owns the user-missing definition:
/// a numeric one for a numeric encoder, a string one for a string encoder.
class MCBINNING_API BINCatVar : public IBINVariable {
 public:
  /// The encoder is a BINCatNumEncoder for NumericCategoricalLevel, else a BINStringEncoder. The
  /// level and `numberOfCategories` are stored as given; any number is allowed.
  BINCatVar(const std::string& name, const std::string& label, int numberOfCategories,
            MeasureLevel level, VariableRole role);
  BINCatVar(const BINCatVar& other);
  BINCatVar& operator=(const BINCatVar& other);
  ~BINCatVar() override;

  /// Overwrites the stored number of categories.
  void SetNumberOfCategories(int numberOfCategories);

  MeasureLevel GetMeasureLevel() const override;
  std::string GetVariableName() const override;
  std::string GetVariableLabel() const override;
  void SetVariableLabel(const std::string& label) override;
  int GetNumberOfCategories() const override;
  VariableRole GetVariableRole() const override;
  void SetVariableRole(VariableRole role) override;
  int UpdateNumberOfCategories() override;
  bool SetUserMissingInfo(IBINUserMissing* userMissing) override;
  IBINUserMissing* GetUserMissingInfo() const override;
  IBINVariable* Clone() const override;
  IBINEncoder* GetEncoder() override;
  const IBINEncoder* GetEncoder() const override;
  VarStatus GetVarStatus() override;
  void Display(std::ostream& os) const override;

 private:
  std::string name_;
  std::string label_;
  VariableRole role_;
  int numberOfCategories_;
  MeasureLevel measureLevel_;
  std::unique_ptr<IBINEncoder> encoder_;  // never null
};

/// A scale variable, the kind that is binned. Accepts and owns a numeric user-missing definition.
class MCBINNING_API BINContVar : public IBINVariable {
 public:
  BINContVar(const std::string& name, const std::string& label, VariableRole role);
  BINContVar(const BINContVar& other);
  BINContVar& operator=(const BINContVar& other);
  ~BINContVar() override;

  MeasureLevel GetMeasureLevel() const override;
  std::string GetVariableName() const override;
  std::string GetVariableLabel() const override;
  void SetVariableLabel(const std::string& label) override;
  VariableRole GetVariableRole() const override;
  void SetVariableRole(VariableRole role) override;
  int UpdateNumberOfCategories() override;
  bool SetUserMissingInfo(IBINUserMissing* userMissing) override;
  IBINUserMissing* GetUserMissingInfo() const override;
  IBINVariable* Clone() const override;
  VarStatus GetVarStatus() override;
  /// The user-missing definition is not shown.
  void Display(std::ostream& os) const override;

 private:
  int GetNumberOfCategories() const override;
  IBINEncoder* GetEncoder() override;
  const IBINEncoder* GetEncoder() const override;

  std::string name_;
  std::string label_;
  VariableRole role_;
  std::unique_ptr<IBINUserMissing> userMissing_;
};

/// A frequency-weight variable. Accepts and owns a numeric user-missing definition and lends it to
/// its encoder, a BINRoundEncoder. Its role is always FrequencyWeightRole.
class MCBINNING_API BINWeightVar : public IBINVariable {
 public:
  BINWeightVar(const std::string& name, const std::string& label, BINWRoundingOption option);
  BINWeightVar(const BINWeightVar& other);

  /// Copies name, label and user-missing definition; the encoder, and with it the rounding option,
  /// stays this variable's own.
  BINWeightVar& operator=(const BINWeightVar& other);
  ~BINWeightVar() override;

  MeasureLevel GetMeasureLevel() const override;
  std::string GetVariableName() const override;
  std::string GetVariableLabel() const override;
  void SetVariableLabel(const std::string& label) override;
  int GetNumberOfCategories() const override;
  VariableRole GetVariableRole() const override;
  /// Ignored.
  void SetVariableRole(VariableRole role) override;
  int UpdateNumberOfCategories() override;
  bool SetUserMissingInfo(IBINUserMissing* userMissing) override;
  IBINUserMissing* GetUserMissingInfo() const override;
  IBINVariable* Clone() const override;
  IBINEncoder* GetEncoder() override;
  const IBINEncoder* GetEncoder() const override;
  VarStatus GetVarStatus() override;
  /// A user-missing definition is shown twice: by the encoder that borrows it and by the variable.
  void Display(std::ostream& os) const override;

 private:
  void LendUserMissing();

  std::string name_;
  std::string label_;
  std::unique_ptr<IBINEncoder> encoder_;  // never null
  std::unique_ptr<IBINUserMissing> userMissing_;
};

#endif
