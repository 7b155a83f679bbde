// Reads any bytes as separated text, twice: nothing but a DataError may come of it, both passes
// must agree, and every row must have as many cells as there are columns.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "toolkit/errors.h"
#include "toolkit/input/formats/csv_reader.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;

/// A file in memory that a path leads to.
class MemoryFile {
 public:
  MemoryFile(const std::uint8_t* bytes, std::size_t size) : descriptor_(::memfd_create("fuzz", 0)) {
    if (::write(descriptor_, bytes, size) != static_cast<ssize_t>(size)) std::abort();
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { ::close(descriptor_); }

  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

Rows readAll(mcbin::CsvReader& reader) {
  Rows rows;
  mcbin::TableRow row;
  std::uint64_t lastLine = 0;
  while (reader.NextRow(row)) {
    if (row.cells.size() != reader.ColumnNames().size() || row.line <= lastLine) std::abort();
    lastLine = row.line;
    rows.emplace_back(row.cells.begin(), row.cells.end());
  }
  return rows;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  if (size == 0) return 0;
  const MemoryFile file(bytes + 1, size - 1);
  const char delimiter = (bytes[0] & 1U) != 0 ? ',' : '\t';
  const bool hasHeader = (bytes[0] & 2U) != 0;
  mcbin::Monitor monitor;
  try {
    mcbin::CsvReader reader(std::make_unique<mcbin::ByteSource>(file.Path(), monitor), delimiter,
                            hasHeader);
    const Rows first = readAll(reader);
    reader.Rewind();
    if (readAll(reader) != first) std::abort();
  } catch (const mcbin::DataError&) {
    return 0;
  }
  return 0;
}
