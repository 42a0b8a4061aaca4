#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <vector>

#include "jsv/annotation_collection.hpp"
#include "jsv/issue.hpp"
#include "jsv/keywords/apply.hpp"
#include "jsv/location.hpp"
#include "jsv/schema_keyword.hpp"
#include "jsv/schema_node.hpp"
#include "jsv/validation_context.hpp"

namespace jsv {

/// Validates the datum at a location of the data against the schema at a location of the schema document.
/// Findings go to `sink`, the walk goes on after each.
/// @throws InvalidSchemaException the first fault of the schema that the walk meets.
/// @throws nlohmann::json::exception a location leads nowhere.
void validateAt(const ValidationContext& context, const Location& dataLocation,
                const Location& schemaLocation, AbstractAnnotationCollection& sink);

/// The going together through data and schema.
///
/// To find out whether an alternative of a group fits, a walk tries it: during a trial an error only ends the
/// trial, and the warnings and accounted names are held until it is known whether they count.
class Walk {
public:
    /// How far a walk had come in what it holds.
    struct Mark {
        std::size_t held;
        std::size_t accounted;
    };

    Walk(const ValidationContext& documents, AbstractAnnotationCollection& collection)
        : context(documents), sink(collection) {}

    /// A walk over the same documents into another collection.
    [[nodiscard]] Walk into(AbstractAnnotationCollection& collection) const { return {context, collection}; }

    /// Answers the request to walk a datum.
    void begin(SchemaNode::BuiltKeyword& request, const nlohmann::json& datum, const Place& place);
    /// Applies a schema to a datum and warns about its members that no keyword accounted for.
    void visit(SchemaNode& node, const nlohmann::json& datum, const Place& place);
    /// Applies a schema without that warning; the names that it and its groups account for stay accounted.
    void applyAlternative(SchemaNode& node, const Site& site);

    /// Whether a schema fits, that is, gives no error. If it does, its warnings and names are held.
    bool fits(SchemaNode& node, const Site& site);
    /// Applies a schema for nothing but the faults of schemas that this leads to.
    void surfaceFaults(SchemaNode& node, const Site& site);
    [[nodiscard]] Mark mark() const { return {held.size(), accounted.size()}; }
    /// Forgets what has been held since.
    void forgetSince(const Mark& mark);
    /// Hands on what has been held, unless a trial goes on that it belongs to.
    void handOnHeld();

    /// Tells an error or a warning; `make` makes it where it is wanted.
    template <typename Make>
    void report(const Place& place, Make make) {
        using Kind = decltype(make());
        static_assert(Kind::severity != Severity::Info);
        if (!isTrial()) {
            sink.add(place.location(), make());
        } else if constexpr (Kind::severity == Severity::Error) {
            failed = true;
        } else {
            held.push_back({place.location(), make()});
        }
    }

    /// Records what the walk did, where that is wanted.
    template <typename Make>
    void trace(const Place& place, Make make) {
        using Kind = decltype(make());
        static_assert(Kind::severity == Severity::Info);
        if (tracesNow()) {
            sink.add(place.location(), make());
        }
    }

    /// Counts names as accounted for in the schema object that is being applied; the roles must outlive it.
    void account(const NameRoles& names) { accounted.push_back(&names); }
    /// The names accounted for so far.
    [[nodiscard]] const std::vector<const NameRoles*>& accountedNames() const { return accounted; }

    /// Hands on an annotation that another walk has found.
    void takeOver(const Annotation& annotation) { sink.add(annotation.location, annotation.issue); }

    [[nodiscard]] const ValidationContext& documents() const { return context; }
    [[nodiscard]] bool keepsTraces() const { return sink.keepsTraces(); }
    [[nodiscard]] bool isTrial() const { return trials > 0; }
    /// Whether schemas are applied for nothing but their faults.
    [[nodiscard]] bool isThorough() const { return thorough; }
    /// Whether the trial that goes on has failed, so that nothing more can come of it.
    [[nodiscard]] bool isDecided() const { return failed && !thorough; }
    /// Lets the trial that goes on fail.
    void fail() { failed = true; }

private:
    bool tryOut(SchemaNode& node, const Site& site);
    [[nodiscard]] bool isPassed(const SchemaNode& node, const nlohmann::json& datum) const;
    void visitObject(SchemaNode& node, const nlohmann::json& datum, const Place& place);
    void applyKeywords(SchemaNode& node, const Site& site);
    void buildAndApply(SchemaNode& node, const Site& site);
    void warnOfUnused(const SchemaNode& node, const Site& site, std::size_t firstAccounted);
    void warnOfAll(const nlohmann::json& datum, const Place& place);
    [[nodiscard]] bool isAccounted(NameId id, std::size_t firstAccounted) const;
    [[nodiscard]] bool tracesNow() const { return sink.keepsTraces() && !isTrial(); }

    const ValidationContext& context;
    AbstractAnnotationCollection& sink;
    /// Trials that go on, one inside the other.
    std::size_t trials = 0;
    bool thorough = false;
    bool failed = false;
    std::vector<Annotation> held;
    std::vector<const NameRoles*> accounted;
    MemberScratch scratch;
    /// Of data that are no objects.
    NameIndex noNames;
    nlohmann::json noObject;
    Members noMembers{noNames, noObject, scratch};
};

} // namespace jsv
