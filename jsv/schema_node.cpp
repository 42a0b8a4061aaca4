#include "jsv/schema_node.hpp"

#include <algorithm>
#include <string>

#include "jsv/exceptions.hpp"
#include "jsv/keyword_factory.hpp"
#include "jsv/keywords/apply.hpp"

namespace jsv {

void SchemaNodeDeleter::operator()(SchemaNode* node) const {
    std::default_delete<SchemaNode>()(node);
}

void sortNames(NameTable& names) {
    // Of one name the described entry comes first and stays.
    std::sort(names.begin(), names.end(), [](const AccountedName& a, const AccountedName& b) {
        const int order = a.name->compare(*b.name);
        return order < 0 || (order == 0 && a.described && !b.described);
    });
    const auto sameName = [](const AccountedName& a, const AccountedName& b) { return *a.name == *b.name; };
    names.erase(std::unique(names.begin(), names.end(), sameName), names.end());
}

SchemaNode::SchemaNode(const nlohmann::json& value, const Place& place) : schema(&value), where(place) {
    if (schema->is_object()) {
        built.reserve(schema->size()); // places refer to their parents: they must not move
        nextMember = schema->begin();
    }
}

SchemaNode::SchemaNode(const nlohmann::json& value, const Place& place, const SchemaNode& parent)
    : SchemaNode(value, place) {
    depth = parent.depth + 1;
    if (depth > maximumDepth) {
        throw InvalidSchemaException(
            where.location(),
            "The schema is nested more than " + std::to_string(maximumDepth) + " schemas deep: flatten it.");
    }
}

void SchemaNode::requireSchema() const {
    if (!schema->is_object() && !schema->is_boolean()) {
        throw InvalidSchemaException(where.location(),
                                     "A schema must be defined by either an object or a boolean.");
    }
}

SchemaNode::BuiltKeyword& SchemaNode::keyword(std::size_t member, const ValidationContext& context) {
    if (member == built.size()) {
        const std::string& name = nextMember.key();
        built.push_back({Place(where, name), makeKeyword(context, *schema, where, name)});
        ++nextMember;
    }
    return built[member];
}

void SchemaNode::finish() {
    for (BuiltKeyword& each : built) {
        if (!std::visit([](const auto& keyword) { return keyword.tracesOnly; }, each.keyword)) {
            effective.push_back(&each);
        }
    }
    collectOwnNames();
    complete = true;
}

void SchemaNode::collectOwnNames() {
    const auto add = [&](const NameList& list) {
        for (const std::string* name : list) {
            names.push_back({name, false});
        }
    };
    for (const BuiltKeyword& each : built) {
        if (const auto* required = std::get_if<RequiredKeyword>(&each.keyword)) {
            add(*required->kept);
        } else if (const auto* optional = std::get_if<OptionalKeyword>(&each.keyword)) {
            add(*optional->kept);
        } else if (const auto* properties = std::get_if<PropertiesKeyword>(&each.keyword)) {
            hasProperties = true;
            for (const auto& property : properties->kept->properties) {
                names.push_back({property.name, true});
            }
        }
    }
    sortNames(names);
}

namespace {

// The schemas inside what is kept of a parameter; every kind of it has its overload.

using Schemas = std::vector<SchemaNode*>;

void addSchemas(const CheckedParameter& /*kept*/, Schemas& /*schemas*/) {}
void addSchemas(const std::string* /*kept*/, Schemas& /*schemas*/) {}
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
        return !node.value().is_object() || hasNoFaultBelow(node, context);
    } catch (const SchemaValidationException&) {
        return false;
    }
}

} // namespace jsv
