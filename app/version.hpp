#pragma once

#include <string>

namespace orvante {

/// The numeric version, "4.2.0".
[[nodiscard]] std::string version();

/// The full tag, version and build target: "v4.2.0-arm64".
[[nodiscard]] std::string versionTag();

} // namespace orvante
