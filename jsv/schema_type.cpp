#include "jsv/schema_type.hpp"

#include <array>
#include <cstddef>

namespace jsv {

namespace {

constexpr std::array<std::string_view, 7> names = {"unknown", "integer", "number", "string",
                                                   "object",  "array",   "boolean"};

} // namespace

SchemaType typeNamed(std::string_view name) {
    for (std::size_t code = 0; code < names.size(); ++code) {
        if (names[code] == name) {
            return static_cast<SchemaType>(code);
        }
    }
    return SchemaType::unknown;
}

std::string_view nameOf(SchemaType type) {
    return names.at(static_cast<std::size_t>(type));
}

} // namespace jsv
