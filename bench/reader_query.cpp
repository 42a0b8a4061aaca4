// What a query of the command-file reader costs, in documents of any size: names of the files after the
// options.

#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>

#include "bench/support.hpp"
#include "dataio/json_reader.hpp"

namespace {

using Reader = std::shared_ptr<const dataio::JSONReader>;

const std::string planes = "SETUP/ORVAMD/ORVAPLANE_2D";
const std::string modelName = "SETUP/ORVAMD/multiregion";
const std::string planeName = "region_name";

/// The last plane of a document, which must have what the queries ask for.
int lastPlane(const dataio::JSONReader& reader) {
    const int index = static_cast<int>(reader.getArraySize(planes)) - 1;
    if (index < 0 || reader.getString(planes, index, planeName, "").empty() ||
        reader.getString(modelName, "").empty()) {
        throw std::runtime_error("the document lacks what the queries ask for");
    }
    return index;
}

template <typename Query>
void addBenchmark(const std::string& name, Query query) {
    benchmark::RegisterBenchmark(name.c_str(), [query](benchmark::State& state) {
        for ([[maybe_unused]] auto iteration : state) {
            benchmark::DoNotOptimize(query());
        }
    });
}

void addDocument(const std::string& file) {
    const Reader reader = std::make_shared<const dataio::JSONReader>(file);
    const int index = lastPlane(*reader);
    const std::vector<std::string> paths = {modelName, planes};
    addBenchmark("getString:" + file, [=] { return reader->getString(modelName, ""); });
    addBenchmark("getString indexed:" + file,
                 [=] { return reader->getString(planes, index, planeName, ""); });
    addBenchmark("hasPaths:" + file, [=] { return reader->hasPaths(paths); });
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    return bench::run(argc, argv, 1, "[OPTIONS] FILE...", [](const std::vector<std::string>& files) {
        std::for_each(files.begin(), files.end(), addDocument);
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
    });
}
