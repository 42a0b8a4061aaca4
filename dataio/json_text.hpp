#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <string_view>

namespace dataio {

/// How deep the arrays and objects of a command file may be nested: far above any model, far below what would
/// exhaust the stack of the JSON library's recursive operations.
constexpr std::size_t maximumNesting = 1000;

/// Refuses text whose arrays and objects are nested too deep, without recursion and before it is parsed.
///
/// Brackets inside strings do not count. The text need not be well formed.
/// @throws std::runtime_error "The command file is nested more than 1000 levels deep: flatten its arrays and
/// objects."
void requireModestNesting(std::string_view text);

/// Reads the rest of a stream into memory.
/// @throws std::runtime_error "Reading the command file '" + name + "' failed: check the file and its disk."
[[nodiscard]] std::string readAll(std::istream& stream, const std::string& name);

} // namespace dataio
