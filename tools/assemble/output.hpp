#pragma once

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace assembly {

/// The text as it is delivered: ASCII, indented by two blanks, lines ended by CR LF, the last one not ended.
[[nodiscard]] std::string printedText(const nlohmann::ordered_json& value);

/// C++ source that defines the accessor of the text.
[[nodiscard]] std::string cppSource(std::string_view text);

/// Makefile rule that says that `target` depends on the files.
[[nodiscard]] std::string dependencyRule(const std::filesystem::path& target,
                                         const std::vector<std::filesystem::path>& files);

/// @throws std::runtime_error "PATH: this file cannot be written".
void writeFile(const std::filesystem::path& path, std::string_view content);

} // namespace assembly
