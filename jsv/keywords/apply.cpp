#include "jsv/keywords/apply.hpp"

#include <memory>
#include <optional>
#include <utility>

#include "jsv/exceptions.hpp"
#include "jsv/keywords/groups.hpp"
#include "jsv/keywords/members.hpp"
#include "jsv/keywords/references.hpp"
#include "jsv/keywords/values.hpp"

namespace jsv {

namespace {

template <typename Kept>
void store(Kept value, std::optional<Kept>& place) {
    place = std::move(value);
}

template <typename Kept>
void store(Kept value, std::unique_ptr<Kept>& place) {
    place = std::make_unique<Kept>(std::move(value));
}

struct Checker {
    const SchemaSite& at;

    void operator()(SubschemaWalk& /*request*/) const {}
    template <typename Kind>
    void operator()(Kind& keyword) const {
        if (!keyword.kept) {
            store(keep(keyword, at), keyword.kept);
        }
    }
};

struct Applier {
    const Place& place;
    const Site& site;

    void operator()(OneOfKeyword& keyword) const { apply(keyword, place, site); }
    void operator()(AllOfKeyword& keyword) const { apply(keyword, site); }
    template <typename Kind>
    void operator()(const Kind& keyword) const {
        apply(keyword, site);
    }
};

} // namespace

void checkParameter(SchemaNode::BuiltKeyword& built, SchemaNode& owner) {
    try {
        std::visit(Checker{{built.place, owner}}, built.keyword);
    } catch (const nlohmann::json::exception&) {
        throw InvalidSchemaException(built.place.location(), "The schema is invalid.");
    }
}

void apply(SchemaNode::BuiltKeyword& built, const Site& site) {
    std::visit(Applier{built.place, site}, built.keyword);
}

} // namespace jsv
