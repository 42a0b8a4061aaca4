#pragma once

#include <optional>
#include <string_view>

namespace reference {

/// The character that a named entity of HTML stands for; the name is given without "&" and ";".
std::optional<char32_t> namedCharacter(std::string_view name);

} // namespace reference
