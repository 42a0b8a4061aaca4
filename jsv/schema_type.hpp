#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace jsv {

/// Types of data as schemas name them; the values are part of the findings.
enum class SchemaType : int {
    unknown = 0,
    integer = 1,
    number = 2,
    string = 3,
    object = 4,
    array = 5,
    boolean = 6
};

/// The type of a name, by exact comparison; `unknown` for any other name.
[[nodiscard]] SchemaType typeNamed(std::string_view name);

/// "unknown", "integer", "number", "string", "object", "array" or "boolean".
[[nodiscard]] std::string_view nameOf(SchemaType type);

/// The type of a value: `integer` for whole numbers, `number` for floating-point ones, `unknown` for null.
[[nodiscard]] inline SchemaType typeOf(const nlohmann::json& value) {
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

/// Whether a value of one type is good where another is required: the same type, or an integer for a number.
/// Nothing satisfies `unknown`.
[[nodiscard]] constexpr bool satisfies(SchemaType actual, SchemaType required) {
    if (required == SchemaType::unknown) {
        return false;
    }
    return actual == required || (required == SchemaType::number && actual == SchemaType::integer);
}

} // namespace jsv
