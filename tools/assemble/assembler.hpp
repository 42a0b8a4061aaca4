#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace assembly {

/// A text put together from fragments.
struct Assembled {
    nlohmann::ordered_json value;
    /// The files that were read, each once, in the order in which they were asked for.
    std::vector<std::filesystem::path> files;
};

/// Puts a fragment together with all those that it asks for, directly or through others.
/// @param folder the paths of fragments are relative to it.
/// @param root path of the fragment to begin with.
/// @throws AssemblyError the first fault of a fragment.
[[nodiscard]] Assembled assemble(const std::filesystem::path& folder, const std::string& root);

} // namespace assembly
