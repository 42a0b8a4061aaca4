#include <dataio/json_reader.hpp>
#include <h5io/result_file.hpp>
#include <iostream>

int main() {
    const auto reader = dataio::createCommandFileReader(R"({"SETUP": {"simulation_name": "reach"}})");
    std::cout << reader->getString("SETUP/simulation_name", "unnamed") << std::endl;
    H5Easy::File file = h5io::openFile("consumer.h5", H5Easy::File::Truncate);
    h5io::writeDataset(file, ".config/model", reader->dump());
    h5io::closeFile(file);
}
