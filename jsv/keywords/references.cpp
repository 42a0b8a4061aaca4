#include "jsv/keywords/references.hpp"

#include <string>

#include "jsv/exceptions.hpp"
#include "jsv/parameter_checks.hpp"
#include "jsv/walk.hpp"

namespace jsv {

namespace {

using Json = nlohmann::json;

Json::json_pointer pointerFrom(const std::string& text, const Place& place) {
    try {
        return Json::json_pointer(text);
    } catch (const Json::parse_error&) {
        throw InvalidSchemaException(place.location(), "This JSON pointer is invalid.");
    }
}

/// The referenced value; null where the reference leads nowhere.
const Json* valueAt(const Json& document, const Json::json_pointer& pointer) {
    try {
        return &document.at(pointer);
    } catch (const Json::exception&) {
        return nullptr;
    }
}

void collectNames(const Json& array, const std::string& property,
                  std::unordered_set<std::string_view>& names) {
    for (const Json& element : array) {
        if (!element.is_object()) {
            continue;
        }
        const auto name = element.find(property);
        if (name != element.end() && name->is_string()) {
            names.insert(name->get_ref<const std::string&>());
        }
    }
}

} // namespace

ReferencedNames keep(const RequiredInKeyword& keyword, const SchemaSite& at) {
    requireObject(*keyword.parameter, at.place);
    const std::string propertyKey = "itemProperty";
    const std::string referenceKey = "$array_ref";
    const Place referencePlace(at.place, referenceKey);
    ReferencedNames kept;
    kept.itemProperty = &requireString(keyword.parameter->at(propertyKey), Place(at.place, propertyKey));
    kept.arrayReference = &requireString(keyword.parameter->at(referenceKey), referencePlace);
    const Json* const array = valueAt(*keyword.data, pointerFrom(*kept.arrayReference, referencePlace));
    if (array != nullptr && array->is_array()) {
        collectNames(*array, *kept.itemProperty, kept.names);
    }
    return kept;
}

void apply(const RequiredInKeyword& keyword, const Site& site) {
    const ReferencedNames& referenced = *keyword.kept;
    const Json& datum = site.datum;
    if (!datum.is_string() || referenced.names.count(datum.get_ref<const std::string&>()) == 0) {
        site.walk.report(site.place, [&] {
            return RequiredInMismatch{*referenced.itemProperty, *referenced.arrayReference};
        });
    }
    site.walk.trace(site.place, [&] {
        return RequiredInTrace{*referenced.itemProperty, *referenced.arrayReference};
    });
}

} // namespace jsv
