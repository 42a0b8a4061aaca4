#include "app/orvante_cmd_line.hpp"

#include <iostream>
#include <utility>

#include "app/version.hpp"

namespace {

constexpr char valueDelimiter = ' ';
constexpr bool required = true;
constexpr bool helpAndVersion = true;
constexpr std::size_t bannerWidth = 60;

} // namespace

OrvanteCmdLine::OrvanteCmdLine(const std::string& message, std::string model, std::string tag)
    : TCLAP::CmdLine(message, valueDelimiter, orvante::versionTag(), helpAndVersion),
      modelName(std::move(model)),
      binaryTag(std::move(tag)) {
    printStartBanner();
    fileArg = std::make_unique<TCLAP::ValueArg<std::string>>("f", "file", "the configuration file", required,
                                                             "", "string");
    add(*fileArg);
    logArg =
        std::make_unique<TCLAP::ValueArg<int>>("l", "log", "level of debug messages", !required, 0, "int");
    add(*logArg);
    nthreadsArg =
        std::make_unique<TCLAP::ValueArg<int>>("n", "nthreads", "number of threads", !required, 1, "int");
    add(*nthreadsArg);
    archiveArg = std::make_unique<TCLAP::ValueArg<std::string>>("a", "archive", "restore the archive",
                                                                !required, "", "string");
    add(*archiveArg);
}

OrvanteCmdLine::~OrvanteCmdLine() {
    std::cout << std::endl
              << std::string(bannerWidth, '-') << std::endl
              << " ORVANTE successfully processed all necessary jobs!" << std::endl
              << std::endl;
}

void OrvanteCmdLine::printStartBanner() const {
    std::cout << "ORVANTE v" << orvante::version() << " (" << orvante::versionTag() << ")" << std::endl
              << modelName << " " << binaryTag << " binary" << std::endl;
}

std::string OrvanteCmdLine::configFile() const {
    return fileArg->getValue();
}

int OrvanteCmdLine::logLevel() const {
    return logArg->getValue();
}

int OrvanteCmdLine::numberOfThreads() const {
    return nthreadsArg->getValue();
}

std::string OrvanteCmdLine::archive() const {
    return archiveArg->getValue();
}
