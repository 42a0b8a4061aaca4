// What no validation can do without: the files read into memory, parsed with the JSON library, and freed.

#include <nlohmann/json.hpp>

#include "bench/support.hpp"

int main(int argc, char** argv) {
    return bench::run(argc, argv, 1, "FILE...", [](const std::vector<std::string>& files) {
        std::vector<nlohmann::json> documents;
        documents.reserve(files.size());
        for (const std::string& file : files) {
            documents.push_back(nlohmann::json::parse(bench::readFile(file)));
        }
        // Last come, first freed, as with variables: the other way round costs the allocator half as much
        // again.
        while (!documents.empty()) {
            documents.pop_back();
        }
    });
}
