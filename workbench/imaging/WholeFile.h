#pragma once

#include <string_view>

namespace qor::imaging {

/// False when \p bytes, a file for \p coder, end before their own tables say. For the coders that
/// would show such a file with holes; for all others always true, since they notice it themselves.
bool isWhole(std::string_view coder, std::string_view bytes);

} // namespace qor::imaging
