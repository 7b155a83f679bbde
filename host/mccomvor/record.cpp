#include <mccomvor/record.h>

#include <cstddef>

namespace MCCommon {

Record::Record(int size) : cells_(size > 0 ? static_cast<std::size_t>(size) : 0U, 0.0) {}

Record::Record(const Record& other) = default;

Record& Record::operator=(const Record& other) = default;

Record::~Record() = default;

double Record::operator[](int index) const { return cells_[static_cast<std::size_t>(index)]; }

double& Record::operator[](int index) { return cells_[static_cast<std::size_t>(index)]; }

}  // namespace MCCommon
