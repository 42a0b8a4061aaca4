// What no storing can do without: a result file with the text of a file, created, written, flushed and
// closed.

#include "bench/bare_file.hpp"
#include "bench/support.hpp"

int main(int argc, char** argv) {
    return bench::run(argc, argv, 2, "TEXT_FILE RESULT_FILE", [](const std::vector<std::string>& arguments) {
        bench::writeBareFile(arguments[1], bench::readFile(arguments[0]));
    });
}
