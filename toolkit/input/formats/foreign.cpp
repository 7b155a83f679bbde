#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "toolkit/errors.h"
#include "toolkit/input/open_table.h"

namespace mcbin {
namespace {

using namespace std::string_view_literals;

struct ForeignFormat {
  std::string_view start;
  const char* whatToDo;
};

/// No text begins so: each start holds a byte that is no character of text, or is long enough.
constexpr ForeignFormat kForeignFormats[] = {
    {"PK\x03\x04"sv, "a zip archive or a spreadsheet (.xlsx, .ods): unpack it or save it as CSV"},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "an office document (.xls): save its sheet as CSV"},
    {"\xFD"
     "7zXZ\0"sv,
     "compressed by xz: unpack it first (xz -dc)"},
    {"BZh91AY&SY"sv, "compressed by bzip2: unpack it first (bzip2 -dc)"},
    {"\x28\xB5\x2F\xFD"sv, "compressed by zstd: unpack it first (zstd -dc)"},
    {"\x04\x22\x4D\x18"sv, "compressed by lz4: unpack it first (lz4 -dc)"},
    {"7z\xBC\xAF\x27\x1C"sv, "a 7z archive: unpack it first"},
    {"PAR1\x15"sv, "a Parquet file: convert it to CSV"},
    {"ARROW1\0\0"sv, "an Arrow file: convert it to CSV"},
    {"\x89HDF\r\n\x1A\n"sv, "an HDF5 file: convert the table to CSV"},
    {"%PDF-"sv, "a PDF document: the table is needed as CSV"},
    {"\xFF\xFE"sv, "UTF-16 text: convert it (iconv -f UTF-16 -t UTF-8)"},
    {"\xFE\xFF"sv, "UTF-16 text: convert it (iconv -f UTF-16 -t UTF-8)"}};

const ForeignFormat* formatOf(std::string_view start) {
  const auto* const found =
      std::find_if(std::begin(kForeignFormats), std::end(kForeignFormats),
                   [&](const ForeignFormat& format) { return start.starts_with(format.start); });
  return found == std::end(kForeignFormats) ? nullptr : found;
}

}  // namespace

bool isForeign(std::string_view start) { return formatOf(start) != nullptr; }

std::unique_ptr<TableReader> refuseForeign(const InputOptions& /*options*/,
                                           std::unique_ptr<ByteSource> source,
                                           Monitor& /*monitor*/) {
  throw DataError(
      fmt::format("{}: this is {}", source->Name(), formatOf(source->Start())->whatToDo));
}

}  // namespace mcbin
