// Validates any JSON data with any schema of the dialect.

#include <tclap/CmdLine.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "compat/process.hpp"
#include "jsv/validate.hpp"
#include "tools/tool_main.hpp"

namespace {

/// Status of everything that keeps the program from a verdict, which is 0, 1 or 2.
constexpr int noVerdict = 3;

int fail(const std::string& message) {
    std::cerr << " -> " << message << std::endl;
    return noVerdict;
}

bool isReadable(const std::ifstream& file, const std::string& path) {
    std::error_code ignored;
    return file.good() && !std::filesystem::is_directory(path, ignored);
}

int validateFiles(const std::string& schemaPath, const std::string& dataPath) {
    std::ifstream schema(schemaPath);
    if (!isReadable(schema, schemaPath)) {
        return fail("file not found: " + schemaPath);
    }
    std::ifstream data(dataPath);
    if (!isReadable(data, dataPath)) {
        return fail("file not found: " + dataPath);
    }
    const int verdict = jsv::validate({&std::cout}, data, schema);
    return std::cout.good() ? verdict
                            : fail("the report cannot be written: check where standard output goes.");
}

int run(int argc, char** argv) {
    TCLAP::CmdLine line(
        "Validates JSON data against a schema of the jsv dialect. The report goes to standard output. Exit "
        "status: 0 "
        "no finding; 1 warnings; 2 errors; 3 no verdict, because of a fault in the schema, a text that is no "
        "JSON, or a "
        "file that is missing.",
        ' ', JSV_VERSION_TAG, true);
    line.setExceptionHandling(false);
    TCLAP::UnlabeledValueArg<std::string> schema("schema", "file with the schema", true, "", "SCHEMA_FILE",
                                                 line);
    TCLAP::UnlabeledValueArg<std::string> data("data", "file with the data", true, "", "DATA_FILE", line);
    line.parse(argc, argv);
    return validateFiles(schema.getValue(), data.getValue());
}

} // namespace

int main(int argc, char** argv) {
    compat::keepFreedMemory();
    return toolMain([&] { return run(argc, argv); }, fail, "jsv SCHEMA_FILE DATA_FILE");
}
