#pragma once

#include <string>

#include "jsv/keywords/apply.hpp"
#include "jsv/schema_keyword.hpp"

namespace jsv {

// Keywords about the datum itself: const, enum, the limits, type; and those that only tell about it: format,
// default, description, units, autoexpand and the ignored ones. `keep` checks a parameter and gives what is
// kept of it; `apply` applies the keyword to a datum.

[[nodiscard]] const std::string* keep(const ConstKeyword& keyword, const SchemaSite& at);
[[nodiscard]] AllowedTexts keep(const EnumKeyword& keyword, const SchemaSite& at);
[[nodiscard]] double keep(const MinimumKeyword& keyword, const SchemaSite& at);
[[nodiscard]] double keep(const MaximumKeyword& keyword, const SchemaSite& at);
[[nodiscard]] double keep(const ExclusiveMinimumKeyword& keyword, const SchemaSite& at);
[[nodiscard]] double keep(const ExclusiveMaximumKeyword& keyword, const SchemaSite& at);
[[nodiscard]] SchemaType keep(const TypeKeyword& keyword, const SchemaSite& at);
[[nodiscard]] CheckedParameter keep(const FormatKeyword& keyword, const SchemaSite& at);
[[nodiscard]] CheckedParameter keep(const DefaultKeyword& keyword, const SchemaSite& at);
[[nodiscard]] CheckedParameter keep(const DescriptionKeyword& keyword, const SchemaSite& at);
[[nodiscard]] CheckedParameter keep(const UnitsKeyword& keyword, const SchemaSite& at);
[[nodiscard]] bool keep(const AutoexpandKeyword& keyword, const SchemaSite& at);
[[nodiscard]] CheckedParameter keep(const IgnoredKeyword& keyword, const SchemaSite& at);

void apply(const ConstKeyword& keyword, const Site& site);
void apply(const EnumKeyword& keyword, const Site& site);
void apply(const MinimumKeyword& keyword, const Site& site);
void apply(const MaximumKeyword& keyword, const Site& site);
void apply(const ExclusiveMinimumKeyword& keyword, const Site& site);
void apply(const ExclusiveMaximumKeyword& keyword, const Site& site);
void apply(const TypeKeyword& keyword, const Site& site);
void apply(const FormatKeyword& keyword, const Site& site);
void apply(const DefaultKeyword& keyword, const Site& site);
void apply(const DescriptionKeyword& keyword, const Site& site);
void apply(const UnitsKeyword& keyword, const Site& site);
void apply(const AutoexpandKeyword& keyword, const Site& site);
void apply(const IgnoredKeyword& keyword, const Site& site);

/// Whether a datum is a text and this one.
[[nodiscard]] inline bool isText(const nlohmann::json& datum, const std::string& text) {
    return datum.is_string() && datum.get_ref<const std::string&>() == text;
}

/// Whether a datum is one of the allowed texts.
[[nodiscard]] bool isAllowed(const nlohmann::json& datum, const AllowedTexts& allowed);

/// The elements of an array as texts.
/// @throws nlohmann::json::type_error an element is no string.
[[nodiscard]] TextList textsOf(const nlohmann::json::array_t& array);

} // namespace jsv
