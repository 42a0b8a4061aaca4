#include "tools/assemble/output.hpp"

#include <cstddef>
#include <fstream>
#include <stdexcept>

namespace assembly {

namespace {

constexpr int indentation = 2;
constexpr std::size_t charactersPerLine = 24;

std::string withWindowsLineEnds(const std::string& text) {
    std::string result;
    for (const char character : text) {
        result += character == '\n' ? "\r\n" : std::string(1, character);
    }
    return result;
}

/// Codes rather than a literal, because compilers need not take literals of more than 65,536 characters.
std::string characterCodes(std::string_view text) {
    std::string codes;
    std::size_t inLine = 0;
    for (const char character : text) {
        codes += std::to_string(static_cast<int>(character));
        codes += ++inLine % charactersPerLine == 0 ? ",\n" : ",";
    }
    return codes;
}

std::string escaped(const std::filesystem::path& path) {
    std::string result;
    for (const char character : path.generic_string()) {
        if (character == ' ' || character == '#') {
            result += '\\';
        } else if (character == '$') {
            result += '$';
        }
        result += character;
    }
    return result;
}

} // namespace

std::string printedText(const nlohmann::ordered_json& value) {
    return withWindowsLineEnds(value.dump(indentation, ' ', true));
}

std::string cppSource(std::string_view text) {
    return "// Made by assemble_schema: change the fragments instead.\n"
           "#include \"schema/command_file_schema.hpp\"\n"
           "\n"
           "namespace {\n"
           "\n"
           "constexpr char text[] = {\n" +
           characterCodes(text) +
           "0};\n"
           "\n"
           "} // namespace\n"
           "\n"
           "const char* commandFileSchema() {\n"
           "    return &text[0];\n"
           "}\n";
}

std::string dependencyRule(const std::filesystem::path& target,
                           const std::vector<std::filesystem::path>& files) {
    std::string rule = escaped(target) + ":";
    for (const std::filesystem::path& file : files) {
        rule += " \\\n  " + escaped(file);
    }
    return rule + "\n";
}

void writeFile(const std::filesystem::path& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) {
        throw std::runtime_error(path.generic_string() + ": this file cannot be written");
    }
}

} // namespace assembly
