// Validates a file as the program does; the report is written, but goes nowhere. With --count it prints the
// verdict and the number of lines of the report.

#include <fstream>
#include <streambuf>

#include "bench/support.hpp"
#include "jsv/validate.hpp"

namespace {

/// Takes everything and keeps nothing, as /dev/null does; counts lines if it is to.
class Sink : public std::streambuf {
public:
    explicit Sink(bool countLines) : counts(countLines) {}
    [[nodiscard]] std::streamsize lines() const { return lineCount; }

protected:
    std::streamsize xsputn(const char* text, std::streamsize size) override {
        if (counts) {
            lineCount += std::count(text, text + size, '\n');
        }
        return size;
    }
    int_type overflow(int_type character) override {
        lineCount += traits_type::eq_int_type(character, '\n') ? 1 : 0;
        return traits_type::not_eof(character);
    }

private:
    bool counts;
    std::streamsize lineCount = 0;
};

std::ifstream open(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("cannot open " + path);
    }
    return file;
}

} // namespace

int main(int argc, char** argv) {
    return bench::run(argc, argv, 2, "[--count] SCHEMA DATA", [](const std::vector<std::string>& arguments) {
        const bool countLines = arguments.front() == "--count";
        std::ifstream schema = open(arguments.at(countLines ? 1 : 0));
        std::ifstream data = open(arguments.at(countLines ? 2 : 1));
        Sink sink(countLines);
        std::ostream report(&sink);
        const int verdict = jsv::validate({&report}, data, schema);
        if (countLines) {
            std::cout << "{\"verdict\": " << verdict << ", \"lines\": " << sink.lines() << "}\n";
        }
    });
}
