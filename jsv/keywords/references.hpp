#pragma once

#include "jsv/keywords/apply.hpp"
#include "jsv/location.hpp"
#include "jsv/schema_keyword.hpp"

namespace jsv {

// The keyword about names that are defined elsewhere in the data: requiredIn. `keep` and `apply` as in
// values.hpp.

[[nodiscard]] ReferencedNames keep(const RequiredInKeyword& keyword, const SchemaSite& at);

void apply(const RequiredInKeyword& keyword, const Site& site);

/// Whether a datum is one of the texts that a reference leads to.
[[nodiscard]] bool isNamed(const nlohmann::json& datum, const ReferencedNames& referenced);

} // namespace jsv
