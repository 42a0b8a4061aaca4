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

TextSet textsIn(const Json& array, const std::string& property) {
    TextSet texts;
    for (const Json& element : array) {
        if (!element.is_object()) {
            continue;
        }
        const auto text = element.find(property);
        if (text != element.end() && text->is_string()) {
            texts.add(text->get_ref<const std::string&>());
        }
    }
    return texts;
}

const TextSet* lookUp(ReferencedTexts& known, const Json& array, const std::string& property) {
    const auto [entry, isNew] = known.try_emplace({&array, property});
    if (isNew) {
        entry->second = textsIn(array, property);
    }
    return &entry->second;
}

} // namespace

bool isNamed(const Json& datum, const ReferencedNames& referenced) {
    return referenced.names != nullptr && datum.is_string() &&
           referenced.names->find(datum.get_ref<const std::string&>()) != TextSet::unknown;
}

ReferencedNames keep(const RequiredInKeyword& keyword, const SchemaSite& at) {
    requireObject(*keyword.parameter, at.place);
    const std::string propertyKey = "itemProperty";
    const std::string referenceKey = "$array_ref";
    const Place referencePlace(at.place, referenceKey);
    const std::string& property =
        requireString(keyword.parameter->at(propertyKey), Place(at.place, propertyKey));
    const std::string& reference = requireString(keyword.parameter->at(referenceKey), referencePlace);
    const Json* const array = valueAt(*keyword.data, pointerFrom(reference, referencePlace));
    const bool leadsToArray = array != nullptr && array->is_array();
    return {&property, &reference,
            leadsToArray ? lookUp(at.owner.referencedTexts(), *array, property) : nullptr};
}

void apply(const RequiredInKeyword& keyword, const Site& site) {
    const ReferencedNames& referenced = *keyword.kept;
    if (!isNamed(site.datum, referenced)) {
        site.walk.report(site.place, [&] {
            return RequiredInMismatch{*referenced.itemProperty, *referenced.arrayReference};
        });
    }
    site.walk.trace(site.place, [&] {
        return RequiredInTrace{*referenced.itemProperty, *referenced.arrayReference};
    });
}

} // namespace jsv
