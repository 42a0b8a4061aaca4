#include <iostream>
#include <memory>
#include <string>

#include "app/assertion.hpp"
#include "app/orvante_main.hpp"
#include "compat/process.hpp"
#include "dataio/json_reader.hpp"
#include "h5io/result_file.hpp"
#include "schema/command_file_schema.hpp"

namespace {

/// The setup program: stores the model of a command file in a new result file.
class OrvanteSetup : public OrvanteMain {
public:
    OrvanteSetup() : OrvanteMain("setup", "ORVAMD", "setup"), schemaText(commandFileSchema()) {}
    int run() { return OrvanteMain::run(schemaText); }

private:
    void defineArguments() override;
    bool needsCommandFileValidation() override { return true; }
    void runJob() override;

    /// Whether the command file holds the block SETUP/ORVAMD.
    [[nodiscard]] bool hasMultiDomainModel() const;
    /// Stores the command file's text in the result file.
    /// @throws h5io::Exception the result file cannot be created, written or closed.
    void writeModel() const;

    const char* schemaText;
    /// Name of the result file; null until the arguments are defined.
    std::unique_ptr<TCLAP::ValueArg<std::string>> outputArg;
};

void OrvanteSetup::runJob() {
    const SourceLine here{__FILE__, __LINE__}; // users quote it when they ask for help: it stays on line 37
    const bool isMultiDomain = hasMultiDomainModel();
    assertThat(isMultiDomain, "isMultiDomain()", "The command file does not define a ORVAMD domain model.",
               here);
    writeModel();
}

void OrvanteSetup::defineArguments() {
    outputArg = std::make_unique<TCLAP::ValueArg<std::string>>(
        "o", "output", "name of .h5 file for storing results (must contain ending .h5)", false, "setup.h5",
        "string");
    add(*outputArg);
}

bool OrvanteSetup::hasMultiDomainModel() const {
    const auto reader = dataio::createCommandFileReader(configFile());
    return reader->hasPaths({"SETUP/ORVAMD"});
}

void OrvanteSetup::writeModel() const {
    std::cout << " -> "
              << "Command file for ORVAMD domain provided." << std::endl;
    const auto reader = dataio::createCommandFileReader(configFile());
    H5Easy::File file = h5io::openFile(outputArg->getValue(), H5Easy::File::Truncate);
    h5io::writeDataset(file, ".config/model", reader->dump());
    h5io::closeFile(file);
}

} // namespace

int main(int argc, char** argv) {
    compat::keepFreedMemory();
    compat::survivePassingFileSizeLimit();
    h5io::leaveFilesAloneAtExit();
    OrvanteSetup setup;
    setup.initialise(argc, argv);
    return setup.run();
}
