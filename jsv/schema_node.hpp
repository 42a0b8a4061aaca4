#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <vector>

#include "jsv/keywords/value_check.hpp"
#include "jsv/location.hpp"
#include "jsv/name_index.hpp"
#include "jsv/schema_keyword.hpp"
#include "jsv/validation_context.hpp"

namespace jsv {

/// A schema that a walk has met, with its keywords, which are kept for the next time that it is met.
///
/// Keywords are built one by one, each when it is its turn to be applied for the first time, so that a fault
/// of the schema surfaces in the order of the walk.
class SchemaNode {
public:
    /// How many schemas may be nested in each other: far above any real schema, far below what would exhaust
    /// the stack.
    static constexpr std::size_t maximumDepth = 500;

    struct BuiltKeyword {
        Place place;
        SchemaKeyword keyword;
    };

    /// The schema with which a walk begins.
    SchemaNode(const nlohmann::json& value, const Place& place);
    /// Whether a schema inside another speaks of the same datum as that one.
    enum class Datum { inner, same };
    /// A schema inside another; `place` refers to that of a keyword of the parent.
    SchemaNode(const nlohmann::json& value, const Place& place, SchemaNode& parent, Datum datum);
    SchemaNode(const SchemaNode&) = delete;
    SchemaNode(SchemaNode&&) = delete;
    SchemaNode& operator=(const SchemaNode&) = delete;
    SchemaNode& operator=(SchemaNode&&) = delete;
    ~SchemaNode() = default;

    [[nodiscard]] const nlohmann::json& value() const { return *schema; }
    /// The names that this schema and all that speak of the same datum mention.
    [[nodiscard]] NameIndex& names();
    /// What references of all schemas of a walk have looked up in its data.
    [[nodiscard]] ReferencedTexts& referencedTexts() { return *references; }

    /// @throws InvalidSchemaException "A schema must be defined by either an object or a boolean."
    void requireSchema() const;
    /// @throws InvalidSchemaException "The schema is nested more than 500 schemas deep: flatten it."
    void requireModestDepth() const;

    [[nodiscard]] bool isComplete() const { return complete; }
    [[nodiscard]] std::size_t memberCount() const { return schema->size(); }
    /// The keyword of a member by its position; those before it have been built.
    /// @throws InvalidSchemaException the member is no keyword, or an exclusive limit's switch is no boolean.
    BuiltKeyword& keyword(std::size_t member, const ValidationContext& context);
    /// To be called when every keyword was built and its parameter checked.
    void finish();

    // Of complete nodes.

    [[nodiscard]] std::vector<BuiltKeyword>& keywords() { return built; }
    /// What its keywords ask of a datum without members.
    [[nodiscard]] const ValueCheck& valueCheck() const { return check; }
    /// Keywords that can give more than traces; gathered only where the value check is not whole.
    [[nodiscard]] const std::vector<BuiltKeyword*>& effectiveKeywords() const { return effective; }
    /// What "required", "optional" and "properties" say.
    [[nodiscard]] const NameRoles& ownNames() const { return roles; }
    [[nodiscard]] bool describesMembers() const { return hasProperties; }

private:
    void prepareKeywords();
    void gatherEffectiveKeywords();
    void collectOwnNames();
    void account(const NameList& names);

    const nlohmann::json* schema;
    Place where;
    std::uint32_t depth = 0;
    bool complete = false;
    bool hasProperties = false;
    std::vector<BuiltKeyword> built;
    nlohmann::json::object_t::const_iterator nextMember;
    std::vector<BuiltKeyword*> effective;
    ValueCheck check;
    NameRoles roles;
    /// Made when it is first asked for: schemas of data without members have no use for it.
    std::unique_ptr<NameIndex> ownIndex;
    NameIndex* index = nullptr;
    /// Of the schema with which a walk begins; the others refer to it.
    std::unique_ptr<ReferencedTexts> ownReferences;
    ReferencedTexts* references;
};

/// Counts a name as accounted for.
NameRole& roleOf(const Name& name, NameRoles& roles);

/// Whether no schema at or below a node has a fault, wherever a walk may go. Builds what a walk would build.
[[nodiscard]] bool isFaultless(SchemaNode& node, const ValidationContext& context);

} // namespace jsv
