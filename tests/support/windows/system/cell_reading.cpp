#include "support/cell_reading.h"

#include <mccomvor/record.h>
#include <windows.h>

void (*mcbinning_tests::onCellRead)(int) = nullptr;

namespace {

using Reading = double (*)(const MCCommon::Record*, int);

double readCell(const MCCommon::Record* record, int index) {
  static const auto hosts = reinterpret_cast<Reading>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("MCCOMVOR.dll"), "_ZNK8MCCommon6RecordixEi")));
  if (mcbinning_tests::onCellRead != nullptr) {
    mcbinning_tests::onCellRead(index);
  }
  return hosts(record, index);
}

}  // namespace

// What is imported is called through a pointer of this name; the program has its own.
extern Reading importedReading asm("__imp__ZNK8MCCommon6RecordixEi");
Reading importedReading = readCell;
