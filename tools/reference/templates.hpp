#pragma once

#include <string_view>

namespace reference {

/// The content of a file of the folder templates/, as it was when the program was built.
/// @throws std::runtime_error "NAME: there is no such template."
[[nodiscard]] std::string_view templateText(std::string_view name);

} // namespace reference
