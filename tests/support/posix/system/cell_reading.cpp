#include "support/cell_reading.h"

#include <mccomvor/record.h>

#include <cstddef>

void (*mcbinning_tests::onCellRead)(int) = nullptr;

// The program's own definition takes the place of the host library's.
double MCCommon::Record::operator[](int index) const {
  if (mcbinning_tests::onCellRead != nullptr) {
    mcbinning_tests::onCellRead(index);
  }
  return cells_[static_cast<std::size_t>(index)];
}
