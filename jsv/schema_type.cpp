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

SchemaType typeOf(const nlohmann::json& value) {
    switch (value.type()) {
        case nlohmann::json::value_t::number_integer:
        case nlohmann::json::value_t::number_unsigned:
            return SchemaType::integer;
        case nlohmann::json::value_t::number_float:
            return SchemaType::number;
        case nlohmann::json::value_t::string:
            return SchemaType::string;
        case nlohmann::json::value_t::object:
            return SchemaType::object;
        case nlohmann::json::value_t::array:
            return SchemaType::array;
        case nlohmann::json::value_t::boolean:
            return SchemaType::boolean;
        case nlohmann::json::value_t::null:
        case nlohmann::json::value_t::binary:
        case nlohmann::json::value_t::discarded:
            break;
    }
    return SchemaType::unknown;
}

bool satisfies(SchemaType actual, SchemaType required) {
    if (required == SchemaType::unknown) {
        return false;
    }
    return actual == required || (required == SchemaType::number && actual == SchemaType::integer);
}

} // namespace jsv
