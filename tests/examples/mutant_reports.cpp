// Validates many changed copies of a few documents in one process.
//
//     mutant_reports SCHEMA_FILE [--places]
//
// Each line of standard input is {"file": PATH, "patch": [...]}: a document and what is changed in it, as a
// JSON patch. Each gives a line {"verdict": 0, "report": [LINE, ...]}. With --places the last line is
// {"places": [...]}, all schema objects that the walks came by.

#include <fstream>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

#include "jsv/annotation_collection.hpp"
#include "jsv/walk.hpp"
#include "tests/examples/reached_places.hpp"

namespace {

using nlohmann::json;

json parseFile(const std::string& path) {
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("file not found: " + path);
    }
    return json::parse(file);
}

/// Documents by their paths, each parsed once.
class Documents {
public:
    const json& at(const std::string& path) {
        const auto known = documents.find(path);
        return known != documents.end() ? known->second
                                        : documents.emplace(path, parseFile(path)).first->second;
    }

private:
    std::map<std::string, json> documents;
};

json linesOf(const std::string& report) {
    json lines = json::array();
    std::istringstream text(report);
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    return lines;
}

json outcome(const jsv::AnnotationCollection& findings) {
    const bool warned = findings.count(jsv::Severity::Warning) > 0;
    const int verdict = findings.count(jsv::Severity::Error) > 0 ? 2 : warned ? 1 : 0;
    return {{"verdict", verdict}, {"report", linesOf(findings.report())}};
}

/// The outcome as users get it, without traces.
json validate(const json& data, const json& schema) {
    jsv::FilteredAnnotationCollection<jsv::IssueFilter> findings;
    jsv::validateAt({data, schema}, jsv::Location(), jsv::Location(), findings);
    return outcome(findings);
}

json validateTraced(const json& data, const json& schema, std::set<std::string>& places) {
    examples::WalkRecord record(data, schema, places);
    jsv::validateAt({data, schema}, jsv::Location(), jsv::Location(), record);
    return outcome(record.findings());
}

void run(const std::string& schemaPath, bool tracesPlaces) {
    const json schema = parseFile(schemaPath);
    Documents documents;
    std::set<std::string> places;
    for (std::string line; std::getline(std::cin, line);) {
        const json request = json::parse(line);
        const json data = documents.at(request.at("file").get<std::string>()).patch(request.at("patch"));
        std::cout << (tracesPlaces ? validateTraced(data, schema, places) : validate(data, schema)) << '\n';
    }
    if (tracesPlaces) {
        std::cout << json{{"places", places}} << '\n';
    }
    std::cout.flush();
}

} // namespace

int main(int argc, char** argv) {
    const bool tracesPlaces = argc == 3 && std::string(argv[2]) == "--places";
    if (argc != 2 && !tracesPlaces) {
        std::cerr << "usage: mutant_reports SCHEMA_FILE [--places]" << std::endl;
        return 2;
    }
    try {
        run(argv[1], tracesPlaces);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << std::endl;
        return 1;
    }
    return 0;
}
