#pragma once

#include "jsv/keywords/apply.hpp"
#include "jsv/location.hpp"
#include "jsv/schema_keyword.hpp"

namespace jsv {

// Keywords about groups of alternatives: oneOf, and allOf, a list of such groups. `keep` and `apply` as in
// values.hpp; `owner` is the schema of the keyword.

[[nodiscard]] AlternativeGroup keep(const OneOfKeyword& keyword, const SchemaSite& at);
[[nodiscard]] AlternativeGroups keep(const AllOfKeyword& keyword, const SchemaSite& at);

void apply(OneOfKeyword& keyword, const Place& place, const Site& site);
void apply(AllOfKeyword& keyword, const Site& site);

} // namespace jsv
