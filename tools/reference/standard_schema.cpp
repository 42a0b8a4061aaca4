#include "tools/reference/standard_schema.hpp"

#include "tools/reference/description_text.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace reference {
namespace {

using Json = nlohmann::ordered_json;
using Words = std::vector<std::string>;

constexpr std::size_t deepest = 500;
constexpr std::string_view unusedText = "The value of this item will not be used.";

/// A place in the schema.
class Place {
public:
    Place operator/(const std::string& step) const { return {pointer_ / step, depth_}; }
    Place operator/(std::size_t index) const { return {pointer_ / index, depth_}; }
    [[nodiscard]] Place deeper() const { return {pointer_, depth_ + 1}; }
    [[nodiscard]] std::size_t depth() const { return depth_; }

    [[noreturn]] void fail(const std::string& message) const {
        throw std::invalid_argument((pointer_.empty() ? "/" : pointer_.to_string()) + ": " + message);
    }
    [[noreturn]] void failType(const std::string& wanted) const {
        fail("This keyword requires " + wanted + " parameter.");
    }

    Place() = default;

private:
    Place(nlohmann::json_pointer<std::string> pointer, std::size_t depth)
        : pointer_(std::move(pointer)), depth_(depth) {}

    nlohmann::json_pointer<std::string> pointer_;
    std::size_t depth_ = 0;
};

const Json* member(const Json& object, const char* name) {
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

std::string stringAt(const Json& value, const Place& place) {
    return value.is_string() ? value.get<std::string>() : (place.failType("a string"), "");
}

const Json& objectAt(const Json& value, const Place& place) {
    return value.is_object() ? value : (place.failType("an object"), value);
}

const Json& arrayAt(const Json& value, const Place& place) {
    return value.is_array() ? value : (place.failType("an array"), value);
}

// Each string once: the standard allows no repetition.
Words wordsAt(const Json& value, const Place& place) {
    Words words;
    for (const Json& each : arrayAt(value, place)) {
        if (!each.is_string()) {
            place.fail("The schema is invalid.");
        }
        if (std::find(words.begin(), words.end(), each.get<std::string>()) == words.end()) {
            words.push_back(each.get<std::string>());
        }
    }
    return words;
}

Words wordsOf(const Json& node, const char* keyword, const Place& place) {
    const Json* const words = member(node, keyword);
    return words == nullptr ? Words() : wordsAt(*words, place / keyword);
}

bool contains(const Words& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

std::string listed(const Words& words) {
    std::string text;
    for (const std::string& each : words) {
        text += (text.empty() ? "<code>" : ", <code>") + each + "</code>";
    }
    return text;
}

std::string htmlOf(std::string_view plain) {
    std::string html;
    for (const char each : plain) {
        html += each == '&' ? "&amp;" : each == '<' ? "&lt;" : each == '>' ? "&gt;" : std::string(1, each);
    }
    return html;
}

void checkGroup(const Json& group, const Place& place) {
    for (std::size_t index = 0; index < arrayAt(group, place).size(); ++index) {
        objectAt(group[index], place / index);
    }
}

struct Group {
    const Json* alternatives;
    Place place;
    bool inAllOf;
};

// The groups of a schema object: that of its oneOf, then those of its allOf.
std::vector<Group> groupsOf(const Json& node, const Place& place) {
    std::vector<Group> groups;
    if (const Json* const group = member(node, "oneOf")) {
        groups.push_back({group, place / "oneOf", false});
    }
    if (const Json* const all = member(node, "allOf")) {
        const Place here = place / "allOf";
        for (std::size_t index = 0; index < arrayAt(*all, here).size(); ++index) {
            const Json& element = objectAt((*all)[index], here / index);
            if (element.size() != 1) {
                (here / index).fail("Only single items are supported.");
            }
            if (!element.contains("oneOf")) {
                (here / index).fail("Only a single 'oneOf' item is supported here.");
            }
            groups.push_back({&element["oneOf"], here / index / "oneOf", true});
        }
    }
    for (const Group& each : groups) {
        checkGroup(*each.alternatives, each.place);
    }
    return groups;
}

/// The members that an alternative fixes, with their values.
std::vector<std::pair<std::string, std::string>> fixedMembers(const Json& alternative) {
    std::vector<std::pair<std::string, std::string>> fixed;
    const Json* const members = member(alternative, "properties");
    if (members == nullptr || !members->is_object()) {
        return fixed;
    }
    for (const auto& [name, schema] : members->items()) {
        const Json* const value = schema.is_object() ? member(schema, "const") : nullptr;
        if (value != nullptr && value->is_string()) {
            fixed.emplace_back(name, value->get<std::string>());
        }
    }
    return fixed;
}

// The members that all alternatives of a group fix.
Words selectorsOf(const Json& group) {
    std::map<std::string, std::size_t> counts;
    Words selectors;
    for (const Json& alternative : group) {
        for (const auto& [name, value] : fixedMembers(alternative)) {
            if (++counts[name] == group.size()) {
                selectors.push_back(name);
            }
        }
    }
    return selectors;
}

/// What the groups of an object say about it as a whole, nested ones too.
struct Variants {
    Words selectors;
    Words names;                                                         // accounted for by an alternative
    std::map<std::pair<std::string, std::string>, std::string> meanings; // HTML, by selector and value
};

// "file" from the alternatives {required: [file]}, {required: [file2]}: what pairs leave to choose.
std::string choices(const Json& alternative, const Place& place) {
    std::string text;
    for (const Group& group : groupsOf(alternative, place)) {
        Words names;
        for (const Json& each : *group.alternatives) {
            const Words required = wordsOf(each, "required", group.place);
            if (each.size() != 1 || required.size() != 1) {
                names.clear();
                break;
            }
            names.push_back(required.front());
        }
        if (!names.empty()) {
            text += (text.empty() ? "one of " : "; one of ") + listed(names);
        }
    }
    return text;
}

Words without(Words words, const std::vector<std::pair<std::string, std::string>>& fixed) {
    for (const auto& [name, value] : fixed) {
        words.erase(std::remove(words.begin(), words.end(), name), words.end());
    }
    return words;
}

// What an alternative means and asks for, as HTML.
std::string meaningOf(const Json& alternative, const std::string& selector, const Place& place) {
    const auto fixed = fixedMembers(alternative);
    std::string text;
    for (const auto& [name, value] : fixed) {
        if (name != selector) {
            text += "<p>With <code>" + htmlOf(name) + "</code> <code>" + htmlOf(value) + "</code>:</p>";
        }
    }
    if (const Json* const description = member(alternative, "description")) {
        text += stringAt(*description, place / "description");
    }
    std::string required = listed(without(wordsOf(alternative, "required", place), fixed));
    if (const std::string pairs = choices(alternative, place); !pairs.empty()) {
        required += (required.empty() ? "" : "; ") + pairs;
    }
    const std::string optional = listed(wordsOf(alternative, "optional", place));
    text += required.empty() ? "" : "<p>Requires " + required + ".</p>";
    text += optional.empty() ? "" : "<p>May use " + optional + ".</p>";
    return text;
}

void append(Words& words, const Words& more) {
    for (const std::string& each : more) {
        if (!contains(words, each)) {
            words.push_back(each);
        }
    }
}

void collectVariants(const Json& node, const Place& place, Variants& variants) {
    for (const Group& group : groupsOf(node, place)) {
        append(variants.selectors, selectorsOf(*group.alternatives));
        for (std::size_t index = 0; index < group.alternatives->size(); ++index) {
            const Json& alternative = (*group.alternatives)[index];
            const Place here = (group.place / index).deeper();
            if (here.depth() > deepest) {
                here.fail("The schema is nested more than 500 schemas deep: flatten it.");
            }
            append(variants.names, wordsOf(alternative, "required", here));
            append(variants.names, wordsOf(alternative, "optional", here));
            for (const auto& [name, value] : fixedMembers(alternative)) {
                variants.meanings[{name, value}] += meaningOf(alternative, name, here);
            }
            collectVariants(alternative, here, variants);
        }
    }
}

bool hasValue(const Json& node, const std::string& name, const std::string& value) {
    const Json* const members = member(node, "properties");
    const Json* const key =
        members != nullptr && members->is_object() ? member(*members, name.c_str()) : nullptr;
    const Json* const values = key != nullptr && key->is_object() ? member(*key, "enum") : nullptr;
    return values != nullptr && values->is_array() &&
           std::find(values->begin(), values->end(), value) != values->end();
}

/// The variants of an object; of their meanings those that have a value of an enumeration to stand with.
Variants variantsOf(const Json& node, const Place& place) {
    Variants variants;
    collectVariants(node, place, variants);
    for (auto each = variants.meanings.begin(); each != variants.meanings.end();) {
        const auto& [name, value] = each->first;
        each = hasValue(node, name, value) ? std::next(each) : variants.meanings.erase(each);
    }
    return variants;
}

// What a list in the description of a key says about one of its values: "<li>value: meaning</li>".
std::string meaningInList(const std::string& description, const std::string& value) {
    for (std::size_t begin = description.find("<li>"); begin != std::string::npos;
         begin = description.find("<li>", begin + 1)) {
        const std::size_t end = std::min(description.find("</li>", begin), description.size());
        const std::string element = description.substr(begin + 4, end - begin - 4);
        const std::size_t colon = element.find(':');
        if (colon != std::string::npos &&
            descriptionText(element.substr(0, colon), TextForm::plain) == value) {
            return element.substr(colon + 1);
        }
    }
    return "";
}

bool speaksOfMembersOnly(const Json& node, const Place& place) {
    constexpr std::array<std::string_view, 13> silent{
        "required", "optional",         "properties",      "description", "units",
        "default",  "autoexpand",       "format",          "$schema",     "oneOf",
        "allOf",    "exclusiveMinimum", "exclusiveMaximum"};
    for (const auto& [name, value] : node.items()) {
        if (std::find(silent.begin(), silent.end(), name) == silent.end()) {
            return false;
        }
    }
    for (const Group& group : groupsOf(node, place)) {
        for (const Json& each : *group.alternatives) {
            if (!speaksOfMembersOnly(each, group.place)) {
                return false;
            }
        }
    }
    return true;
}

/// Adds a keyword to a schema; what would replace one that is there goes under allOf.
void addKeyword(Json& schema, const char* name, Json value) {
    if (!schema.contains(name)) {
        schema[name] = std::move(value);
    } else {
        schema["allOf"].push_back(Json{{name, std::move(value)}});
    }
}

struct Role {
    bool alternative = false;        // of a group: the object that has the group speaks of unused members
    bool object = false;             // the datum is an object, or has been found wrong elsewhere
    const Variants* owner = nullptr; // for an alternative or a member: variants of the object
    std::string name;                // of a member
};

class Translator {
public:
    explicit Translator(Draft draft) : draft_(draft) {}

    Json root(const Json& dialect) {
        Json schema = node(dialect, Place(), Role());
        if (schema.is_boolean()) {
            schema = schema.get<bool>() ? Json::object() : Json{{"not", Json::object()}};
        }
        Json result{{"$schema", draft_ == Draft::draft07 ? "http://json-schema.org/draft-07/schema#"
                                                         : "https://json-schema.org/draft/2020-12/schema"}};
        result.update(schema);
        if (result.contains("properties") && !result["properties"].contains("$schema")) {
            result["properties"]["$schema"] = {
                {"description",
                 "Where editors find this schema. The program does not use it and warns about it."}};
        }
        return result;
    }

private:
    Json node(const Json& dialect, const Place& place, const Role& role) {
        if (dialect.is_boolean()) {
            return dialect;
        }
        if (!dialect.is_object()) {
            place.fail("A schema must be defined by either an object or a boolean.");
        }
        if (place.depth() > deepest) {
            place.fail("The schema is nested more than 500 schemas deep: flatten it.");
        }
        check(dialect, place);
        const Variants own = variantsOf(dialect, place);
        Json schema = Json::object();
        describe(dialect, place, role, schema);
        values(dialect, place, role, schema);
        members(dialect, place, role, own, schema);
        if (const Json* const items = member(dialect, "items")) {
            schema["items"] = node(*items, (place / "items").deeper(), Role());
        }
        groups(dialect, place, role, own, schema);
        return schema;
    }

    static void check(const Json& dialect, const Place& place) {
        constexpr std::array<std::string_view, 20> known{"type",
                                                         "const",
                                                         "enum",
                                                         "minimum",
                                                         "maximum",
                                                         "exclusiveMinimum",
                                                         "exclusiveMaximum",
                                                         "required",
                                                         "optional",
                                                         "properties",
                                                         "items",
                                                         "requiredIn",
                                                         "oneOf",
                                                         "allOf",
                                                         "default",
                                                         "format",
                                                         "description",
                                                         "units",
                                                         "autoexpand",
                                                         "$schema"};
        for (const auto& [name, value] : dialect.items()) {
            if (std::find(known.begin(), known.end(), name) == known.end()) {
                (place / name).fail("The keyword '" + name + "' is not supported.");
            }
        }
        if (const Json* const format = member(dialect, "format")) {
            if (stringAt(*format, place / "format") != "uri") {
                (place / "format").fail("Only the 'uri' format is currently supported.");
            }
        }
        if (const Json* const autoexpand = member(dialect, "autoexpand")) {
            if (!autoexpand->is_boolean()) {
                (place / "autoexpand").failType("an boolean");
            }
        }
    }

    // --- description ---

    static void describe(const Json& dialect, const Place& place, const Role& role, Json& schema) {
        std::string html;
        if (const Json* const description = member(dialect, "description")) {
            html = stringAt(*description, place / "description");
        }
        if (role.alternative && isMoved(dialect, role)) {
            html.clear();
        }
        html += facts(dialect, place);
        if (html.empty()) {
            return;
        }
        schema["description"] = descriptionText(html, TextForm::plain);
        schema["markdownDescription"] = descriptionText(html, TextForm::markdown);
    }

    // Whether the description of an alternative stands with the values of a selector. An editor would show it
    // in place of that of the block.
    static bool isMoved(const Json& alternative, const Role& role) {
        const auto fixed = fixedMembers(alternative);
        return std::any_of(fixed.begin(), fixed.end(),
                           [&role](const auto& each) { return role.owner->meanings.count(each) != 0; });
    }

    static std::string facts(const Json& dialect, const Place& place) {
        std::string lines;
        const auto fact = [&lines](std::string_view name, const std::string& html) {
            lines += (lines.empty() ? "<b>" : "<br><b>") + std::string(name) + "</b>: " + html;
        };
        if (const Json* const units = member(dialect, "units")) {
            fact("Unit", stringAt(*units, place / "units"));
        }
        if (const std::string text = range(dialect, place); !text.empty()) {
            fact("Range", text);
        }
        if (const Json* const value = member(dialect, "default")) {
            fact("Default", "<code>" + htmlOf(value->dump()) + "</code>");
        }
        if (dialect.contains("format")) {
            fact("Value", "name of a file");
        }
        if (const Json* const reference = member(dialect, "requiredIn")) {
            fact("Refers to", referenceText(*reference, place / "requiredIn"));
        }
        return lines.empty() ? "" : "<p>" + lines + "</p>";
    }

    static std::string range(const Json& dialect, const Place& place) {
        std::string text;
        if (const Json* const limit = member(dialect, "minimum")) {
            text = (isExclusive(dialect, "exclusiveMinimum", place) ? "&gt; " : "&ge; ") + limit->dump();
        }
        if (const Json* const limit = member(dialect, "maximum")) {
            text += (text.empty() ? "" : ", ");
            text += (isExclusive(dialect, "exclusiveMaximum", place) ? "&lt; " : "&le; ") + limit->dump();
        }
        return text;
    }

    static std::string referenceText(const Json& reference, const Place& place) {
        objectAt(reference, place);
        const Json* const name = member(reference, "itemProperty");
        const Json* const array = member(reference, "$array_ref");
        if (name == nullptr || array == nullptr) {
            place.fail("The schema is invalid.");
        }
        return "a <code>" + htmlOf(stringAt(*name, place / "itemProperty")) + "</code> in <code>" +
               htmlOf(stringAt(*array, place / "$array_ref")) + "</code>";
    }

    // --- keywords about the value itself ---

    static void values(const Json& dialect, const Place& place, const Role& role, Json& schema) {
        if (const Json* const type = member(dialect, "type")) {
            static const Words types{"integer", "number", "string", "object", "array", "boolean"};
            if (!contains(types, stringAt(*type, place / "type"))) {
                (place / "type").fail("The provided type is invalid.");
            }
            schema["type"] = *type;
        }
        if (const Json* const value = member(dialect, "const")) {
            schema["const"] = stringAt(*value, place / "const");
        }
        if (const Json* const list = member(dialect, "enum")) {
            enumeration(wordsAt(*list, place / "enum"), dialect, role, schema);
        }
        limit(dialect, "minimum", "exclusiveMinimum", place, schema);
        limit(dialect, "maximum", "exclusiveMaximum", place, schema);
        if (const Json* const value = member(dialect, "default")) {
            if (!value->is_number() && !value->is_string() && !value->is_boolean()) {
                (place / "default").fail("Only string, numeric, and boolean default values are supported.");
            }
            schema["default"] = *value;
        }
    }

    static void enumeration(const Words& words, const Json& dialect, const Role& role, Json& schema) {
        if (words.empty()) {
            addKeyword(schema, "not", Json::object());
            return;
        }
        schema["enum"] = words;
        const Json* const description = member(dialect, "description");
        Json plain = Json::array();
        Json markdown = Json::array();
        bool any = false;
        for (const std::string& word : words) {
            std::string html =
                description == nullptr ? "" : meaningInList(description->get<std::string>(), word);
            if (role.owner != nullptr) {
                const auto variant = role.owner->meanings.find({role.name, word});
                html += variant == role.owner->meanings.end() ? "" : variant->second;
            }
            any = any || !html.empty();
            plain.push_back(descriptionText(html, TextForm::plain));
            markdown.push_back(descriptionText(html, TextForm::markdown));
        }
        if (any) {
            schema["enumDescriptions"] = std::move(plain);
            schema["markdownEnumDescriptions"] = std::move(markdown);
        }
    }

    static bool isExclusive(const Json& dialect, const char* keyword, const Place& place) {
        const Json* const value = member(dialect, keyword);
        if (value != nullptr && !value->is_boolean()) {
            (place / keyword).failType("a boolean");
        }
        return value != nullptr && value->get<bool>();
    }

    static void limit(const Json& dialect, const char* name, const char* exclusive, const Place& place,
                      Json& schema) {
        const Json* const value = member(dialect, name);
        if (value == nullptr) {
            return;
        }
        if (!value->is_number()) {
            (place / name).failType("a number");
        }
        schema[isExclusive(dialect, exclusive, place) ? exclusive : name] = *value;
    }

    // --- members ---

    void members(const Json& dialect, const Place& place, const Role& role, const Variants& own,
                 Json& schema) {
        const Words required = wordsOf(dialect, "required", place);
        const Words optional = wordsOf(dialect, "optional", place);
        if (const Json* const list = member(dialect, "properties")) {
            schema["properties"] =
                properties(objectAt(*list, place / "properties"), place / "properties", role, own);
        }
        if (!required.empty()) {
            schema["required"] = selectorsFirst(required, own.selectors, fixedMembers(dialect));
        }
        if (!role.alternative && (schema.contains("properties") || schema.value("type", "") == "object")) {
            unusedMembers({required, optional, own.names}, schema);
        }
    }

    Json properties(const Json& list, const Place& place, const Role& role, const Variants& own) {
        Words names;
        for (const auto& each : list.items()) {
            names.push_back(each.key());
        }
        Json result = Json::object();
        for (const std::string& name : selectorsFirst(names, own.selectors, {})) {
            Role ofMember;
            ofMember.owner = role.alternative ? nullptr : &own;
            ofMember.name = name;
            result[name] = node(list[name], (place / name).deeper(), ofMember);
        }
        return result;
    }

    static Words selectorsFirst(const Words& names, const Words& selectors,
                                const std::vector<std::pair<std::string, std::string>>& fixed) {
        Words result = names;
        std::stable_partition(result.begin(), result.end(), [&](const std::string& name) {
            return contains(selectors, name) ||
                   std::any_of(fixed.begin(), fixed.end(),
                               [&](const auto& each) { return each.first == name; });
        });
        return result;
    }

    // Members that nothing accounts for are valid, but an editor that knows the message shows it as a
    // warning.
    void unusedMembers(const std::vector<Words>& accountedFor, Json& schema) const {
        for (const Words& words : accountedFor) {
            for (const std::string& name : words) {
                if (!schema["properties"].contains(name)) {
                    schema["properties"][name] = true;
                }
            }
        }
        Json unused = Json::object();
        if (draft_ == Draft::draft2020) {
            unused["deprecated"] = true;
        }
        unused["deprecationMessage"] = unusedText;
        schema["additionalProperties"] = std::move(unused);
    }

    // --- groups ---

    void groups(const Json& dialect, const Place& place, const Role& role, const Variants& own,
                Json& schema) {
        const Json* const type = member(dialect, "type");
        const bool object = role.object || (type != nullptr && *type == "object");
        for (const Group& each : groupsOf(dialect, place)) {
            const Role alternative{true, object, role.alternative ? role.owner : &own, ""};
            Json group = translated(each, alternative);
            if (each.inAllOf) {
                schema["allOf"].push_back(std::move(group));
            } else {
                const std::string keyword = group.begin().key();
                addKeyword(schema, keyword.c_str(), std::move(group.begin().value()));
            }
        }
    }

    Json translated(const Group& group, const Role& role) {
        if (group.alternatives->empty()) {
            return {{"not", {{"type", "object"}}}};
        }
        bool membersOnly = true;
        Json alternatives = Json::array();
        for (std::size_t index = 0; index < group.alternatives->size(); ++index) {
            const Json& each = (*group.alternatives)[index];
            membersOnly = membersOnly && speaksOfMembersOnly(each, group.place / index);
            alternatives.push_back(node(each, (group.place / index).deeper(), role));
        }
        if (!membersOnly || role.object) {
            return {{"oneOf", std::move(alternatives)}};
        }
        Json escape{{"not", {{"type", "object"}}}};
        return {{"anyOf", {std::move(escape), {{"oneOf", std::move(alternatives)}}}}};
    }

    Draft draft_;
};

} // namespace

nlohmann::ordered_json standardSchema(const nlohmann::ordered_json& dialect, Draft draft) {
    return Translator(draft).root(dialect);
}

} // namespace reference
