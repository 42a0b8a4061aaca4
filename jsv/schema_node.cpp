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
        index = &parent.names();
    }
    prepareKeywords();
}

void SchemaNode::prepareKeywords() {
    if (schema->is_object()) {
        built.reserve(schema->size()); // places refer to their parents: they must not move
        nextMember = schema->get_ref<const nlohmann::json::object_t&>().begin();
    }
}

NameIndex& SchemaNode::names() {
    if (index == nullptr) {
        ownIndex = std::make_unique<NameIndex>();
        index = ownIndex.get();
    }
    return *index;
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
        const auto& keyword = *nextMember;
        built.push_back({Place(where, keyword.first), makeKeyword(context, *schema, where, keyword)});
        ++nextMember;
    }
    return built[member];
}

void SchemaNode::finish() {
    for (const BuiltKeyword& each : built) {
        check.add(each.keyword);
    }
    if (!check.isWhole()) {
        gatherEffectiveKeywords();
    }
    if (index != nullptr) {
        collectOwnNames();
    }
    complete = true;
}

void SchemaNode::gatherEffectiveKeywords() {
    effective.reserve(built.size());
    for (BuiltKeyword& each : built) {
        if (!std::visit([](const auto& keyword) { return keyword.tracesOnly; }, each.keyword)) {
            effective.push_back(&each);
        }
    }
}

void SchemaNode::collectOwnNames() {
    roles.reserve(index->size());
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

/// Whether the schemas inside what is kept of a parameter have no fault; every kind of it has its overload.
struct NestedSchemas {
    const ValidationContext& context;

    bool operator()(const SubschemaWalk& request) const { return isFaultless(*request.schema, context); }
    template <typename Kept>
    bool operator()(const Keyword<Kept>& keyword) const {
        return areFaultless(*keyword.kept);
    }

    static bool areFaultless(const CheckedParameter& /*kept*/) { return true; }
    static bool areFaultless(const std::string* /*kept*/) { return true; }
    static bool areFaultless(const AllowedTexts& /*kept*/) { return true; }
    static bool areFaultless(const NameList& /*kept*/) { return true; }
    static bool areFaultless(double /*kept*/) { return true; }
    static bool areFaultless(bool /*kept*/) { return true; }
    static bool areFaultless(SchemaType /*kept*/) { return true; }
    static bool areFaultless(const ReferencedNames& /*kept*/) { return true; }
    [[nodiscard]] bool areFaultless(const ItemsSchema& kept) const {
        return isFaultless(*kept.schema, context);
    }
    [[nodiscard]] bool areFaultless(const PropertySchemas& kept) const {
        return std::all_of(kept.properties.begin(), kept.properties.end(),
                           [&](const auto& property) { return isFaultless(*property.schema, context); });
    }
    [[nodiscard]] bool areFaultless(const AlternativeGroup& kept) const {
        return std::all_of(
            kept.alternatives.begin(), kept.alternatives.end(),
            [&](const Alternative& alternative) { return isFaultless(*alternative.schema, context); });
    }
    [[nodiscard]] bool areFaultless(const AlternativeGroups& kept) const {
        return std::all_of(kept.groups.begin(), kept.groups.end(),
                           [&](const AlternativeGroup& group) { return areFaultless(group); });
    }
};

bool hasNoFaultBelow(SchemaNode& node, const ValidationContext& context) {
    for (std::size_t member = 0; member < node.memberCount(); ++member) {
        SchemaNode::BuiltKeyword& built = node.keyword(member, context);
        checkParameter(built, node);
        if (!std::visit(NestedSchemas{context}, built.keyword)) {
            return false;
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
