#pragma once

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    if (!file) {
        throw std::runtime_error("cannot open " + path);
    }
    std::string text(static_cast<std::size_t>(file.tellg()), '\0');
    file.seekg(0);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return text;
}

/// Processor time of the process so far, user and system: what other processes do does not count.
inline double cpuSeconds() {
    std::timespec now{};
    if (::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now) != 0) {
        throw std::runtime_error("no processor clock");
    }
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Seconds that an action takes.
template <typename Action>
double timed(Action action) {
    const double start = cpuSeconds();
    action();
    return cpuSeconds() - start;
}

/// @throws std::invalid_argument there are no values.
inline double median(std::vector<double> values) {
    if (values.empty()) {
        throw std::invalid_argument("median of nothing");
    }
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    if (values.size() % 2 == 1) {
        return *middle;
    }
    return (*middle + *std::max_element(values.begin(), middle)) / 2;
}

/// Runs a program's work on its arguments; a failure is told and gives status 1, wrong usage status 2.
template <typename Work>
int run(int argc, char** argv, std::size_t fewest, const char* usage, Work work) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() < fewest) {
        std::cerr << "usage: " << argv[0] << " " << usage << '\n';
        return 2;
    }
    try {
        work(arguments);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << argv[0] << ": " << failure.what() << '\n';
        return 1;
    }
}

} // namespace bench
