// Any text as schema over data of every kind.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/jsv_schemas.hpp"
#include "fuzz/jsv_target.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::validateTwice(fuzz::data, std::string(data, data + size));
    return 0;
}
