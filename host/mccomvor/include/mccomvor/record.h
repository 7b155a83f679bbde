#ifndef MCCOMVOR_RECORD_H
#define MCCOMVOR_RECORD_H

#include <mccomvor/export.h>

#include <vector>

namespace MCCommon {

/// One case: a fixed number of cells, one double each, in the order of the host's variables.
/// Categorical cells hold category codes, scale and weight cells the raw value.
class MCCOMVOR_API Record {
 public:
  /// Makes a record of `size` cells, all 0.0; a negative size makes an empty record.
  explicit Record(int size);
  Record(const Record& other);
  Record& operator=(const Record& other);
  ~Record();

  /// The cell at `index`, which must be from 0 to size - 1.
  double operator[](int index) const;
  double& operator[](int index);

 private:
  std::vector<double> cells_;
};

}  // namespace MCCommon

#endif
