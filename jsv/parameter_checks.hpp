#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "jsv/location.hpp"

namespace jsv {

// Checks of a keyword's parameter, or of a value inside it, which stands at `place` of the schema. Each gives
// the value as what it was required to be. All throw InvalidTypeSchemaException: "This keyword requires " +
// article + " " + type name + " parameter."

/// Integers pass too.
double requireNumber(const nlohmann::json& value, const Place& place);
const std::string& requireString(const nlohmann::json& value, const Place& place);
const nlohmann::json::object_t& requireObject(const nlohmann::json& value, const Place& place);
const nlohmann::json::array_t& requireArray(const nlohmann::json& value, const Place& place);
bool requireBoolean(const nlohmann::json& value, const Place& place);

} // namespace jsv
