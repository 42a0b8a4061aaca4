#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace reference {

using Json = nlohmann::ordered_json;

/// What the object around a member says of it.
enum class Presence { required, optional, unlisted };

struct Bound {
    Json value;
    bool isOpen = false;
};

/// A value that has to be one of those that a member has in the entries of another block.
struct Reference {
    std::string member;
    std::string block;
};

/// What the schema says of a value; of an array, what it says of the elements.
struct Facts {
    std::string type;
    int arrayDepth = 0;
    std::optional<std::string> units;
    std::optional<Json> defaultValue;
    std::optional<Bound> lower;
    std::optional<Bound> upper;
    std::vector<std::string> allowed;
    bool isFile = false;
    std::optional<Reference> reference;
};

using Selector = std::pair<std::string, std::string>;

struct Group;

/// One alternative of a group. Selectors are the members that it fixes; they are not repeated in the lists.
struct Alternative {
    std::vector<Selector> selectors;
    std::string description;
    std::vector<std::string> required;
    std::vector<std::string> optional;
    std::vector<Group> groups;
};

/// Alternatives of which exactly one holds.
struct Group {
    std::vector<Alternative> alternatives;
};

/// What a group says of a member, and under which selectors.
struct Condition {
    enum class Need { required, oneOfSeveral, allowed };
    Need need = Need::required;
    std::vector<Selector> selectors;
};

struct Key {
    std::string name;
    std::string path;
    Presence presence = Presence::unlisted;
    std::string description;
    std::string elementDescription;
    Facts facts;
    std::vector<Condition> conditions;
};

/// An object, or an array of objects: its members are those of its entries.
struct Block {
    std::string name;
    std::string path;
    bool isArray = false;
    bool isOpenedByEditors = false;
    Presence presence = Presence::unlisted;
    std::string description;
    std::string entryDescription;
    std::vector<Key> keys;
    std::vector<Block> blocks;
    std::vector<Group> groups;
    std::vector<Condition> conditions;
    std::vector<std::string> referredFrom;
    std::string snippet;
};

/// The manual of a schema of the dialect, as the tree of its blocks. Paths are JSON pointers without array
/// indices.
/// @throws std::runtime_error "PATH: this schema is no object." where a member's schema is of another kind,
///         "PATH: no example can be made of this schema." where alternatives exclude each other.
[[nodiscard]] Block readManual(const Json& schema);

/// `path` followed by the member, escaped as in a JSON pointer.
[[nodiscard]] std::string memberPath(const std::string& path, const std::string& name);

} // namespace reference
