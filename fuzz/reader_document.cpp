// Any text as the source of the reader; the queries of a program that stores the model.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>

#include "dataio/json_reader.hpp"

namespace {

/// The stored text is a fixed point: reading it back and exporting it again gives the same text.
void requireStableDump(const dataio::JSONReader& reader) {
    const std::string text = reader.dump();
    if (dataio::JSONReader(text).dump() != text) {
        throw std::logic_error("the exported text changes when it is read back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    try {
        const dataio::JSONReader reader(text);
        requireStableDump(reader);
        static_cast<void>(reader.hasPaths({"SETUP/ORVAMD"}));
        static_cast<void>(reader.getSubBlockNames("SETUP"));
    } catch (const std::logic_error&) {
        throw;
    } catch (const std::exception&) {
        // Refusals are fine; what must not happen is a crash.
    }
    return 0;
}
