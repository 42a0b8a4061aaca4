#pragma once

#include <string>

#include "jsv/issue.hpp"

namespace jsv {

/// The wording of a finding; empty for traces. Limits have six decimals, as the C format "%f" writes them.
[[nodiscard]] std::string messageText(const Issue& issue);

/// "Error: ", "Warning: ", or nothing for traces.
[[nodiscard]] std::string severityPrefix(const Issue& issue);

/// Prefix and wording.
[[nodiscard]] std::string fullMessage(const Issue& issue);

} // namespace jsv
