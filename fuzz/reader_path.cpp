// Any path, index and key over a fixed document with values of every kind, through every query.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "dataio/json_reader.hpp"

namespace {

constexpr const char* document = R"({
    "": {"": [1]},
    "a": {"b": 2.9, "c": "text", "d": [1, 2.5], "e": [], "f": {}, "g": null, "h": true, "big": 1e300},
    "list": [{"x": 1, "y": "s", "z": [1, 2], "inner": [{"x": 0.5, "y": "t"}, {}, 7]}, {}, null, 3, "four"],
    "mixed": [1, "two", false],
    "0": 0
})";

const dataio::JSONReader& reader() {
    static const dataio::JSONReader instance(document);
    return instance;
}

template <typename Query>
void attempt(Query query) {
    try {
        static_cast<void>(query(reader()));
    } catch (const std::exception&) {
        // Refusals are fine; what must not happen is a crash or a changed document.
    }
}

struct Input {
    std::string path;
    std::string middle;
    std::string key;
    int index = 0;
    int index2 = 0;
};

int indexFrom(char byte) {
    const int value = static_cast<unsigned char>(byte);
    return value < 128 ? value : value - 256;
}

/// Two bytes give the indices, the rest is path, middle and key, a line each.
Input inputFrom(const std::string& bytes) {
    Input input;
    if (bytes.size() < 2) {
        return input;
    }
    input.index = indexFrom(bytes[0]);
    input.index2 = indexFrom(bytes[1]);
    const std::size_t first = bytes.find('\n', 2);
    const std::size_t second = first == std::string::npos ? first : bytes.find('\n', first + 1);
    input.path = bytes.substr(2, first == std::string::npos ? first : first - 2);
    if (first != std::string::npos) {
        input.middle = bytes.substr(first + 1, second == std::string::npos ? second : second - first - 1);
    }
    if (second != std::string::npos) {
        input.key = bytes.substr(second + 1);
    }
    return input;
}

using Reader = dataio::JSONReader;

void queryPath(const Input& in) {
    bool found = false;
    attempt([&](const Reader& r) { return r.hasPaths({in.path}); });
    attempt([&](const Reader& r) { return r.getSubBlockNames(in.path); });
    attempt([&](const Reader& r) { return r.getBool(in.path, found); });
    attempt([&](const Reader& r) { return r.getInt(in.path, found); });
    attempt([&](const Reader& r) { return r.getIntVector(in.path, found); });
    attempt([&](const Reader& r) { return r.getDouble(in.path, found); });
    attempt([&](const Reader& r) { return r.getDoubleVector(in.path, found); });
    attempt([&](const Reader& r) { return r.getString(in.path, found); });
    attempt([&](const Reader& r) { return r.getStringVector(in.path, found); });
    attempt([&](const Reader& r) { return r.getArraySize(in.path, found); });
}

void queryIndexed(const Input& in) {
    bool found = false;
    attempt([&](const Reader& r) { return r.getIntVector(in.path, in.index, in.key, found); });
    attempt([&](const Reader& r) { return r.getArraySize(in.path, in.index, in.key, found); });
    attempt([&](const Reader& r) { return r.getInt(in.path, in.index, in.key, found); });
    attempt([&](const Reader& r) { return r.getDouble(in.path, in.index, in.key, found); });
    attempt([&](const Reader& r) { return r.getString(in.path, in.index, in.key, found); });
    attempt([&](const Reader& r) { return r.getDoubleVector(in.path, in.index, in.key, found); });
    attempt(
        [&](const Reader& r) { return r.getDouble(in.path, in.index, in.middle, in.index2, in.key, found); });
    attempt(
        [&](const Reader& r) { return r.getString(in.path, in.index, in.middle, in.index2, in.key, found); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::cerr.setstate(std::ios_base::failbit); // the not-found lines would drown everything else
    const std::string before = reader().dump();
    const Input input = inputFrom(std::string(data, data + size));
    queryPath(input);
    queryIndexed(input);
    if (reader().dump() != before) {
        throw std::logic_error("a query changed the document");
    }
    return 0;
}
