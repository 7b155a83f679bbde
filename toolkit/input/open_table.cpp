#include "toolkit/input/open_table.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace mcbin {

// One file each in formats/: whether the first bytes are of that kind, and the table in them.
bool isSqlite(std::string_view start);
std::unique_ptr<TableReader> openSqlite(const InputOptions& options,
                                        std::unique_ptr<ByteSource> source, Monitor& monitor);
bool isForeign(std::string_view start);
std::unique_ptr<TableReader> refuseForeign(const InputOptions& options,
                                           std::unique_ptr<ByteSource> source, Monitor& monitor);
std::unique_ptr<TableReader> openCsv(const InputOptions& options,
                                     std::unique_ptr<ByteSource> source, Monitor& monitor);

namespace {

bool isAnything(std::string_view /*start*/) { return true; }

struct InputFormat {
  bool (*recognises)(std::string_view start);
  std::unique_ptr<TableReader> (*open)(const InputOptions& options,
                                       std::unique_ptr<ByteSource> source, Monitor& monitor);
};

/// The first that recognises the data reads them.
constexpr InputFormat kFormats[] = {
    {isSqlite, openSqlite}, {isForeign, refuseForeign}, {isAnything, openCsv}};

}  // namespace

std::unique_ptr<TableReader> openTable(const InputOptions& options, Monitor& monitor) {
  auto source = std::make_unique<ByteSource>(options.data, monitor);
  const std::string start = source->Start();
  const auto* const format =
      std::find_if(std::begin(kFormats), std::end(kFormats),
                   [&](const InputFormat& candidate) { return candidate.recognises(start); });
  return format->open(options, std::move(source), monitor);
}

}  // namespace mcbin
