// An independent validator over the translated schema: Valijson, which lists all errors, here over documents
// of the same JSON library. Prints the seconds of its stages and whether it found the data valid.

#include <map>
#include <nlohmann/json.hpp>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validation_results.hpp>
#include <valijson/validator.hpp>

#include "bench/support.hpp"

int main(int argc, char** argv) {
    return bench::run(argc, argv, 2, "DRAFT4_SCHEMA DATA", [](const std::vector<std::string>& arguments) {
        using valijson::adapters::NlohmannJsonAdapter;
        const std::string schemaText = bench::readFile(arguments[0]);
        const std::string dataText = bench::readFile(arguments[1]);
        std::map<std::string, double> seconds;
        nlohmann::json data;
        nlohmann::json schema;
        valijson::Schema compiled;
        valijson::ValidationResults findings;
        bool valid = false;
        seconds["parse_data"] = bench::timed([&] { data = nlohmann::json::parse(dataText); });
        seconds["parse_schema"] = bench::timed([&] { schema = nlohmann::json::parse(schemaText); });
        seconds["compile"] = bench::timed([&] {
            valijson::SchemaParser parser(valijson::SchemaParser::kDraft4);
            parser.populateSchema(NlohmannJsonAdapter(schema), compiled);
        });
        seconds["validate"] = bench::timed([&] {
            valijson::Validator validator;
            valid = validator.validate(compiled, NlohmannJsonAdapter(data), &findings);
        });
        std::cout << nlohmann::json{{"seconds", seconds}, {"valid", valid}} << '\n';
    });
}
