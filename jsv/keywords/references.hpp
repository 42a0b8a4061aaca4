#pragma once

#include "jsv/keywords/apply.hpp"
#include "jsv/location.hpp"
#include "jsv/schema_keyword.hpp"

namespace jsv {

// The keyword about names that are defined elsewhere in the data: requiredIn. `keep` and `apply` as in
// values.hpp.

[[nodiscard]] ReferencedNames keep(const RequiredInKeyword& keyword, const SchemaSite& at);

void apply(const RequiredInKeyword& keyword, const Site& site);

} // namespace jsv
