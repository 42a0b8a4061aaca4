#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "tools/reference/manual_model.hpp"

namespace reference {

struct SiteFile {
    std::string name;
    std::string content;
};

/// The manual as HTML pages, which lie in one folder with their style sheet, their script and the index of
/// the search. Every block and key has its path as the id of its entry, blanks and the like percent-encoded;
/// the root has "/".
[[nodiscard]] std::vector<SiteFile> renderSite(const Block& root, const std::string& version);

/// Writes the files into the folder, which is made where it is missing.
/// @throws std::runtime_error "PATH: this file cannot be written.", std::filesystem::filesystem_error.
void writeSite(const std::vector<SiteFile>& files, const std::filesystem::path& folder);

/// The part of a link behind "#" that leads to the entry of a path.
[[nodiscard]] std::string fragmentOf(const std::string& path);

} // namespace reference
