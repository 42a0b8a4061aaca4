#pragma once

#include "jsv/keywords/apply.hpp"
#include "jsv/location.hpp"
#include "jsv/schema_keyword.hpp"

namespace jsv {

// Keywords about the members of an object and the elements of an array: required, optional, properties,
// items; and the walk into a nested schema that they ask for. `keep` and `apply` as in values.hpp; `owner` is
// the schema of the keyword.

[[nodiscard]] NameList keep(const RequiredKeyword& keyword, const SchemaSite& at);
[[nodiscard]] NameList keep(const OptionalKeyword& keyword, const SchemaSite& at);
[[nodiscard]] PropertySchemas keep(const PropertiesKeyword& keyword, const SchemaSite& at);
[[nodiscard]] ItemsSchema keep(const ItemsKeyword& keyword, const SchemaSite& at);

void apply(const RequiredKeyword& keyword, const Site& site);
void apply(const OptionalKeyword& keyword, const Site& site);
void apply(const PropertiesKeyword& keyword, const Site& site);
void apply(const ItemsKeyword& keyword, const Site& site);
void apply(const SubschemaWalk& request, const Site& site);

} // namespace jsv
