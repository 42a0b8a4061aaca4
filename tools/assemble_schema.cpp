// Puts the command-file schema together from its fragments.

#include <tclap/CmdLine.h>

#include <iostream>
#include <string>

#include "tools/assemble/assembler.hpp"
#include "tools/assemble/output.hpp"
#include "tools/tool_main.hpp"

namespace {

/// Where the results go; an empty name is one that is not wanted.
struct Outputs {
    std::string json;
    std::string cpp;
    std::string dependencies;
};

int fail(const std::string& message) {
    std::cerr << message << std::endl;
    return 1;
}

void write(const assembly::Assembled& assembled, const Outputs& outputs) {
    const std::string text = assembly::printedText(assembled.value);
    if (!outputs.json.empty()) {
        assembly::writeFile(outputs.json, text);
    }
    if (!outputs.cpp.empty()) {
        assembly::writeFile(outputs.cpp, assembly::cppSource(text));
    }
    if (!outputs.dependencies.empty()) {
        const std::string& target = outputs.json.empty() ? outputs.cpp : outputs.json;
        assembly::writeFile(outputs.dependencies, assembly::dependencyRule(target, assembled.files));
    }
}

int run(int argc, char** argv) {
    using Value = TCLAP::ValueArg<std::string>;
    using Positional = TCLAP::UnlabeledValueArg<std::string>;
    TCLAP::CmdLine line(
        "Puts a JSON text together from fragments: an object's member \"$fragment\" is replaced by the "
        "members of "
        "the fragment that it names. Exit status: 0, or 1 with the place of the fault on standard error.",
        ' ', ASSEMBLE_VERSION_TAG, true);
    line.setExceptionHandling(false);
    const Value json("", "json", "the text", false, "", "FILE", line);
    const Value cpp("", "cpp", "C++ source that defines commandFileSchema()", false, "", "FILE", line);
    const Value dependencies("", "depfile", "Makefile rule that lists the fragments read", false, "", "FILE",
                             line);
    const Positional folder("folder", "folder of the fragments", true, "", "FOLDER", line);
    const Positional root("fragment", "path of the fragment to begin with, relative to the folder", true, "",
                          "FRAGMENT", line);
    line.parse(argc, argv);
    write(assembly::assemble(folder.getValue(), root.getValue()),
          {json.getValue(), cpp.getValue(), dependencies.getValue()});
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    return toolMain([&] { return run(argc, argv); }, fail,
                    "assemble_schema [--json FILE] [--cpp FILE] [--depfile FILE] FOLDER FRAGMENT");
}
