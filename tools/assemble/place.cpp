#include "tools/assemble/place.hpp"

#include <algorithm>

namespace assembly {

Place placeOf(const std::string& file, std::string_view text, std::size_t offset) {
    const std::string_view before = text.substr(0, std::min(offset, text.size()));
    const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::size_t newline = before.rfind('\n');
    const std::size_t lineStart = newline == std::string_view::npos ? 0 : newline + 1;
    return {file, line, before.size() - lineStart + 1};
}

AssemblyError::AssemblyError(const Place& place, const std::string& message)
    : std::runtime_error(place.file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
                         ": " + message) {}

} // namespace assembly
