#ifndef MCBINNING_TESTS_SUPPORT_CELL_READING_H
#define MCBINNING_TESTS_SUPPORT_CELL_READING_H

namespace mcbinning_tests {

/// Called with the index of every cell that is read from a record, by anybody in the program, when
/// it is not null. A program with it links system/cell_reading.cpp, which takes the place of the
/// host library's reading.
extern void (*onCellRead)(int index);

}  // namespace mcbinning_tests

#endif
