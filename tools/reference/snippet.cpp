#include "tools/reference/snippet.hpp"

#include <algorithm>
#include <map>
#include <set>
#include <stdexcept>
#include <vector>

namespace reference {

namespace {

using Json = nlohmann::ordered_json;

[[noreturn]] void fail(const std::string& path) {
    throw std::runtime_error((path.empty() ? "/" : path) + ": no example can be made of this schema.");
}

// ---------------------------------------------------------------- values

bool isWithin(const Json& schema, double number) {
    const bool isAbove = schema.value("exclusiveMinimum", false);
    const bool isBelow = schema.value("exclusiveMaximum", false);
    if (schema.contains("minimum")) {
        const double limit = schema["minimum"].get<double>();
        if (number < limit || (isAbove && number <= limit)) {
            return false;
        }
    }
    if (schema.contains("maximum")) {
        const double limit = schema["maximum"].get<double>();
        return isBelow ? number < limit : number <= limit;
    }
    return true;
}

/// Round numbers first, then the limits, what lies between them, and beside them.
Json numberWithin(const Json& schema, const std::string& path) {
    const bool isInteger = schema["type"] == "integer";
    std::vector<Json> candidates = {1, 0, 10, 100};
    if (!isInteger) {
        candidates.insert(candidates.end(), {0.5, 0.1, 0.01});
    }
    const bool isBounded = schema.contains("minimum") && schema.contains("maximum");
    for (const char* limit : {"minimum", "maximum"}) {
        if (schema.contains(limit)) {
            candidates.push_back(schema[limit]);
            candidates.emplace_back(schema[limit].get<int>() + 1);
            candidates.emplace_back(schema[limit].get<int>() - 1);
        }
    }
    if (isBounded && !isInteger) {
        candidates.emplace_back((schema["minimum"].get<double>() + schema["maximum"].get<double>()) / 2);
    }
    for (const Json& candidate : candidates) {
        if ((!isInteger || candidate.is_number_integer()) && isWithin(schema, candidate.get<double>())) {
            return candidate;
        }
    }
    fail(path);
}

Json textFor(const Json& schema, const std::string& path) {
    if (schema.contains("enum")) {
        if (schema["enum"].empty()) {
            fail(path);
        }
        return schema["enum"].front();
    }
    return schema.value("format", "") == "uri" ? "file.txt" : "name";
}

// ---------------------------------------------------------------- alternatives

std::vector<const Json*> groupsOf(const Json& schema) {
    std::vector<const Json*> groups;
    if (schema.contains("oneOf")) {
        groups.push_back(&schema["oneOf"]);
    }
    if (schema.contains("allOf")) {
        for (const Json& member : schema["allOf"]) {
            groups.push_back(&member.at("oneOf"));
        }
    }
    return groups;
}

bool fits(const Json& alternative, const Json& datum);

bool obeysGroups(const Json& schema, const Json& datum) {
    const auto groups = groupsOf(schema);
    return std::all_of(groups.begin(), groups.end(), [&](const Json* group) {
        return std::count_if(group->begin(), group->end(),
                             [&](const Json& alternative) { return fits(alternative, datum); }) == 1;
    });
}

bool fits(const Json& alternative, const Json& datum) {
    for (const Json& name : alternative.value("required", Json::array())) {
        if (!datum.contains(name.get<std::string>())) {
            return false;
        }
    }
    const Json properties = alternative.value("properties", Json::object());
    for (const auto& [name, schema] : properties.items()) {
        if (datum.contains(name) && schema.contains("const") && datum[name] != schema["const"]) {
            return false;
        }
    }
    return obeysGroups(alternative, datum);
}

/// What has been decided of an object: the members that it gets, with the value of those that alternatives
/// fix.
struct Choice {
    std::set<std::string> members;
    std::map<std::string, Json> fixed;
};

class ObjectExample {
public:
    ObjectExample(const Json& objectSchema, const std::string& objectPath)
        : schema(objectSchema), path(objectPath) {}

