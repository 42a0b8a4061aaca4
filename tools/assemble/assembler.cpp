#include "tools/assemble/assembler.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <optional>
#include <utility>

#include "tools/assemble/fragment_parser.hpp"
#include "tools/assemble/place.hpp"

namespace assembly {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

bool leavesFolder(const fs::path& path) {
    return path.empty() || path.has_root_path() || *path.begin() == "..";
}

std::optional<std::string> readText(const fs::path& file) {
    if (fs::is_directory(file)) {
        return std::nullopt;
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

class Assembler {
public:
    explicit Assembler(fs::path fragments) : folder(std::move(fragments)) {}

    /// @param asked where the fragment is asked for.
    Json fragment(const std::string& path, const Place& asked) {
        const fs::path normal = fs::path(path).lexically_normal();
        if (leavesFolder(normal)) {
            throw AssemblyError(asked, "the path '" + path + "' leaves the folder of the fragments");
        }
        requireNoCircle(normal, asked);
        const fs::path file = folder / normal;
        const std::optional<std::string> text = readText(file);
        if (!text) {
            throw AssemblyError(asked, "the fragment '" + path + "' cannot be read");
        }
        note(file);
        Json value = parse(normal, file, *text);
        if (!value.is_object()) {
            throw AssemblyError(asked, "the fragment '" + path + "' is no object");
        }
        return value;
    }

    [[nodiscard]] std::vector<fs::path> takeFiles() { return std::move(files); }

private:
    Json parse(const fs::path& path, const fs::path& file, const std::string& text) {
        open.push_back(path);
        Json value = parseFragment(
            file.generic_string(), text,
            [this](const std::string& wanted, const Place& place) { return fragment(wanted, place); });
        open.pop_back();
        return value;
    }

    void requireNoCircle(const fs::path& path, const Place& asked) const {
        auto step = std::find(open.begin(), open.end(), path);
        if (step == open.end()) {
            return;
        }
        std::string circle;
        for (; step != open.end(); ++step) {
            circle += step->generic_string() + " -> ";
        }
        throw AssemblyError(asked, "the fragment includes itself: " + circle + path.generic_string());
    }

    void note(const fs::path& file) {
        if (std::find(files.begin(), files.end(), file) == files.end()) {
            files.push_back(file);
        }
    }

    fs::path folder;
    /// The fragments that are being read, each asked for by the one before.
    std::vector<fs::path> open;
    std::vector<fs::path> files;
};

} // namespace

Assembled assemble(const fs::path& folder, const std::string& root) {
    Assembler assembler(folder);
    Json value = assembler.fragment(root, {(folder / root).generic_string(), 1, 1});
    return {std::move(value), assembler.takeFiles()};
}

} // namespace assembly
