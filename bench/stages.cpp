// Where the time of a validation goes: prints the seconds of each stage of one, in a process that has done
// nothing before, as in use. "visit" looks at each value of the data once, which no walk can do without.

#include <filesystem>
#include <map>
#include <nlohmann/json.hpp>

#include "bench/support.hpp"
#include "jsv/annotation_collection.hpp"
#include "jsv/walk.hpp"

namespace {

/// Characters of all texts and names.
std::size_t visit(const nlohmann::json& value) {
    std::size_t characters = 0;
    if (value.is_object()) {
        for (const auto& [name, member] : value.get_ref<const nlohmann::json::object_t&>()) {
            characters += name.size() + visit(member);
        }
    } else if (value.is_array()) {
        for (const nlohmann::json& element : value) {
            characters += visit(element);
        }
    } else if (value.is_string()) {
        characters = value.get_ref<const std::string&>().size();
    }
    return characters;
}

/// Seconds of the parsing alone. The text is gone afterwards, as in a validation: its room is used again.
double timedParse(const std::string& file, nlohmann::json& document) {
    const std::string text = bench::readFile(file);
    return bench::timed([&] { document = nlohmann::json::parse(text); });
}

} // namespace

int main(int argc, char** argv) {
    return bench::run(argc, argv, 2, "SCHEMA DATA", [](const std::vector<std::string>& arguments) {
        std::map<std::string, double> seconds;
        nlohmann::json data;
        nlohmann::json schema;
        jsv::FilteredAnnotationCollection<jsv::IssueFilter> findings;
        std::string report;
        seconds["parse_data"] = timedParse(arguments[1], data);
        seconds["parse_schema"] = timedParse(arguments[0], schema);
        seconds["walk"] = bench::timed([&] { validateAt({data, schema}, {}, {}, findings); });
        seconds["report"] = bench::timed([&] { report = findings.report(); });
        std::size_t characters = 0;
        seconds["visit"] = bench::timed([&] { characters = visit(data); });
        if (characters > std::filesystem::file_size(arguments[1])) {
            throw std::runtime_error("more characters than the text has");
        }
        std::cout << nlohmann::json(seconds) << '\n';
    });
}
