// Writes the reference manual of a schema as a static site, or the schema in a standard draft.

#include <tclap/CmdLine.h>

#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/reference/manual_model.hpp"
#include "tools/reference/site.hpp"
#include "tools/reference/standard_schema.hpp"
#include "tools/tool_main.hpp"

namespace {

int fail(const std::string& message) {
    std::cerr << " -> " << message << std::endl;
    return 1;
}

reference::Json readSchema(const std::string& path) {
    std::ifstream file(path);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) {
        throw std::runtime_error(path + ": this file is missing or empty.");
    }
    return reference::Json::parse(file);
}

void writeManual(const reference::Json& schema, const std::string& folder) {
    reference::writeSite(reference::renderSite(reference::readManual(schema), REFERENCE_VERSION_TAG), folder);
}

void writeStandardSchema(const reference::Json& schema, const std::string& draft, const std::string& path) {
    const reference::Draft kind =
        draft == "draft-07" ? reference::Draft::draft07 : reference::Draft::draft2020;
    const std::string text = reference::standardSchema(schema, kind).dump(2);
    std::ofstream file(path, std::ios::binary);
    file << text << '\n' << std::flush;
    if (!file) {
        throw std::runtime_error(path + ": this file cannot be written.");
    }
}

int run(int argc, char** argv) {
    TCLAP::CmdLine line(
        "Writes the reference manual of a schema of the jsv dialect: HTML pages that are read from the file "
        "system, to begin with index.html. With --standard it writes the schema in a standard draft instead, "
        "for editors. Exit status: 0, or 1 with the reason on standard error.",
        ' ', REFERENCE_VERSION_TAG, true);
    line.setExceptionHandling(false);
    std::vector<std::string> drafts = {"draft-07", "2020-12"};
    TCLAP::ValuesConstraint<std::string> knownDrafts(drafts);
    const TCLAP::ValueArg<std::string> standard("", "standard", "write the schema in this draft", false, "",
                                                &knownDrafts, line);
    const TCLAP::UnlabeledValueArg<std::string> schema("schema", "file with the schema", true, "",
                                                       "SCHEMA_FILE", line);
    const TCLAP::UnlabeledValueArg<std::string> output(
        "output", "folder for the pages, made where it is missing; with --standard the file to write", true,
        "", "OUTPUT", line);
    line.parse(argc, argv);
    if (standard.isSet()) {
        writeStandardSchema(readSchema(schema.getValue()), standard.getValue(), output.getValue());
    } else {
        writeManual(readSchema(schema.getValue()), output.getValue());
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    return toolMain([&] { return run(argc, argv); }, fail,
                    "orvante_reference [--standard DRAFT] SCHEMA_FILE OUTPUT");
}
