#pragma once

#include <nlohmann/json.hpp>

#include "jsv/location.hpp"
#include "jsv/schema_keyword.hpp"
#include "jsv/validation_context.hpp"

namespace jsv {

/// Makes the keyword of one member of a schema object. Its parameter is checked when it is applied.
/// @param place where the schema object stands.
/// @throws InvalidSchemaException at the member, "The keyword '" + name + "' is not supported."; at
/// "exclusiveMinimum" or "exclusiveMaximum", where the limit's switch is no boolean, "This keyword requires a
/// boolean parameter."
[[nodiscard]] SchemaKeyword makeKeyword(const ValidationContext& context, const nlohmann::json& schemaObject,
                                        const Place& place,
                                        const nlohmann::json::object_t::value_type& member);

} // namespace jsv
