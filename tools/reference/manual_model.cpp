#include "tools/reference/manual_model.hpp"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "tools/reference/snippet.hpp"

namespace reference {

namespace {

std::string textOf(const Json& node, const char* name) {
    const auto found = node.find(name);
    return found == node.end() ? std::string() : found->get<std::string>();
}

std::vector<std::string> namesOf(const Json& node, const char* name) {
    const auto found = node.find(name);
    return found == node.end() ? std::vector<std::string>() : found->get<std::vector<std::string>>();
}

bool isTrue(const Json& node, const char* name) {
    const auto found = node.find(name);
    return found != node.end() && *found == true;
}

bool contains(const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::optional<Bound> boundOf(const Json& node, const char* limit, const char* isExclusive) {
    const auto found = node.find(limit);
    return found == node.end() ? std::nullopt : std::optional<Bound>({*found, isTrue(node, isExclusive)});
}

/// The path of an `$array_ref`, in which an index stands for an entry of an array.
std::string withoutIndices(const std::string& path) {
    std::string kept;
    for (std::size_t begin = 0; begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin + 1), path.size());
        const std::string segment = path.substr(begin, end - begin);
        if (segment.find_first_not_of("0123456789", 1) != std::string::npos) {
            kept += segment;
        }
        begin = end;
    }
    return kept;
}

std::optional<Reference> referenceOf(const Json& node) {
    const auto found = node.find("requiredIn");
    if (found == node.end()) {
        return std::nullopt;
    }
    return Reference{textOf(*found, "itemProperty"), withoutIndices(textOf(*found, "$array_ref"))};
}

/// The schema of the elements, however deep the arrays are nested, and that depth.
std::pair<const Json*, int> innermost(const Json& node) {
    const Json* inner = &node;
    int depth = 0;
    while (inner->is_object() && textOf(*inner, "type") == "array") {
        ++depth;
        const auto items = inner->find("items");
        if (items == inner->end()) {
            static const Json anything = Json::object();
            return {&anything, depth};
        }
        inner = &*items;
    }
    return {inner, depth};
}

Facts factsOf(const Json& node) {
    const auto [element, depth] = innermost(node);
    Facts facts;
    facts.type = textOf(*element, "type");
    facts.arrayDepth = depth;
    const Json& unitOwner = element->contains("units") ? *element : node;
    if (unitOwner.contains("units")) {
        facts.units = textOf(unitOwner, "units");
    }
    if (node.contains("default")) {
        facts.defaultValue = node["default"];
    }
    facts.lower = boundOf(*element, "minimum", "exclusiveMinimum");
    facts.upper = boundOf(*element, "maximum", "exclusiveMaximum");
    facts.allowed = namesOf(*element, "enum");
    facts.isFile = textOf(*element, "format") == "uri";
    facts.reference = referenceOf(*element);
    return facts;
}

std::vector<Group> groupsOf(const Json& node);

std::vector<Selector> selectorsOf(const Json& alternative) {
    std::vector<Selector> selectors;
    const auto properties = alternative.find("properties");
    if (properties != alternative.end()) {
        for (const auto& [name, schema] : properties->items()) {
            if (schema.is_object() && schema.contains("const")) {
                selectors.emplace_back(name, textOf(schema, "const"));
            }
        }
    }
    return selectors;
}

std::vector<std::string> without(std::vector<std::string> names, const std::vector<Selector>& selectors) {
    for (const Selector& selector : selectors) {
        names.erase(std::remove(names.begin(), names.end(), selector.first), names.end());
    }
    return names;
}

Alternative alternativeOf(const Json& schema) {
    Alternative alternative;
    alternative.selectors = selectorsOf(schema);
    alternative.description = textOf(schema, "description");
    alternative.required = without(namesOf(schema, "required"), alternative.selectors);
    alternative.optional = without(namesOf(schema, "optional"), alternative.selectors);
    alternative.groups = groupsOf(schema);
    return alternative;
}

Group groupOf(const Json& alternatives) {
    Group group;
    for (const Json& alternative : alternatives) {
        group.alternatives.push_back(alternativeOf(alternative));
    }
    return group;
}

std::vector<Group> groupsOf(const Json& node) {
    std::vector<Group> groups;
    if (node.contains("oneOf")) {
        groups.push_back(groupOf(node["oneOf"]));
    }
    if (node.contains("allOf")) {
        for (const Json& member : node["allOf"]) {
            groups.push_back(groupOf(member.at("oneOf")));
        }
    }
    return groups;
}

using Conditions = std::map<std::string, std::vector<Condition>>;

void collectConditions(const std::vector<Group>& groups, const std::vector<Selector>& outer,
                       Conditions& found) {
    for (const Group& group : groups) {
        for (const Alternative& alternative : group.alternatives) {
            std::vector<Selector> under = outer;
            for (const Selector& selector : alternative.selectors) {
                if (std::find(under.begin(), under.end(), selector) == under.end()) {
                    under.push_back(selector);
                }
            }
            const bool isSelected = !alternative.selectors.empty();
            for (const std::string& name : alternative.required) {
                found[name].push_back(
                    {isSelected ? Condition::Need::required : Condition::Need::oneOfSeveral, under});
            }
            for (const std::string& name : alternative.optional) {
                found[name].push_back({Condition::Need::allowed, under});
            }
            collectConditions(alternative.groups, under, found);
        }
    }
}

Presence presenceOf(const Json& object, const std::string& name) {
    if (contains(namesOf(object, "required"), name)) {
        return Presence::required;
    }
    return contains(namesOf(object, "optional"), name) ? Presence::optional : Presence::unlisted;
}

Key keyOf(const Json& schema) {
    Key key;
    key.description = textOf(schema, "description");
    key.facts = factsOf(schema);
    const Json& element = *innermost(schema).first;
    if (&element != &schema) {
        key.elementDescription = textOf(element, "description");
    }
    return key;
}

template <typename Member>
void place(Member& member, const std::string& name, const std::string& path, Presence presence,
           const Conditions& conditions) {
    member.name = name;
    member.path = memberPath(path, name);
    member.presence = presence;
    const auto found = conditions.find(name);
    if (found != conditions.end()) {
        member.conditions = found->second;
    }
}

bool isBlock(const Json& schema) {
    const Json& element = *innermost(schema).first;
    return element.is_object() && element.contains("properties");
}

Block blockOf(const Json& schema, const std::string& path);

void addMembers(Block& block, const Json& object) {
    Conditions conditions;
    collectConditions(block.groups, {}, conditions);
    const auto properties = object.find("properties");
    if (properties == object.end()) {
        return;
    }
    for (const auto& [name, schema] : properties->items()) {
        const std::string path = memberPath(block.path, name);
        if (!schema.is_object()) {
            throw std::runtime_error(path + ": this schema is no object.");
        }
        if (isBlock(schema)) {
            block.blocks.push_back(blockOf(schema, path));
            place(block.blocks.back(), name, block.path, presenceOf(object, name), conditions);
        } else {
            block.keys.push_back(keyOf(schema));
            place(block.keys.back(), name, block.path, presenceOf(object, name), conditions);
        }
    }
}

Block blockOf(const Json& schema, const std::string& path) {
    const auto [object, depth] = innermost(schema);
    Block block;
    block.path = path;
    block.isArray = depth > 0;
    block.isOpenedByEditors = isTrue(schema, "autoexpand");
    block.description = textOf(schema, "description");
    if (block.isArray) {
        block.entryDescription = textOf(*object, "description");
    }
    block.groups = groupsOf(*object);
    addMembers(block, *object);
    const std::string name = path.substr(path.rfind('/') + 1);
    block.snippet = path.empty() ? minimalExample(schema, path).dump(2)
                                 : Json(name).dump() + ": " + minimalExample(schema, path).dump(2);
    return block;
}

void collectReferences(const Block& block, std::map<std::string, std::vector<std::string>>& sources) {
    for (const Key& key : block.keys) {
        if (key.facts.reference) {
            sources[key.facts.reference->block].push_back(key.path);
        }
    }
    for (const Block& inner : block.blocks) {
        collectReferences(inner, sources);
    }
}

void spreadReferences(Block& block, const std::map<std::string, std::vector<std::string>>& sources) {
    const auto found = sources.find(block.path);
    if (found != sources.end()) {
        block.referredFrom = found->second;
    }
    for (Block& inner : block.blocks) {
        spreadReferences(inner, sources);
    }
}

} // namespace

std::string memberPath(const std::string& path, const std::string& name) {
    std::string escaped;
    for (const char c : name) {
        escaped += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    }
    return path + '/' + escaped;
}

Block readManual(const Json& schema) {
    if (!schema.is_object()) {
        throw std::runtime_error("/: this schema is no object.");
    }
    Block root = blockOf(schema, "");
    root.name = "Command file";
    root.presence = Presence::required;
    std::map<std::string, std::vector<std::string>> sources;
    collectReferences(root, sources);
    spreadReferences(root, sources);
    return root;
}

} // namespace reference
