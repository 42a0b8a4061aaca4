// Runs the cases of tests/data/jsv: a file for each keyword or subject, a test for each case.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

#include "jsv/exceptions.hpp"
#include "jsv/validate.hpp"

namespace {

/// Keeps the members of a schema in the order of the case file, so that the validator has something to sort.
using Json = nlohmann::ordered_json;

/// Every file of cases; one too many in the folder is as wrong as one that is missing.
const std::set<std::string> fileNames = {"allOf.json",
                                         "autoexpand.json",
                                         "const.json",
                                         "default.json",
                                         "description.json",
                                         "dollar_schema.json",
                                         "enum.json",
                                         "exclusiveMaximum.json",
                                         "exclusiveMinimum.json",
                                         "format.json",
                                         "items.json",
                                         "maximum.json",
                                         "minimum.json",
                                         "oneOf.json",
                                         "optional.json",
                                         "parsing.json",
                                         "properties.json",
                                         "report.json",
                                         "required.json",
                                         "requiredIn.json",
                                         "schema_nodes.json",
                                         "type.json",
                                         "units.json",
                                         "unused.json"};

const std::set<std::string> exceptionTypes = {"CannotValidateException", "InvalidSchemaException",
                                              "InvalidTypeSchemaException"};

/// What a validation did, or shall do.
struct Outcome {
    int verdict = -1;
    std::string written;
    std::string exceptionType;
    std::string exceptionText;
    bool textGoesOn = false; ///< The expected text is only the beginning; the rest is the JSON library's.
};

struct Case {
    std::string name;
    std::string schema;
    std::string data;
    Outcome expected;
};

/// A fault of the case files themselves.
class CaseFileFault : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

void demand(bool condition, const std::string& fault) {
    if (!condition) {
        throw CaseFileFault(fault);
    }
}

void demandKnownMembers(const Json& object, std::initializer_list<std::string_view> known) {
    demand(object.is_object(), "not an object: " + object.dump());
    for (const auto& member : object.items()) {
        const bool isKnown = std::find(known.begin(), known.end(), member.key()) != known.end();
        demand(isKnown, "unknown member '" + member.key() + "'");
    }
}

/// The document in member `name`, or the text as it stands in `name`_text; exactly one of the two is there.
std::string documentOf(const Json& object, const std::string& name) {
    const std::string textName = name + "_text";
    demand(object.contains(name) != object.contains(textName), "either '" + name + "' or '" + textName + "'");
    return object.contains(name) ? object.at(name).dump() : object.at(textName).get<std::string>();
}

Outcome exceptionOf(const Json& throws) {
    demandKnownMembers(throws, {"type", "what", "what_begins"});
    demand(throws.contains("what") != throws.contains("what_begins"), "either 'what' or 'what_begins'");
    Outcome expected;
    expected.exceptionType = throws.at("type").get<std::string>();
    expected.textGoesOn = throws.contains("what_begins");
    expected.exceptionText = throws.at(expected.textGoesOn ? "what_begins" : "what").get<std::string>();
    demand(exceptionTypes.count(expected.exceptionType) == 1, "unknown type of exception");
    demand(!expected.exceptionText.empty(), "an exception without a text");
    return expected;
}

/// The report as printed: a line for each finding and an empty one behind them, nothing when there are none.
Outcome reportOf(const Json& object) {
    Outcome expected;
    expected.verdict = object.at("verdict").get<int>();
    for (const Json& line : object.at("report")) {
        expected.written += line.get<std::string>() + "\n";
    }
    demand(expected.verdict >= 0 && expected.verdict <= 2, "a verdict is 0, 1 or 2");
    demand((expected.verdict == 0) == expected.written.empty(), "verdict and report contradict each other");
    if (!expected.written.empty()) {
        expected.written += "\n";
    }
    return expected;
}

Outcome expectationOf(const Json& object) {
    const bool hasReport = object.contains("report") && object.contains("verdict");
    const bool hasEither = object.contains("report") || object.contains("verdict");
    demand(hasReport == hasEither, "'verdict' and 'report' go together");
    demand(hasReport != object.contains("throws"), "either 'verdict' with 'report' or 'throws'");
    return hasReport ? reportOf(object) : exceptionOf(object.at("throws"));
}

Case caseOf(const Json& object) {
    demandKnownMembers(
        object, {"name", "why", "schema", "schema_text", "data", "data_text", "verdict", "report", "throws"});
    return {object.at("name").get<std::string>(), documentOf(object, "schema"), documentOf(object, "data"),
            expectationOf(object)};
}

std::vector<Case> casesOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    demand(file.is_open(), "cannot be opened");
    const Json list = Json::parse(file);
    demand(list.is_array() && !list.empty(), "holds no cases");
    std::vector<Case> cases;
    std::set<std::string> names;
    for (std::size_t index = 0; index < list.size(); ++index) {
        try {
            cases.push_back(caseOf(list[index]));
            demand(names.insert(cases.back().name).second, "name used twice: " + cases.back().name);
        } catch (const std::exception& fault) {
            throw CaseFileFault("case " + std::to_string(index) + ": " + fault.what());
        }
    }
    return cases;
}

