// An independent validator over the translated schema: RapidJSON's, which stops at the first error. Prints
// the seconds of its stages and whether it found the data valid.

#include <rapidjson/document.h>
#include <rapidjson/schema.h>

#include <map>
#include <nlohmann/json.hpp>
#include <optional>

#include "bench/support.hpp"

namespace {

void parse(rapidjson::Document& document, const std::string& text) {
    document.Parse(text.data(), text.size());
    if (document.HasParseError()) {
        throw std::runtime_error("no JSON text");
    }
}

} // namespace

int main(int argc, char** argv) {
    return bench::run(argc, argv, 2, "DRAFT4_SCHEMA DATA", [](const std::vector<std::string>& arguments) {
        const std::string schemaText = bench::readFile(arguments[0]);
        const std::string dataText = bench::readFile(arguments[1]);
        std::map<std::string, double> seconds;
        rapidjson::Document data;
        rapidjson::Document schema;
        std::optional<rapidjson::SchemaDocument> compiled;
        bool valid = false;
        seconds["parse_data"] = bench::timed([&] { parse(data, dataText); });
        seconds["parse_schema"] = bench::timed([&] { parse(schema, schemaText); });
        seconds["compile"] = bench::timed([&] { compiled.emplace(schema); });
        seconds["validate"] = bench::timed([&] {
            rapidjson::SchemaValidator validator(*compiled);
            valid = data.Accept(validator);
        });
        std::cout << nlohmann::json{{"seconds", seconds}, {"valid", valid}} << '\n';
    });
}
