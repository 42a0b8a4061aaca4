#include "jsv/walk.hpp"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "jsv/keywords/apply.hpp"

namespace jsv {

namespace {

using Json = nlohmann::json;

const Json& valueAt(const Json& document, const Location& location) {
    return document.at(Json::json_pointer(location.text()));
}

} // namespace

void validateAt(const ValidationContext& context, const Location& dataLocation,
                const Location& schemaLocation, AbstractAnnotationCollection& sink) {
    const Json& datum = valueAt(context.data, dataLocation);
    const Place place(dataLocation);
    SchemaNode root(valueAt(context.schema, schemaLocation), Place(schemaLocation));
    SchemaNode::BuiltKeyword request{Place(schemaLocation), SubschemaWalk{&root}};
    Walk(context, sink).begin(request, datum, place);
}

void Walk::begin(SchemaNode::BuiltKeyword& request, const Json& datum, const Place& place) {
    apply(request, {*this, datum, place, noMembers});
}

void Walk::visit(SchemaNode& node, const Json& datum, const Place& place) {
    if (isPassed(node, datum)) {
        return;
    }
    trace(place, [] { return SubschemaTrace(); });
    if (!node.value().is_object()) {
        node.requireSchema();
        if (!node.value().get<bool>()) {
            report(place, [] { return InvalidItem(); });
        }
        return;
    }
    const std::size_t firstAccounted = accounted.size();
    if (datum.is_object()) {
        visitObject(node, datum, place);
    } else {
        applyKeywords(node, {*this, datum, place, noMembers});
    }
    if (accounted.size() > firstAccounted) {
        accounted.resize(firstAccounted);
    }
}

/// Whether it takes no more than a look to know that nothing is to be told of a datum.
bool Walk::isPassed(const SchemaNode& node, const Json& datum) const {
    return node.isComplete() && !datum.is_object() && !keepsTraces() && node.valueCheck().passes(datum);
}

void Walk::visitObject(SchemaNode& node, const Json& datum, const Place& place) {
    Members members(node.names(), datum, scratch);
    const Site site{*this, datum, place, members};
    const std::size_t firstAccounted = accounted.size();
    applyKeywords(node, site);
    if (!isDecided()) {
        warnOfUnused(node, site, firstAccounted);
    }
}

void Walk::applyAlternative(SchemaNode& node, const Site& site) {
    applyKeywords(node, site);
    if (!isDecided()) {
        account(node.ownNames());
    }
}

bool Walk::fits(SchemaNode& node, const Site& site) {
    const Mark before = mark();
    const bool fitting = tryOut(node, site);
    if (!fitting) {
        forgetSince(before);
    }
    return fitting;
}

void Walk::surfaceFaults(SchemaNode& node, const Site& site) {
    const Mark before = mark();
    const bool thoroughBefore = std::exchange(thorough, true);
    tryOut(node, site);
    thorough = thoroughBefore;
    forgetSince(before);
}

bool Walk::tryOut(SchemaNode& node, const Site& site) {
    const bool failedBefore = std::exchange(failed, false);
    ++trials;
    applyAlternative(node, site);
    --trials;
    return !std::exchange(failed, failedBefore);
}

void Walk::forgetSince(const Mark& mark) {
    held.erase(held.begin() + static_cast<std::ptrdiff_t>(mark.held), held.end());
    accounted.resize(mark.accounted);
}

void Walk::handOnHeld() {
    if (isTrial()) {
        return;
    }
    for (Annotation& annotation : held) {
        sink.add(std::move(annotation.location), std::move(annotation.issue));
    }
    held.clear();
}

void Walk::applyKeywords(SchemaNode& node, const Site& site) {
    if (!node.isComplete()) {
        buildAndApply(node, site);
        return;
    }
    // Where one check is all, few data ever come here: no list of effective keywords is kept for them.
    if (tracesNow() || node.valueCheck().isWhole()) {
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

void Walk::buildAndApply(SchemaNode& node, const Site& site) {
    node.requireModestDepth();
    // Each member is built and applied before the next is built: of several faults the first in this order
    // surfaces.
    for (std::size_t member = 0; member < node.memberCount(); ++member) {
        SchemaNode::BuiltKeyword& built = node.keyword(member, context);
        checkParameter(built, node);
        site.members.refresh();
        apply(built, site);
    }
    if (!node.isComplete()) {
        node.finish();
    }
}

void Walk::warnOfUnused(const SchemaNode& node, const Site& site, std::size_t firstAccounted) {
    const NameRoles& own = node.ownNames();
    for (std::size_t position = 0; position < site.members.size(); ++position) {
        const Member member = site.members[position];
        const NameRole role = member.id < own.size() ? own[member.id] : NameRole();
        if (role.isDescribed || (role.isAccounted && !node.describesMembers())) {
            continue;
        }
        const Place memberPlace(site.place, *member.name);
        if (!role.isAccounted && !isAccounted(member.id, firstAccounted)) {
            report(memberPlace, [] { return SuperfluousItem(); });
        }
        if (node.describesMembers()) {
            warnOfAll(*member.value, memberPlace);
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

bool Walk::isAccounted(NameId id, std::size_t firstAccounted) const {
    return std::any_of(
        accounted.begin() + static_cast<std::ptrdiff_t>(firstAccounted), accounted.end(),
        [&](const NameRoles* names) { return id < names->size() && (*names)[id].isAccounted; });
}

} // namespace jsv
