#pragma once

#include <nlohmann/json.hpp>
#include <set>
#include <string>

#include "jsv/annotation_collection.hpp"

namespace examples {

/// Keeps errors and warnings, and notes which schema objects the walk came by.
///
/// A trace tells the place in the data. The schema object that describes a place is found by going down
/// `properties` and `items`; alternatives count when they are chosen, what they fix where the datum has it.
class WalkRecord : public jsv::AbstractAnnotationCollection {
public:
    WalkRecord(const nlohmann::json& data, const nlohmann::json& schema, std::set<std::string>& reached)
        : AbstractAnnotationCollection(true), dataDocument(data), schemaDocument(schema), places(reached) {}

    void add(jsv::Location location, jsv::Issue issue) override;
    [[nodiscard]] const jsv::AnnotationCollection& findings() const { return kept; }

private:
    void addPlace(const jsv::Location& location);
    void addAlternative(const jsv::Location& location, const jsv::AlternativeTrace& choice);

    const nlohmann::json& dataDocument;
    const nlohmann::json& schemaDocument;
    std::set<std::string>& places;
    jsv::AnnotationCollection kept{false};
};

} // namespace examples
