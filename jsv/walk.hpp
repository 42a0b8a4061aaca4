#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <vector>

#include "jsv/annotation_collection.hpp"
#include "jsv/issue.hpp"
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
/// A walk either puts its findings into a collection, or is a probe that only tells whether an error comes
/// up.
class Walk {
public:
    Walk(const ValidationContext& documents, AbstractAnnotationCollection& collection)
        : context(documents), sink(&collection), traces(collection.keepsTraces()) {}

    /// A probe over the same documents; `thorough`: it goes on after the first error, for the faults of the
    /// schema.
    [[nodiscard]] Walk probe(bool thorough) const { return {context, thorough}; }
    /// A walk over the same documents into another collection.
    [[nodiscard]] Walk into(AbstractAnnotationCollection& collection) const { return {context, collection}; }

    /// Applies a schema to a datum and warns about its members that no keyword accounted for.
    void visit(SchemaNode& node, const nlohmann::json& datum, const Place& place);
    /// Applies a schema without that warning; the names that its groups account for stay accounted.
    void applyKeywords(SchemaNode& node, const nlohmann::json& datum, const Place& place);

    /// Tells an error or a warning; `make` makes it where it is wanted.
    template <typename Make>
    void report(const Place& place, Make make) {
        using Kind = decltype(make());
        static_assert(Kind::severity != Severity::Info);
        failed = failed || Kind::severity == Severity::Error;
        if (sink != nullptr) {
            sink->add(place.location(), make());
        }
    }

    /// Records what the walk did, where that is wanted.
    template <typename Make>
    void trace(const Place& place, Make make) {
        using Kind = decltype(make());
        static_assert(Kind::severity == Severity::Info);
        if (traces) {
            sink->add(place.location(), make());
        }
    }

    /// Counts names as accounted for in the schema object that is being applied; the table must outlive the
    /// walk.
    void account(const NameTable& names) {
        if (!isProbe()) {
            accounted.push_back(&names);
        }
    }
    /// The tables accounted so far.
    [[nodiscard]] const std::vector<const NameTable*>& accountedTables() const { return accounted; }

    /// Hands an annotation on that another walk has found at this place.
    void takeOver(const Annotation& annotation);

    [[nodiscard]] const ValidationContext& documents() const { return context; }
    [[nodiscard]] bool isProbe() const { return sink == nullptr; }
    [[nodiscard]] bool keepsTraces() const { return traces; }
    /// Whether an error came up.
    [[nodiscard]] bool hasFailed() const { return failed; }
    /// Whether nothing more can come of going on.
    [[nodiscard]] bool isDecided() const { return failed && stopsAtError; }
    /// For probes of groups, which tell one error without making it.
    void fail() { failed = true; }

private:
    Walk(const ValidationContext& documents, bool thorough)
        : context(documents), sink(nullptr), traces(false), stopsAtError(!thorough) {}

    void buildAndApply(SchemaNode& node, const nlohmann::json& datum, const Place& place);
    void warnOfUnused(const SchemaNode& node, const nlohmann::json& datum, const Place& place,
                      std::size_t firstTable);
    void warnOfAll(const nlohmann::json& datum, const Place& place);
    [[nodiscard]] bool isAccounted(const std::string& name, std::size_t firstTable) const;

    const ValidationContext& context;
    AbstractAnnotationCollection* sink;
    bool traces;
    bool stopsAtError = false;
    bool failed = false;
    std::vector<const NameTable*> accounted;
};

} // namespace jsv
