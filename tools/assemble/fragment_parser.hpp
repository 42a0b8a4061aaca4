#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "tools/assemble/place.hpp"

namespace assembly {

/// Name of the member that asks for a fragment.
constexpr const char* fragmentMember = "$fragment";

/// Gives the fragment that a member asks for; the place is that of the member.
using Include = std::function<nlohmann::ordered_json(const std::string& path, const Place& place)>;

/// Parses the text of one fragment. Each object that asks for a fragment gets its members, in the place of
/// the member that asks; of those that the object has itself, its own are kept.
/// @param file as it is to stand in messages.
/// @throws AssemblyError the first fault of the text.
[[nodiscard]] nlohmann::ordered_json parseFragment(const std::string& file, std::string_view text,
                                                   const Include& include);

} // namespace assembly
