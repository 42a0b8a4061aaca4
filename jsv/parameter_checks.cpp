#include "jsv/parameter_checks.hpp"

#include "jsv/exceptions.hpp"
#include "jsv/schema_type.hpp"

namespace jsv {

namespace {

void requireType(const nlohmann::json& value, const Place& place, SchemaType required) {
    if (!satisfies(typeOf(value), required)) {
        throw InvalidTypeSchemaException(place.location(), required);
    }
}

} // namespace

double requireNumber(const nlohmann::json& value, const Place& place) {
    requireType(value, place, SchemaType::number);
    return value.get<double>();
}

const std::string& requireString(const nlohmann::json& value, const Place& place) {
    requireType(value, place, SchemaType::string);
    return value.get_ref<const std::string&>();
}

const nlohmann::json::object_t& requireObject(const nlohmann::json& value, const Place& place) {
    requireType(value, place, SchemaType::object);
    return value.get_ref<const nlohmann::json::object_t&>();
}

const nlohmann::json::array_t& requireArray(const nlohmann::json& value, const Place& place) {
    requireType(value, place, SchemaType::array);
    return value.get_ref<const nlohmann::json::array_t&>();
}

bool requireBoolean(const nlohmann::json& value, const Place& place) {
    requireType(value, place, SchemaType::boolean);
    return value.get<bool>();
}

} // namespace jsv
