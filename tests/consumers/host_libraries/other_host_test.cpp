/// Ends with 0 when the library works with the host's own missing value and, while it was loaded,
/// called the host's accessors once.
#include <mcbinning/progress.h>
#include <mccomvor/missing_value.h>

#include <iostream>

extern "C" void* pvGetCmnBlock01();
extern "C" void* pvGetCmaBlock11();

int main() {
  BINProgressReporter report;
  const bool missingIsTheHosts =
      MCMV::gMissingValue == -9999.0 && report.ScaleMeasure("elapsedTime") == -9999.0;

  // Each accessor of this host returns its own number of calls, this one included.
  const int firstCalls = *static_cast<const int*>(pvGetCmnBlock01());
  const int lastCalls = *static_cast<const int*>(pvGetCmaBlock11());

  std::cout << "missing value " << report.ScaleMeasure("elapsedTime") << ", calls " << firstCalls
            << " and " << lastCalls << '\n';
  return missingIsTheHosts && firstCalls == 2 && lastCalls == 2 ? 0 : 1;
}
