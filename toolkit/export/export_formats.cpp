#include "toolkit/export/export_formats.h"

#include <algorithm>

namespace mcbin {

// One file each in formats/, which says what it writes.
std::string sqlExport(const Model& model, const ExportOptions& options);
std::string csvExport(const Model& model, const ExportOptions& options);
std::string markdownExport(const Model& model, const ExportOptions& options);
std::string jsonExport(const Model& model, const ExportOptions& options);

namespace {

constexpr ExportFormat kFormats[] = {
    {"sql",
     "one CASE per attribute over a column of numbers or of their texts, NAME_bin as apply writes "
     "it; with --from a whole SELECT",
     true, sqlExport},
    {"csv", "a line per bin", false, csvExport},
    {"markdown", "the tables that show prints", false, markdownExport},
    {"json", "the model again, of the chosen attributes", false, jsonExport}};

}  // namespace

std::span<const ExportFormat> exportFormats() { return kFormats; }

const ExportFormat& exportFormat(const std::string& name) {
  return *std::find_if(std::begin(kFormats), std::end(kFormats),
                       [&](const ExportFormat& format) { return name == format.name; });
}

}  // namespace mcbin
