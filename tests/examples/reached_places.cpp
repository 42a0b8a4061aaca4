#include "tests/examples/reached_places.hpp"

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace examples {

namespace {

using nlohmann::json;

/// Goes to a member if there is one of that name.
bool enter(const json*& node, const std::string& name) {
    const auto member = node->is_object() ? node->find(name) : node->end();
    if (member == node->end()) {
        return false;
    }
    node = &*member;
    return true;
}

/// The place of the schema object that describes a place of the data; none for what the schema does not know.
std::optional<jsv::Location> describing(const json& schema, const std::vector<std::string>& steps) {
    const json* node = &schema;
    jsv::Location place;
    for (const std::string& step : steps) {
        if (enter(node, "items")) {
            place.append("items");
            continue;
        }
        if (!enter(node, "properties") || !enter(node, step)) {
            return std::nullopt;
        }
        place.append("properties");
        place.append(step);
    }
    return place;
}

} // namespace

void WalkRecord::add(jsv::Location location, jsv::Issue issue) {
    if (std::holds_alternative<jsv::SubschemaTrace>(issue)) {
        addPlace(location);
    } else if (const auto* choice = std::get_if<jsv::AlternativeTrace>(&issue)) {
        addAlternative(location, *choice);
    } else if (jsv::severityOf(issue) != jsv::Severity::Info) {
        kept.add(std::move(location), std::move(issue));
    }
}

void WalkRecord::addPlace(const jsv::Location& location) {
    if (const auto place = describing(schemaDocument, location.components())) {
        places.insert(place->text());
    }
}

void WalkRecord::addAlternative(const jsv::Location& location, const jsv::AlternativeTrace& choice) {
    const std::string place = choice.group + "/" + std::to_string(choice.alternative);
    places.insert(place);
    const json& alternative = schemaDocument.at(json::json_pointer(place));
    const json& datum = dataDocument.at(json::json_pointer(location.text()));
    if (!alternative.contains("properties") || !datum.is_object()) {
        return;
    }
    for (const auto& fixed : alternative.at("properties").items()) {
        if (datum.contains(fixed.key())) {
            jsv::Location member({"properties"});
            member.append(fixed.key());
            places.insert(place + member.text());
        }
    }
}

} // namespace examples
