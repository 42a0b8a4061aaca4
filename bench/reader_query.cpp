// What a query of the command-file reader costs, in documents of any size: names of the files after the
// options.

#include <benchmark/benchmark.h>

#include <memory>
#include <stdexcept>

#include "bench/support.hpp"
#include "dataio/json_reader.hpp"

namespace {

using Reader = std::shared_ptr<const dataio::JSONReader>;

const std::string controllers = "SETUP/ORVAMD/CONTROLLER";
const std::string gravity = "SETUP/ORVAMD/PHYSICAL_PROPERTIES/gravity";
const std::string timeStep = "output_time_step";

/// The last controller of a document that has the key.
int lastIndex(const dataio::JSONReader& reader) {
    int index = static_cast<int>(reader.getArraySize(controllers)) - 1;
    while (index >= 0 && reader.getDouble(controllers, index, timeStep, -1.0) < 0) {
        --index;
    }
    if (index < 0 || reader.getDouble(gravity, -1.0) < 0) {
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
    const int index = lastIndex(*reader);
    const std::vector<std::string> paths = {gravity, controllers};
    addBenchmark("getDouble:" + file, [=] { return reader->getDouble(gravity, 0.0); });
    addBenchmark("getDouble indexed:" + file,
                 [=] { return reader->getDouble(controllers, index, timeStep, 0.0); });
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
