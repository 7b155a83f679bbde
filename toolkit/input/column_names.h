/// How columns get their names.
#ifndef MCBIN_TOOLKIT_INPUT_COLUMN_NAMES_H
#define MCBIN_TOOLKIT_INPUT_COLUMN_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace mcbin {

/// column_1, column_2, ...
std::vector<std::string> numberedNames(std::size_t count);

/// The header's cells, blanks around them removed; an empty one becomes column_N. DataError when a
/// name stands twice or is no UTF-8 text. `source` stands in front of the message.
std::vector<std::string> namesFromHeader(const std::vector<std::string_view>& header,
                                         const std::string& source);

}  // namespace mcbin

#endif
