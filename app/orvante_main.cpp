#include "app/orvante_main.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "api/base_exception.hpp"
#include "app/text_stream.hpp"
#include "jsv/validate.hpp"

namespace {

[[noreturn]] void stopAtArgument(const TCLAP::ArgException& fault) {
    std::cerr << " -> "
              << "error: " << fault.error() << " for arg " << fault.argId() << std::endl;
    throw BaseException();
}

void tell(const std::string& message) {
    std::cerr << " -> " << message << std::endl;
}

} // namespace

OrvanteMain::OrvanteMain(const char* binaryName, const char* model, const char* tag)
    : OrvanteCmdLine(std::string("This is the '") + binaryName + "' binary of the ORVANTE framework.", model,
                     tag) {}

void OrvanteMain::initialise(int argc, char** argv) {
    try {
        defineArguments();
        parse(argc, argv);
    } catch (const TCLAP::ArgException& fault) {
        stopAtArgument(fault);
    }
}

int OrvanteMain::run(const char* schemaText) {
    // std::exit leaves the application undestroyed: its closing banner means success.
    try {
        if (needsCommandFileValidation()) {
            loadCommandFile(configFile(), schemaText);
        }
        runJob();
        return 0;
    } catch (const TCLAP::ArgException& fault) {
        stopAtArgument(fault);
    } catch (const BaseException& fatal) {
        tell(fatal.what());
        std::exit(EXIT_FAILURE);
    } catch (const std::exception& unexpected) {
        tell("unhandled exception (actually, this should never happen)");
        tell(unexpected.what());
        tell(BaseException().what());
        std::exit(EXIT_FAILURE);
    }
}

void OrvanteMain::loadCommandFile(const std::string& path, const char* schemaText) {
    std::ifstream file(path);
    std::error_code ignored;
    // Opening a directory as a stream succeeds on some systems.
    if (!file.good() || std::filesystem::is_directory(path, ignored)) {
        tell("configuration file not found: " + path);
        throw BaseException();
    }
    constexpr int hasErrors = 2;
    TextStream schema(schemaText);
    if (jsv::validate({&std::cout}, file, schema) == hasErrors) {
        tell("Terminating ORVANTE due to JSON validation errors.");
        throw BaseException();
    }
}
