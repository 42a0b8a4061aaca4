// Runs a fuzz target over kept inputs: arguments are files, or folders whose files are all taken. A folder
// may be missing (nothing was found yet), but some input must be there.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> inputsOf(const std::filesystem::path& argument) {
    if (!std::filesystem::is_directory(argument)) {
        return std::filesystem::exists(argument) ? std::vector{argument}
                                                 : std::vector<std::filesystem::path>();
    }
    std::vector<std::filesystem::path> inputs;
    for (const auto& entry : std::filesystem::directory_iterator(argument)) {
        inputs.push_back(entry.path());
    }
    return inputs;
}

void replay(const std::filesystem::path& input) {
    std::ifstream file(input, std::ios::binary);
    const std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    const std::vector<std::uint8_t> bytes(content.begin(), content.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

} // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int argument = 1; argument < argc; ++argument) {
        for (const auto& input : inputsOf(argv[argument])) {
            replay(input);
            ++count;
        }
    }
    std::cout << count << " inputs replayed" << std::endl;
    return count > 0 ? 0 : 1;
}
