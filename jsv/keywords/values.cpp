#include "jsv/keywords/values.hpp"

#include <algorithm>
#include <vector>

#include "jsv/exceptions.hpp"
#include "jsv/parameter_checks.hpp"
#include "jsv/walk.hpp"

namespace jsv {

namespace {

std::vector<std::string> copyOf(const TextList& texts) {
    std::vector<std::string> copy;
    copy.reserve(texts.size());
    for (const std::string* text : texts) {
        copy.push_back(*text);
    }
    return copy;
}

/// Reports `Mismatch` where a number does not hold against the limit, and the trace in any case.
template <typename Mismatch, typename Trace, typename Holds>
void applyLimit(double limit, const Site& site, Holds holds) {
    if (site.datum.is_number() && !holds(site.datum.get<double>(), limit)) {
        site.walk.report(site.place, [&] { return Mismatch{limit}; });
    }
    site.walk.trace(site.place, [&] { return Trace{limit}; });
}

} // namespace

bool isAllowed(const nlohmann::json& datum, const AllowedTexts& allowed) {
    if (allowed.lookUp.size() > 0) {
        return datum.is_string() &&
               allowed.lookUp.find(datum.get_ref<const std::string&>()) != NameIndex::unknown;
    }
    return std::any_of(allowed.texts.begin(), allowed.texts.end(),
                       [&](const std::string* text) { return isText(datum, *text); });
}

TextList textsOf(const nlohmann::json::array_t& array) {
    TextList texts;
    texts.reserve(array.size());
    for (const nlohmann::json& element : array) {
        texts.push_back(&element.get_ref<const std::string&>());
    }
    return texts;
}

const std::string* keep(const ConstKeyword& keyword, const SchemaSite& at) {
    return &requireString(*keyword.parameter, at.place);
}

void apply(const ConstKeyword& keyword, const Site& site) {
    if (!isText(site.datum, **keyword.kept)) {
        site.walk.report(site.place, [&] { return ConstMismatch{**keyword.kept}; });
    }
}

AllowedTexts keep(const EnumKeyword& keyword, const SchemaSite& at) {
    constexpr std::size_t longList = 8;
    AllowedTexts allowed{textsOf(requireArray(*keyword.parameter, at.place)), {}};
    if (allowed.texts.size() > longList) {
        for (const std::string* text : allowed.texts) {
            allowed.lookUp.add(*text);
        }
    }
    return allowed;
}

void apply(const EnumKeyword& keyword, const Site& site) {
    if (!isAllowed(site.datum, *keyword.kept)) {
        site.walk.report(site.place, [&] { return EnumMismatch{copyOf(keyword.kept->texts)}; });
    }
}

double keep(const MinimumKeyword& keyword, const SchemaSite& at) {
    return requireNumber(*keyword.parameter, at.place);
}

void apply(const MinimumKeyword& keyword, const Site& site) {
    applyLimit<BelowMinimum, MinimumTrace>(*keyword.kept, site,
                                           [](double datum, double limit) { return datum >= limit; });
}

double keep(const MaximumKeyword& keyword, const SchemaSite& at) {
    return requireNumber(*keyword.parameter, at.place);
}

void apply(const MaximumKeyword& keyword, const Site& site) {
    applyLimit<AboveMaximum, MaximumTrace>(*keyword.kept, site,
                                           [](double datum, double limit) { return datum <= limit; });
}

double keep(const ExclusiveMinimumKeyword& keyword, const SchemaSite& at) {
    return requireNumber(*keyword.parameter, at.place);
}

void apply(const ExclusiveMinimumKeyword& keyword, const Site& site) {
    applyLimit<NotAboveExclusiveMinimum, ExclusiveMinimumTrace>(
        *keyword.kept, site, [](double datum, double limit) { return datum > limit; });
}

double keep(const ExclusiveMaximumKeyword& keyword, const SchemaSite& at) {
    return requireNumber(*keyword.parameter, at.place);
}

void apply(const ExclusiveMaximumKeyword& keyword, const Site& site) {
    applyLimit<NotBelowExclusiveMaximum, ExclusiveMaximumTrace>(
        *keyword.kept, site, [](double datum, double limit) { return datum < limit; });
}

SchemaType keep(const TypeKeyword& keyword, const SchemaSite& at) {
    const SchemaType type = typeNamed(requireString(*keyword.parameter, at.place));
    if (type == SchemaType::unknown) {
        throw InvalidSchemaException(at.place.location(), "The provided type is invalid.");
    }
    return type;
}

void apply(const TypeKeyword& keyword, const Site& site) {
    if (!satisfies(typeOf(site.datum), *keyword.kept)) {
        site.walk.report(site.place, [&] { return TypeMismatch{*keyword.kept}; });
    }
}

CheckedParameter keep(const FormatKeyword& keyword, const SchemaSite& at) {
    if (requireString(*keyword.parameter, at.place) != "uri") {
        throw InvalidSchemaException(at.place.location(), "Only the 'uri' format is currently supported.");
    }
    return {};
}

void apply(const FormatKeyword& keyword, const Site& site) {
    site.walk.trace(site.place, [&] { return FormatTrace{keyword.parameter->get<std::string>()}; });
}

CheckedParameter keep(const DefaultKeyword& keyword, const SchemaSite& at) {
    const nlohmann::json& value = *keyword.parameter;
    if (!value.is_number() && !value.is_string() && !value.is_boolean()) {
        throw InvalidSchemaException(at.place.location(),
                                     "Only string, numeric, and boolean default values are supported.");
    }
    return {};
}

void apply(const DefaultKeyword& keyword, const Site& site) {
    site.walk.trace(site.place, [&] { return DefaultTrace{keyword.parameter->dump()}; });
}

CheckedParameter keep(const DescriptionKeyword& keyword, const SchemaSite& at) {
    requireString(*keyword.parameter, at.place);
    return {};
}

void apply(const DescriptionKeyword& keyword, const Site& site) {
    site.walk.trace(site.place, [&] { return DescriptionTrace{keyword.parameter->get<std::string>()}; });
}

CheckedParameter keep(const UnitsKeyword& keyword, const SchemaSite& at) {
    requireString(*keyword.parameter, at.place);
    return {};
}

void apply(const UnitsKeyword& keyword, const Site& site) {
    site.walk.trace(site.place, [&] { return UnitsTrace{keyword.parameter->get<std::string>()}; });
}

bool keep(const AutoexpandKeyword& keyword, const SchemaSite& at) {
    return requireBoolean(*keyword.parameter, at.place);
}

void apply(const AutoexpandKeyword& keyword, const Site& site) {
    site.walk.trace(site.place, [&] { return AutoexpandTrace{*keyword.kept}; });
}

CheckedParameter keep(const IgnoredKeyword& /*keyword*/, const SchemaSite& /*at*/) {
    return {};
}

void apply(const IgnoredKeyword& /*keyword*/, const Site& /*site*/) {}

} // namespace jsv
