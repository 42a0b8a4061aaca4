#include "jsv/keywords/members.hpp"

#include <utility>

#include "jsv/parameter_checks.hpp"
#include "jsv/walk.hpp"

namespace jsv {

namespace {

void traceAccounted(const Name& name, const Site& site) {
    site.walk.trace(Place(site.place, *name.text), [] { return AccountedTrace(); });
}

NameList namesFrom(const nlohmann::json& parameter, const SchemaSite& at) {
    const auto& texts = requireArray(parameter, at.place);
    NameList names;
    names.reserve(texts.size());
    for (const nlohmann::json& text : texts) {
        names.push_back(at.owner.names().add(text.get_ref<const std::string&>()));
    }
    return names;
}

void visitByProperty(const PropertySchemas& schemas, const Site& site) {
    for (const auto& property : schemas.properties) {
        const nlohmann::json* const value = site.members.find(property.name);
        if (value != nullptr) {
            site.walk.visit(*property.schema, *value, Place(site.place, *property.name.text));
            if (site.walk.isDecided()) {
                return;
            }
        }
    }
}

void visitByMember(const PropertySchemas& schemas, const Site& site) {
    for (std::size_t position = 0; position < site.members.size(); ++position) {
        const Member member = site.members[position];
        SchemaNode* const schema = member.id < schemas.byId.size() ? schemas.byId[member.id] : nullptr;
        if (schema != nullptr) {
            site.walk.visit(*schema, *member.value, Place(site.place, *member.name));
            if (site.walk.isDecided()) {
                return;
            }
        }
    }
}

} // namespace

NameList keep(const RequiredKeyword& keyword, const SchemaSite& at) {
    return namesFrom(*keyword.parameter, at);
}

void apply(const RequiredKeyword& keyword, const Site& site) {
    if (!site.datum.is_object()) {
        return;
    }
    for (const Name& name : *keyword.kept) {
        traceAccounted(name, site);
        if (!site.members.has(name)) {
            site.walk.report(Place(site.place, *name.text), [] { return MissingRequired(); });
        }
    }
}

NameList keep(const OptionalKeyword& keyword, const SchemaSite& at) {
    return namesFrom(*keyword.parameter, at);
}

void apply(const OptionalKeyword& keyword, const Site& site) {
    if (!site.datum.is_object()) {
        return;
    }
    for (const Name& name : *keyword.kept) {
        traceAccounted(name, site);
    }
}

PropertySchemas keep(const PropertiesKeyword& keyword, const SchemaSite& at) {
    PropertySchemas kept;
    const auto& schemas = requireObject(*keyword.parameter, at.place);
    kept.properties.reserve(schemas.size());
    at.owner.names().reserve(schemas.size());
    for (const auto& [text, schema] : schemas) {
        const Name name = at.owner.names().add(text);
        auto node =
            OwnedSchema(new SchemaNode(schema, Place(at.place, text), at.owner, SchemaNode::Datum::inner));
        if (kept.byId.size() <= name.id) {
            kept.byId.resize(name.id + 1, nullptr);
        }
        kept.byId[name.id] = node.get();
        kept.properties.push_back({name, std::move(node)});
    }
    return kept;
}

void apply(const PropertiesKeyword& keyword, const Site& site) {
    const PropertySchemas& schemas = *keyword.kept;
    if (!site.datum.is_object()) {
        return;
    }
    if (site.walk.keepsTraces()) {
        for (const auto& property : schemas.properties) {
            traceAccounted(property.name, site);
        }
    }
    if (schemas.properties.size() < site.members.size()) {
        visitByProperty(schemas, site);
    } else {
        visitByMember(schemas, site);
    }
}

ItemsSchema keep(const ItemsKeyword& keyword, const SchemaSite& at) {
    ItemsSchema kept{
        OwnedSchema(new SchemaNode(*keyword.parameter, at.place, at.owner, SchemaNode::Datum::inner))};
    kept.schema->requireSchema();
    return kept;
}

void apply(const ItemsKeyword& keyword, const Site& site) {
    if (!site.datum.is_array()) {
        return;
    }
    std::size_t index = 0;
    for (const nlohmann::json& element : site.datum.get_ref<const nlohmann::json::array_t&>()) {
        site.walk.visit(*keyword.kept->schema, element, Place(site.place, index));
        if (site.walk.isDecided()) {
            return;
        }
        ++index;
    }
}

void apply(const SubschemaWalk& request, const Site& site) {
    site.walk.visit(*request.schema, site.datum, site.place);
}

} // namespace jsv
