/// The list of variables that describes a data set.
#ifndef MCBINNING_VARIABLE_LIST_H
#define MCBINNING_VARIABLE_LIST_H

#include <mcbinning/export.h>
#include <mcbinning/variables.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

/// An ordered list of variables with at most one target and at most one frequency weight. The index
/// of a variable is the cell of its values in the host's case records; indexes count from 0 and
/// shift when a variable is removed. The list owns its variables: pointers that it hands out die
/// with the variable or the list. Names are compared byte for byte.
///
/// Adding operations return the index of the new variable, or -1 when nothing was added; the other
/// mutating operations return whether they did what was asked. A call that fails, also one that
/// runs out of memory, leaves the list as it was. Everything else that needs memory (constructors,
/// copies, queries that compare or return names or fill vectors) throws std::bad_alloc when there
/// is none; an assignment that throws changes nothing, a query leaves its arguments as they were.
///
/// Once UpdateNumbersOfCategories was called, threads may make algorithms from one list at the same
/// time, as long as nobody changes it.
class MCBINNING_API BINVarList {
 public:
  using MeasureLevel = IBINVariable::MeasureLevel;
  using VariableRole = IBINVariable::VariableRole;
  using BINWRoundingOption = IBINVariable::BINWRoundingOption;

  /// An empty list.
  BINVarList();
  BINVarList(const BINVarList& other);
  BINVarList& operator=(const BINVarList& other);
  virtual ~BINVarList();

  /// Add a categorical variable whose known values get the codes 0, 1, ... in the order given. The
  /// number of categories is the number of values, duplicates included. Refused: fewer than two
  /// values, an empty name, a name already in the list. With TargetRole the new variable becomes
  /// the target; an earlier target keeps its role. `valueLabels` is parallel to the codes and not
  /// checked.
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<double>& values, VariableRole role);
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<double>& values, const std::vector<std::string>& valueLabels,
                VariableRole role);
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<std::string>& values, VariableRole role);
  int AddCatVar(const std::string& name, const std::string& label,
                const std::vector<std::string>& values, const std::vector<std::string>& valueLabels,
                VariableRole role);

  /// Adds a categorical variable without known values. Neither `numberOfCategories` nor `level` is
  /// checked. Refused: an empty name, a name already in the list.
  int AddCatVar(const std::string& name, const std::string& label, int numberOfCategories,
                MeasureLevel level, VariableRole role);

  /// Refused: an empty name, a name already in the list, TargetRole.
  int AddContVar(const std::string& name, const std::string& label, VariableRole role);

  /// Adds a scale variable without a label for each name, in order, and answers the index of the
  /// first; for thousands of variables, since each of the other adding operations goes over all
  /// names in the list. Nothing is added when `names` is empty or AddContVar would refuse one.
  int AddContVars(const std::vector<std::string>& names, VariableRole role);

  /// Refused when the list already has a weight variable; the name is not checked.
  int AddWeightVar(const std::string& name, const std::string& label, BINWRoundingOption option);

  /// Declares one value of a variable user-missing: a string for a variable of
  /// StringCategoricalLevel, a number for one of any other level. False for a bad index, the wrong
  /// kind of value, or a variable that already holds a definition of the other data type or of a
  /// class of the host's own. True, and nothing changed, when the variable refuses the kind of
  /// definition (a numeric one for a categorical variable with a string encoder).
  bool AddDiscreteUserMissing(int index, const std::string& value, const std::string& label);
  bool AddDiscreteUserMissing(int index, double value, const std::string& label);

  /// Declares the closed interval [low, high] user-missing; a refusal by the variable is answered
  /// as above. False for a bad index, a variable of StringCategoricalLevel, one that already has an
  /// interval (it stays) or one that holds a string definition or one of a class of the host's own.
  bool SetMissingInterval(int index, double low, double high);

  /// The index of the first variable of that name, -1 when there is none.
  int FindVariable(const std::string& name) const;

  /// Null for a bad index.
  IBINVariable* GetVarAt(int index);
  const IBINVariable* GetVarAt(int index) const;

  /// Null for a bad index and for a scale variable.
  IBINEncoder* GetEncoderAt(int index);
  const IBINEncoder* GetEncoderAt(int index) const;

  /// UndefinedRole for a bad index.
  VariableRole GetVariableRole(int index);

  /// Which variable is the target, also where the roles of the variables say otherwise; -1 when
  /// there is none. See SetVariableRole and RemoveVar for what moves it.
  int GetTargetIndex() const;

  /// The variable at the target index, null when there is none.
  IBINVariable* GetTargetVariable() const;

  /// -1 when there is no weight variable.
  int GetWeightIndex() const;

  /// The stored number of categories of the first variable whose role is TargetRole, 0 when no
  /// variable has that role. The target index is not consulted.
  int GetNTargetCats() const;

  /// The number of variables whose role is AttributeRole.
  int GetNumAttributeVars() const;

  int GetNumCatVar() const;
  int GetNumContVar() const;

  /// Sets `attributeNames` to the names of the variables with AttributeRole, in order, and
  /// `targetName` to the name of the last variable with TargetRole; without one `targetName` is
  /// left alone.
  void GetVarNames(std::vector<std::string>& attributeNames, std::string& targetName) const;

  /// The number of variables, the weight variable included.
  std::uint64_t Size() const;

  /// Raises the stored number of categories of every variable to the number of codes that its
  /// encoder holds. The sum of the numbers, at most the largest int.
  int UpdateNumbersOfCategories();

  /// False for a bad index. With TargetRole the variable becomes the target only when there is
  /// none; an earlier target stays the target although both now have the role. Any other role for a
  /// variable with TargetRole leaves the list without a target. A weight variable keeps its role,
  /// yet the target index moves by the same rules.
  bool SetVariableRole(int index, VariableRole role);

  /// False for a bad index or unknown name. Removing a variable with TargetRole leaves the list
  /// without a target.
  bool RemoveVar(int index);
  bool RemoveVar(std::string name);

  /// Whether every variable has at least two categories or needs none, and at least one has
  /// AttributeRole. The vectors are set to the indexes of the variables with one category and with
  /// none. Raises the stored numbers of categories as UpdateNumbersOfCategories does.
  bool IsValidList(std::vector<int>& singleCategoryVars, std::vector<int>& emptyVars) const;

  /// Whether both lists describe the same variables: same number, target index, names, labels,
  /// roles and levels, and for attributes and targets equal user-missing definitions and, unless
  /// continuous, a stored number of categories that equals the number of codes in the variable's
  /// own encoder. When not, `where` is the index of the first difference (the smaller size or else
  /// the smaller target index when those differ); when they do, it is left alone.
  bool CanMergeWith(const BINVarList& other, int& where) const;

  void Display(std::ostream& os) const;

 private:
  bool HasIndex(int index) const;

  // Take null for a variable that could not be made; answer -1 then and when memory runs out.
  int Append(std::unique_ptr<IBINVariable> variable);
  int AppendCatVar(std::unique_ptr<IBINVariable> variable);

  std::vector<std::unique_ptr<IBINVariable>> variables_;
  int numContVar_ = 0;
  int numCatVar_ = 0;
  int targetIndex_ = -1;
  int weightIndex_ = -1;
};

#endif
