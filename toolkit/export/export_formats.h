/// The forms in which a model is written for other programs.
#ifndef MCBIN_TOOLKIT_EXPORT_EXPORT_FORMATS_H
#define MCBIN_TOOLKIT_EXPORT_EXPORT_FORMATS_H

#include <optional>
#include <span>
#include <string>

#include "toolkit/export/sql_text.h"
#include "toolkit/model/bin_labels.h"
#include "toolkit/model/model.h"

namespace mcbin {

struct ExportOptions {
  LabelStyle style = LabelStyle::Index;  ///< What stands for a bin: Index, Interval or Evidence.
  std::optional<std::string> table;      ///< The table that the statement reads.
  SqlDialect dialect = SqlDialect::Sqlite;
};

struct ExportFormat {
  const char* name;
  const char* help;  ///< One sentence for the help text, without a full stop.
  bool isStatement;  ///< Whether the options mean something to it.
  std::string (*write)(const Model& model, const ExportOptions& options);
};

/// Every format, in the order in which help texts name them.
std::span<const ExportFormat> exportFormats();

/// The format of that name, which must be one of `exportFormats`.
const ExportFormat& exportFormat(const std::string& name);

}  // namespace mcbin

#endif