    Json make() {
        Choice choice;
        require(schema, choice);
        Json result;
        if (!decide(groupsOf(schema), choice, result)) {
            fail(path);
        }
        return result;
    }

private:
    /// Tries the alternatives of the groups in turn until the whole obeys every group.
    bool decide(std::vector<const Json*> open, const Choice& choice, Json& result) const {
        if (open.empty()) {
            result = withMembers(choice);
            return obeysGroups(schema, result);
        }
        const Json& group = *open.front();
        open.erase(open.begin());
        for (const Json* alternative : inOrder(group)) {
            Choice next = choice;
            if (!take(*alternative, next)) {
                continue;
            }
            std::vector<const Json*> remaining = open;
            for (const Json* inner : groupsOf(*alternative)) {
                remaining.push_back(inner);
            }
            if (decide(remaining, next, result)) {
                return true;
            }
        }
        return false;
    }

    /// Alternatives that the defaults select come first; where nothing is selected, the one that adds least.
    [[nodiscard]] std::vector<const Json*> inOrder(const Json& group) const {
        std::vector<const Json*> alternatives;
        for (const Json& alternative : group) {
            alternatives.push_back(&alternative);
        }
        std::map<const Json*, std::size_t> weight;
        for (const Json* alternative : alternatives) {
            weight[alternative] = weightOf(*alternative);
        }
        std::stable_sort(alternatives.begin(), alternatives.end(),
                         [&](const Json* one, const Json* other) { return weight[one] < weight[other]; });
        return alternatives;
    }

    [[nodiscard]] std::size_t weightOf(const Json& alternative) const {
        if (alternative.contains("properties")) {
            return isDefault(alternative) ? 0 : 1;
        }
        Choice choice;
        require(alternative, choice);
        return withMembers(choice).dump().size();
    }

    [[nodiscard]] bool isDefault(const Json& alternative) const {
        bool hasSelector = false;
        const Json properties = alternative.value("properties", Json::object());
        for (const auto& [name, selector] : properties.items()) {
            hasSelector = true;
            if (member(name).value("default", Json()) != selector.value("const", Json(""))) {
                return false;
            }
        }
        return hasSelector;
    }

    /// False where the alternative contradicts what has been fixed.
    static bool take(const Json& alternative, Choice& choice) {
        const Json properties = alternative.value("properties", Json::object());
        for (const auto& [name, selector] : properties.items()) {
            if (!selector.contains("const")) {
                continue;
            }
            const auto [at, isNew] = choice.fixed.emplace(name, selector["const"]);
            if (!isNew && at->second != selector["const"]) {
                return false;
            }
            choice.members.insert(name);
        }
        require(alternative, choice);
        return true;
    }

    static void require(const Json& part, Choice& choice) {
        for (const Json& name : part.value("required", Json::array())) {
            choice.members.insert(name.get<std::string>());
        }
    }

    [[nodiscard]] const Json& member(const std::string& name) const {
        const auto properties = schema.find("properties");
        if (properties == schema.end() || !properties->contains(name)) {
            fail(path + '/' + name);
        }
        return (*properties)[name];
    }

    [[nodiscard]] Json withMembers(const Choice& choice) const {
        Json result = Json::object();
        const auto properties = schema.find("properties");
        if (properties == schema.end()) {
            return result;
        }
        for (const auto& [name, memberSchema] : properties->items()) {
            if (choice.members.count(name) != 0) {
                const auto fixed = choice.fixed.find(name);
                result[name] = fixed != choice.fixed.end() ? fixed->second
                                                           : minimalExample(memberSchema, path + '/' + name);
            }
        }
        return result;
    }

    const Json& schema;
    const std::string& path;
};

} // namespace

Json minimalExample(const Json& schema, const std::string& path) {
    if (schema.contains("default")) {
        return schema["default"];
    }
    const std::string type = schema.value("type", "object");
    if (type == "object") {
        return ObjectExample(schema, path).make();
    }
    if (type == "array") {
        return schema.contains("items") ? Json::array({minimalExample(schema["items"], path)})
                                        : Json::array();
    }
    if (type == "boolean") {
        return true;
    }
    return type == "string" ? textFor(schema, path) : numberWithin(schema, path);
}

} // namespace reference
