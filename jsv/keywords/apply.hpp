#pragma once

#include <nlohmann/json.hpp>

#include "jsv/location.hpp"
#include "jsv/name_index.hpp"
#include "jsv/schema_node.hpp"

namespace jsv {

class Walk;

/// The datum to which a keyword is applied, its place and members, and the walk that hears of the findings.
struct Site {
    Walk& walk;
    const nlohmann::json& datum;
    const Place& place;
    Members& members;
};

/// Where a keyword stands in the schema: its place and the schema object that it belongs to.
struct SchemaSite {
    const Place& place;
    SchemaNode& owner;
};

/// Checks the parameter of a keyword of the schema `owner`, if that was not done before, and keeps what it
/// needs of it.
/// @throws InvalidSchemaException the parameter is at fault.
void checkParameter(SchemaNode::BuiltKeyword& built, SchemaNode& owner);

/// Applies a keyword, whose parameter has been checked, to a datum.
/// @throws InvalidSchemaException a fault of a schema inside the keyword's parameter.
void apply(SchemaNode::BuiltKeyword& built, const Site& site);

} // namespace jsv
