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
[[nodiscard]] SchemaType typeOf(const nlohmann::json& value);

/// Whether a value of one type is good where another is required: the same type, or an integer for a number.
/// Nothing satisfies `unknown`.
[[nodiscard]] bool satisfies(SchemaType actual, SchemaType required);

} // namespace jsv
