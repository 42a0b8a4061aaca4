#include "jsv/schema_node.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "jsv/exceptions.hpp"
#include "jsv/keyword_factory.hpp"
#include "jsv/keywords/apply.hpp"

namespace jsv {

void SchemaNodeDeleter::operator()(SchemaNode* node) const {
    std::default_delete<SchemaNode>()(node);
}

NameRole& roleOf(const Name& name, NameRoles& roles) {
    if (roles.size() <= name.id) {
        roles.resize(name.id + 1);
    }
    roles[name.id].isAccounted = true;
    return roles[name.id];
}

SchemaNode::SchemaNode(const nlohmann::json& value, const Place& place)
    : schema(&value),
      where(place),
      ownReferences(std::make_unique<ReferencedTexts>()),
      references(ownReferences.get()) {
    prepareKeywords();
}

SchemaNode::SchemaNode(const nlohmann::json& value, const Place& place, SchemaNode& parent, Datum datum)
    : schema(&value), where(place), depth(parent.depth + 1), references(parent.references) {
    if (datum == Datum::same) {
        index = parent.index;
    }
    prepareKeywords();
}

void SchemaNode::prepareKeywords() {
    if (schema->is_object()) {
        built.reserve(schema->size()); // places refer to their parents: they must not move
        nextMember = schema->begin();
    }
}

void SchemaNode::requireSchema() const {
    if (!schema->is_object() && !schema->is_boolean()) {
        throw InvalidSchemaException(where.location(),
                                     "A schema must be defined by either an object or a boolean.");
    }
}

void SchemaNode::requireModestDepth() const {
    if (depth > maximumDepth) {
        throw InvalidSchemaException(
            where.location(),
            "The schema is nested more than " + std::to_string(maximumDepth) + " schemas deep: flatten it.");
    }
}

SchemaNode::BuiltKeyword& SchemaNode::keyword(std::size_t member, const ValidationContext& context) {
    if (member == built.size()) {
        const std::string& name = nextMember.key();
        built.push_back({Place(where, name), makeKeyword(context, *schema, where, nextMember)});
        ++nextMember;
    }
    return built[member];
}

void SchemaNode::finish() {
    effective.reserve(built.size());
    roles.reserve(index->size());
    for (BuiltKeyword& each : built) {
        if (!std::visit([](const auto& keyword) { return keyword.tracesOnly; }, each.keyword)) {
            effective.push_back(&each);
        }
    }
    collectOwnNames();
    for (const BuiltKeyword* each : effective) {
        check.add(each->keyword);
    }
    complete = true;
}

void SchemaNode::collectOwnNames() {
    for (const BuiltKeyword& each : built) {
        if (const auto* required = std::get_if<RequiredKeyword>(&each.keyword)) {
            account(*required->kept);
        } else if (const auto* optional = std::get_if<OptionalKeyword>(&each.keyword)) {
            account(*optional->kept);
        } else if (const auto* properties = std::get_if<PropertiesKeyword>(&each.keyword)) {
            hasProperties = true;
            for (const auto& property : properties->kept->properties) {
                roleOf(property.name, roles).isDescribed = true;
            }
        }
    }
}

void SchemaNode::account(const NameList& names) {
    for (const Name& name : names) {
        roleOf(name, roles);
    }
}

namespace {

// The schemas inside what is kept of a parameter; every kind of it has its overload.

using Schemas = std::vector<SchemaNode*>;

void addSchemas(const CheckedParameter& /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(const std::string* /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(const AllowedTexts& /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(const NameList& /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(double /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(bool /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(SchemaType /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(const ReferencedNames& /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(const ItemsSchema& kept, Schemas& schemas) {
    schemas.push_back(kept.schema.get());
}
void addSchemas(const PropertySchemas& kept, Schemas& schemas) {
    for (const auto& property : kept.properties) {
        schemas.push_back(property.schema.get());
    }
}
void addSchemas(const AlternativeGroup& kept, Schemas& schemas) {
    for (const Alternative& alternative : kept.alternatives) {
        schemas.push_back(alternative.schema.get());
    }
}
void addSchemas(const AlternativeGroups& kept, Schemas& schemas) {
    for (const AlternativeGroup& group : kept.groups) {
        addSchemas(group, schemas);
    }
}

struct NestedSchemas {
    Schemas operator()(const SubschemaWalk& request) const { return {request.schema}; }
    template <typename Kept>
    Schemas operator()(const Keyword<Kept>& keyword) const {
        Schemas schemas;
        addSchemas(*keyword.kept, schemas);
        return schemas;
    }
};

bool hasNoFaultBelow(SchemaNode& node, const ValidationContext& context) {
    for (std::size_t member = 0; member < node.memberCount(); ++member) {
        SchemaNode::BuiltKeyword& built = node.keyword(member, context);
        checkParameter(built, node);
        for (SchemaNode* nested : std::visit(NestedSchemas(), built.keyword)) {
            if (!isFaultless(*nested, context)) {
                return false;
            }
        }
    }
    if (!node.isComplete()) {
        node.finish();
    }
    return true;
}

} // namespace

bool isFaultless(SchemaNode& node, const ValidationContext& context) {
    try {
        node.requireSchema();
        node.requireModestDepth();
        return !node.value().is_object() || hasNoFaultBelow(node, context);
    } catch (const SchemaValidationException&) {
        return false;
    }
}

} // namespace jsv
