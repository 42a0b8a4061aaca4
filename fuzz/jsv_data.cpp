// Any text as data under a schema with all keywords.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/jsv_schemas.hpp"
#include "fuzz/jsv_target.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::validateTwice(std::string(data, data + size), fuzz::schema);
    return 0;
}
