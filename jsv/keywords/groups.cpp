#include "jsv/keywords/groups.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "jsv/exceptions.hpp"
#include "jsv/keywords/group_choice.hpp"
#include "jsv/parameter_checks.hpp"
#include "jsv/walk.hpp"

namespace jsv {

namespace {

using Json = nlohmann::json;

// ---- What an alternative speaks of ----

constexpr std::array<std::string_view, 11> keywordsAboutMembersOnly = {
    "required",   "optional", "properties", "description",      "units",           "default",
    "autoexpand", "format",   "$schema",    "exclusiveMinimum", "exclusiveMaximum"};

bool speaksOfMembersOnly(const Json& alternative, std::size_t depth);

bool allSpeakOfMembersOnly(const Json& alternatives, std::size_t depth) {
    return alternatives.is_array() &&
           std::all_of(alternatives.begin(), alternatives.end(),
                       [&](const Json& each) { return speaksOfMembersOnly(each, depth); });
}

bool allGroupsSpeakOfMembersOnly(const Json& groups, std::size_t depth) {
    return groups.is_array() && std::all_of(groups.begin(), groups.end(), [&](const Json& each) {
               return each.is_object() && each.size() == 1 && each.begin().key() == "oneOf" &&
                      allSpeakOfMembersOnly(each.front(), depth);
           });
}

/// False as well where the schema is at fault, so that the fault surfaces when the group is applied.
bool speaksOfMembersOnly(const Json& alternative, std::size_t depth) {
    if (!alternative.is_object() || depth > SchemaNode::maximumDepth) {
        return false;
    }
    for (const auto& [keyword, parameter] : alternative.get_ref<const Json::object_t&>()) {
        const bool membersOnly =
            keyword == "oneOf"   ? allSpeakOfMembersOnly(parameter, depth + 1)
            : keyword == "allOf" ? allGroupsSpeakOfMembersOnly(parameter, depth + 1)
                                 : std::find(keywordsAboutMembersOnly.begin(), keywordsAboutMembersOnly.end(),
                                             std::string_view(keyword)) != keywordsAboutMembersOnly.end();
        if (!membersOnly) {
            return false;
        }
    }
    return true;
}

// ---- What tells the alternatives of a group apart ----

/// Names that an alternative requires, each once. What is no list of names is left to the keyword's own
/// check.
NameList requiredNames(const Json& alternative, NameIndex& index) {
    NameList names;
    const auto required = alternative.find("required");
    if (required == alternative.end() || !required->is_array()) {
        return names;
    }
    names.reserve(required->size());
    for (const Json& text : *required) {
        if (text.is_string()) {
            const Name name = index.add(text.get_ref<const std::string&>());
            if (!contains(names, name)) {
                names.push_back(name);
            }
        }
    }
    return names;
}

/// The text to which an alternative fixes a member; null if it does not.
const std::string* fixedText(const Json& alternative, const std::string& member) {
    const auto properties = alternative.find("properties");
    if (properties == alternative.end() || !properties->is_object()) {
        return nullptr;
    }
    const auto schema = properties->find(member);
    if (schema == properties->end() || !schema->is_object()) {
        return nullptr;
    }
    const auto text = schema->find("const");
    return text != schema->end() && text->is_string() ? &text->get_ref<const std::string&>() : nullptr;
}

void findSelectors(AlternativeGroup& group, NameIndex& index) {
    const auto fixes = [](const std::string& member) {
        return
            [&member](const Alternative& each) { return fixedText(each.schema->value(), member) != nullptr; };
    };
    const Json& first = group.alternatives.front().schema->value();
    const auto properties = first.find("properties");
    if (properties == first.end() || !properties->is_object()) {
        return;
    }
    for (const auto& property : properties->get_ref<const Json::object_t&>()) {
        if (std::all_of(group.alternatives.begin(), group.alternatives.end(), fixes(property.first))) {
            group.selectors.push_back(index.add(property.first));
        }
    }
}

void keepSelectorValues(AlternativeGroup& group) {
    for (Alternative& alternative : group.alternatives) {
        alternative.selectorValues.reserve(group.selectors.size());
        for (const Name& selector : group.selectors) {
            alternative.selectorValues.push_back(fixedText(alternative.schema->value(), *selector.text));
        }
    }
}

AlternativeGroup groupFrom(const Json::array_t& elements, const Place& place, SchemaNode& owner) {
    AlternativeGroup group;
    NameIndex& index = owner.names();
    std::size_t number = 0;
    group.alternatives.reserve(elements.size());
    for (const Json& element : elements) {
        group.alternatives.push_back(
            {OwnedSchema(new SchemaNode(element, Place(place, number), owner, SchemaNode::Datum::same)),
             requiredNames(element, index),
             {}});
        group.speaksOfMembersOnly = group.speaksOfMembersOnly && speaksOfMembersOnly(element, 0);
        ++number;
    }
    if (!group.alternatives.empty()) {
        findSelectors(group, index);
        keepSelectorValues(group);
    }
    return group;
}

/// The elements of a list of alternatives, each an object.
const Json::array_t& requireAlternatives(const Json& parameter, const Place& place) {
    const Json::array_t& elements = requireArray(parameter, place);
    std::size_t index = 0;
    for (const Json& element : elements) {
        requireObject(element, Place(place, index));
        ++index;
    }
    return elements;
}

/// Checks an element of "allOf".
void requireGroup(const Json& element, const Place& place) {
    const Json::object_t& members = requireObject(element, place);
    if (members.size() != 1) {
        throw InvalidSchemaException(place.location(), "Only single items are supported.");
    }
    const auto& [name, alternatives] = *members.begin();
    if (name != "oneOf") {
        throw InvalidSchemaException(place.location(), "Only a single 'oneOf' item is supported here.");
    }
    requireAlternatives(alternatives, Place(place, name));
}

} // namespace

AlternativeGroup keep(const OneOfKeyword& keyword, const SchemaSite& at) {
    return groupFrom(requireAlternatives(*keyword.parameter, at.place), at.place, at.owner);
}

AlternativeGroups keep(const AllOfKeyword& keyword, const SchemaSite& at) {
    const Json::array_t& elements = requireArray(*keyword.parameter, at.place);
    for (std::size_t index = 0; index < elements.size(); ++index) {
        requireGroup(elements[index], Place(at.place, index));
    }
    AlternativeGroups kept;
    for (std::size_t index = 0; index < elements.size(); ++index) {
        const auto& [name, alternatives] = *elements[index].get_ref<const Json::object_t&>().begin();
        const GroupPlace& group = kept.places.emplace_back(at.place, index, name);
        kept.groups.push_back(
            groupFrom(alternatives.get_ref<const Json::array_t&>(), group.alternatives, at.owner));
    }
    return kept;
}

void apply(OneOfKeyword& keyword, const Place& place, const Site& site) {
    GroupChoice(*keyword.kept, place, site).run();
}

void apply(AllOfKeyword& keyword, const Site& site) {
    for (std::size_t index = 0; index < keyword.kept->groups.size(); ++index) {
        GroupChoice(keyword.kept->groups[index], keyword.kept->places[index].alternatives, site).run();
        if (site.walk.isDecided()) {
            return;
        }
    }
}

} // namespace jsv
