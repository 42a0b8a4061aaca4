// What the layer over HDF5 costs: the same text written through it and with bare calls of the library, in
// turn.

#include <filesystem>
#include <nlohmann/json.hpp>

#include "bench/bare_file.hpp"
#include "bench/support.hpp"
#include "h5io/result_file.hpp"

namespace {

void writeWithLayer(const std::string& fileName, const std::string& text) {
    H5Easy::File file = h5io::openFile(fileName, H5Easy::File::Truncate);
    h5io::writeDataset(file, ".config/model", text);
    h5io::closeFile(file);
}

template <typename Write>
double timedWrite(const std::string& fileName, const std::string& text, Write write) {
    std::filesystem::remove(fileName);
    return bench::timed([&] { write(fileName, text); });
}

} // namespace

int main(int argc, char** argv) {
    return bench::run(
        argc, argv, 3, "BYTES REPETITIONS FOLDER", [](const std::vector<std::string>& arguments) {
            const std::string text(std::stoul(arguments[0]), 'x');
            const std::string layerFile = arguments[2] + "/layer.h5";
            const std::string bareFile = arguments[2] + "/bare.h5";
            std::vector<double> layer;
            std::vector<double> bare;
            for (int repetition = std::stoi(arguments[1]); repetition > 0; --repetition) {
                layer.push_back(timedWrite(layerFile, text, writeWithLayer));
                bare.push_back(timedWrite(bareFile, text, bench::writeBareFile));
            }
            std::cout << nlohmann::json{{"layer", bench::median(layer)}, {"bare", bench::median(bare)}}
                      << '\n';
        });
}
