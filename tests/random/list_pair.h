/// A variable list and its plain model, told the same, whose answers must be the same.
#ifndef MCBINNING_TESTS_RANDOM_LIST_PAIR_H
#define MCBINNING_TESTS_RANDOM_LIST_PAIR_H

#include <mcbinning/variable_list.h>

#include <string>
#include <vector>

#include "plain_model/list.h"

namespace mcbinning_tests {

/// A call throws a Difference when the two answer differently. What is added is described by the
/// model's variable, its codes and value labels included.
struct ListPair {
  BINVarList host;
  plain_model::VariableList plain;

  ListPair() = default;
  ListPair(const ListPair& other);
  ListPair& operator=(const ListPair& other);

  /// The index of the new variable, -1 when it is refused.
  int AddDeclared(plain_model::Variable variable);
  int AddScale(plain_model::Variable variable);
  int AddWeight(plain_model::Variable variable);
  void AddScales(const std::vector<std::string>& names, int role);

  /// With the values that the category codes stand for, which may repeat.
  int AddNumbers(plain_model::Variable variable, const std::vector<double>& values,
                 bool withLabels);
  int AddTexts(plain_model::Variable variable, const std::vector<std::string>& values,
               bool withLabels);

  void AddMissing(int index, double value, const std::string& label);
  void AddMissing(int index, const std::string& value, const std::string& label);
  void SetMissingInterval(int index, double low, double high);
  void SetRole(int index, int role);
  void Remove(int index);
  void Remove(const std::string& name);

  /// The encoder of a categorical variable meets a value.
  void Encode(int index, double value);
  void Encode(int index, const std::string& value);
};

}  // namespace mcbinning_tests

#endif