/// The exact class, not a base of it; the class of an unparsable text is known to the validator alone.
std::string exceptionTypeOf(const std::exception& error) {
    if (typeid(error) == typeid(jsv::InvalidTypeSchemaException)) {
        return "InvalidTypeSchemaException";
    }
    if (typeid(error) == typeid(jsv::InvalidSchemaException)) {
        return "InvalidSchemaException";
    }
    const bool ofSchema = dynamic_cast<const jsv::SchemaValidationException*>(&error) != nullptr;
    const bool ofRuntime = dynamic_cast<const std::runtime_error*>(&error) != nullptr;
    return ofRuntime && !ofSchema ? "CannotValidateException" : typeid(error).name();
}

Outcome run(const Case& example, bool printing) {
    std::istringstream data(example.data);
    std::istringstream schema(example.schema);
    std::ostringstream report;
    Outcome outcome;
    try {
        outcome.verdict = jsv::validate(jsv::ReportOutput{printing ? &report : nullptr}, data, schema);
    } catch (const std::exception& error) {
        outcome.exceptionType = exceptionTypeOf(error);
        outcome.exceptionText = error.what();
    }
    outcome.written = report.str();
    return outcome;
}

void expectOutcome(Outcome outcome, const Outcome& expected) {
    if (expected.textGoesOn) {
        outcome.exceptionText.resize(std::min(outcome.exceptionText.size(), expected.exceptionText.size()));
    }
    EXPECT_EQ(outcome.exceptionType, expected.exceptionType);
    EXPECT_EQ(outcome.exceptionText, expected.exceptionText);
    EXPECT_EQ(outcome.verdict, expected.verdict);
    EXPECT_EQ(outcome.written, expected.written);
}

class ConformanceTest : public testing::Test {
public:
    explicit ConformanceTest(Case example) : example_(std::move(example)) {}

    void TestBody() override {
        SCOPED_TRACE("schema: " + example_.schema + "\ndata: " + example_.data);
        expectOutcome(run(example_, true), example_.expected);
        Outcome silent = example_.expected;
        silent.written.clear();
        SCOPED_TRACE("without a stream");
        expectOutcome(run(example_, false), silent);
    }

private:
    Case example_;
};

void registerCases(const std::filesystem::path& path) {
    const std::string suite = "conformance." + path.stem().string();
    for (const Case& example : casesOf(path)) {
        testing::RegisterTest(suite.c_str(), example.name.c_str(), nullptr, nullptr, path.string().c_str(), 1,
                              [example]() -> testing::Test* { return new ConformanceTest(example); });
    }
}

void demandNoOtherFiles(const std::filesystem::path& folder) {
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        demand(fileNames.count(name) == 1, "unknown file of cases: " + name);
    }
}

/// Registers everything or says what is wrong with the case files.
bool registerAll(const std::filesystem::path& folder) {
    std::filesystem::path current = folder;
    try {
        demandNoOtherFiles(folder);
        for (const std::string& name : fileNames) {
            current = folder / name;
            registerCases(current);
        }
        return true;
    } catch (const std::exception& fault) {
        std::cerr << current.string() << ": " << fault.what() << '\n';
        return false;
    }
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (!registerAll(std::filesystem::path(ORVANTE_TEST_DATA) / "jsv")) {
        return EXIT_FAILURE;
    }
    return RUN_ALL_TESTS();
}
