#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace reference {

/// The smallest datum that obeys a schema of the dialect, references to other blocks left aside: required
/// members only, defaults where there are any, of several variants the first that goes with the defaults, of
/// a choice what is shortest.
/// @throws std::runtime_error "PATH: no example can be made of this schema." with the given path or one below
/// it.
[[nodiscard]] nlohmann::ordered_json minimalExample(const nlohmann::ordered_json& schema,
                                                    const std::string& path);

} // namespace reference
