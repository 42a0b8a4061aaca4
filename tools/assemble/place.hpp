#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace assembly {

/// A place in a text file; lines and columns count from 1.
struct Place {
    std::string file;
    std::size_t line = 1;
    std::size_t column = 1;
};

/// The place of a character, or of the end, of a file's text.
[[nodiscard]] Place placeOf(const std::string& file, std::string_view text, std::size_t offset);

/// A fault of a fragment: "file:line:column: message".
class AssemblyError : public std::runtime_error {
public:
    AssemblyError(const Place& place, const std::string& message);
};

} // namespace assembly
