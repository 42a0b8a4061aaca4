#include "jsv/walk.hpp"

#include <algorithm>

#include "jsv/keywords/apply.hpp"

namespace jsv {

namespace {

using Json = nlohmann::json;

const Json& valueAt(const Json& document, const Location& location) {
    return document.at(Json::json_pointer(location.text()));
}

bool isBefore(const AccountedName& entry, const std::string& name) {
    return *entry.name < name;
}

} // namespace

void validateAt(const ValidationContext& context, const Location& dataLocation,
                const Location& schemaLocation, AbstractAnnotationCollection& sink) {
    const Place place(dataLocation);
    SchemaNode root(valueAt(context.schema, schemaLocation), Place(schemaLocation));
    SchemaNode::BuiltKeyword request{Place(schemaLocation), SubschemaWalk{&root}};
    Walk walk(context, sink);
    apply(request, {walk, valueAt(context.data, dataLocation), place});
}

void Walk::visit(SchemaNode& node, const Json& datum, const Place& place) {
    trace(place, [] { return SubschemaTrace(); });
    node.requireSchema();
    if (node.value().is_boolean()) {
        if (!node.value().get<bool>()) {
            report(place, [] { return InvalidItem(); });
        }
        return;
    }
    const std::size_t firstTable = accounted.size();
    applyKeywords(node, datum, place);
    if (datum.is_object() && !isProbe()) {
        warnOfUnused(node, datum, place, firstTable);
    }
    accounted.resize(firstTable);
}

void Walk::applyKeywords(SchemaNode& node, const Json& datum, const Place& place) {
    if (!node.isComplete()) {
        buildAndApply(node, datum, place);
        return;
    }
    const Site site{*this, datum, place};
    if (traces) {
        for (SchemaNode::BuiltKeyword& each : node.keywords()) {
            apply(each, site);
        }
        return;
    }
    for (SchemaNode::BuiltKeyword* each : node.effectiveKeywords()) {
        apply(*each, site);
        if (isDecided()) {
            return;
        }
    }
}

void Walk::buildAndApply(SchemaNode& node, const Json& datum, const Place& place) {
    // Each member is built and applied before the next is built: of several faults the first in this order
    // surfaces.
    for (std::size_t member = 0; member < node.memberCount(); ++member) {
        SchemaNode::BuiltKeyword& built = node.keyword(member, context);
        checkParameter(built, node);
        apply(built, {*this, datum, place});
    }
    if (!node.isComplete()) {
        node.finish();
    }
}

void Walk::warnOfUnused(const SchemaNode& node, const Json& datum, const Place& place,
                        std::size_t firstTable) {
    const NameTable& own = node.ownNames();
    auto entry = own.begin();
    for (const auto& [name, value] : datum.get_ref<const Json::object_t&>()) {
        entry = std::lower_bound(entry, own.end(), name, isBefore);
        const bool isOwn = entry != own.end() && *entry->name == name;
        if (isOwn && (entry->described || !node.describesMembers())) {
            continue;
        }
        const Place member(place, name);
        if (!isOwn && !isAccounted(name, firstTable)) {
            report(member, [] { return SuperfluousItem(); });
        }
        if (node.describesMembers()) {
            warnOfAll(value, member);
        }
    }
}

/// What a schema without keywords says of a datum: nothing in it is used.
void Walk::warnOfAll(const Json& datum, const Place& place) {
    if (!datum.is_object()) {
        return;
    }
    for (const auto& [name, value] : datum.get_ref<const Json::object_t&>()) {
        report(Place(place, name), [] { return SuperfluousItem(); });
    }
}

bool Walk::isAccounted(const std::string& name, std::size_t firstTable) const {
    return std::any_of(accounted.begin() + static_cast<std::ptrdiff_t>(firstTable), accounted.end(),
                       [&](const NameTable* table) {
                           const auto entry = std::lower_bound(table->begin(), table->end(), name, isBefore);
                           return entry != table->end() && *entry->name == name;
                       });
}

void Walk::takeOver(const Annotation& annotation) {
    failed = failed || severityOf(annotation.issue) == Severity::Error;
    sink->add(annotation.location, annotation.issue);
}

} // namespace jsv
