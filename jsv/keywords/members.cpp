#include "jsv/keywords/members.hpp"

#include <algorithm>

#include "jsv/keywords/values.hpp"
#include "jsv/parameter_checks.hpp"
#include "jsv/walk.hpp"

namespace jsv {

namespace {

void traceAccounted(const std::string& name, const Site& site) {
    site.walk.trace(Place(site.place, name), [] { return AccountedTrace(); });
}

} // namespace

NameList keep(const RequiredKeyword& keyword, const SchemaSite& at) {
    return textsOf(requireArray(*keyword.parameter, at.place));
}

void apply(const RequiredKeyword& keyword, const Site& site) {
    if (!site.datum.is_object()) {
        return;
    }
    const auto& members = site.datum.get_ref<const nlohmann::json::object_t&>();
    for (const std::string* name : *keyword.kept) {
        traceAccounted(*name, site);
        if (members.find(*name) == members.end()) {
            site.walk.report(Place(site.place, *name), [] { return MissingRequired(); });
        }
    }
}

NameList keep(const OptionalKeyword& keyword, const SchemaSite& at) {
    return textsOf(requireArray(*keyword.parameter, at.place));
}

void apply(const OptionalKeyword& keyword, const Site& site) {
    if (!site.datum.is_object()) {
        return;
    }
    for (const std::string* name : *keyword.kept) {
        traceAccounted(*name, site);
    }
}

PropertySchemas keep(const PropertiesKeyword& keyword, const SchemaSite& at) {
    PropertySchemas schemas;
    const auto& members = requireObject(*keyword.parameter, at.place);
    schemas.properties.reserve(members.size());
    for (const auto& [name, schema] : members) {
        schemas.properties.push_back(
            {&name, OwnedSchema(new SchemaNode(schema, Place(at.place, name), at.owner))});
    }
    return schemas;
}

void apply(const PropertiesKeyword& keyword, const Site& site) {
    if (!site.datum.is_object()) {
        return;
    }
    const auto& properties = keyword.kept->properties;
    if (site.walk.keepsTraces()) {
        for (const auto& property : properties) {
            traceAccounted(*property.name, site);
        }
    }
    auto property = properties.begin();
    for (const auto& [name, value] : site.datum.get_ref<const nlohmann::json::object_t&>()) {
        property =
            std::lower_bound(property, properties.end(), name,
                             [](const auto& each, const std::string& wanted) { return *each.name < wanted; });
        if (property != properties.end() && *property->name == name) {
            apply(SubschemaWalk{property->schema.get()}, {site.walk, value, Place(site.place, name)});
            if (site.walk.isDecided()) {
                return;
            }
        }
    }
}

ItemsSchema keep(const ItemsKeyword& keyword, const SchemaSite& at) {
    ItemsSchema items{OwnedSchema(new SchemaNode(*keyword.parameter, at.place, at.owner))};
    items.schema->requireSchema();
    return items;
}

void apply(const ItemsKeyword& keyword, const Site& site) {
    if (!site.datum.is_array()) {
        return;
    }
    const SubschemaWalk request{keyword.kept->schema.get()};
    std::size_t index = 0;
    for (const nlohmann::json& element : site.datum.get_ref<const nlohmann::json::array_t&>()) {
        apply(request, {site.walk, element, Place(site.place, index)});
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
