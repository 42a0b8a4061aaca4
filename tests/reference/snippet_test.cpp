#include "tools/reference/snippet.hpp"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "jsv/validate.hpp"

namespace {

using Json = nlohmann::ordered_json;

std::string exampleOf(const char* schema) {
    return reference::minimalExample(Json::parse(schema), "").dump();
}

TEST(Snippet, HoldsWhatIsRequiredAndNothingElse) {
    EXPECT_EQ(
        exampleOf(R"({"type": "object", "properties": {"a": {"type": "string"}, "b": {"type": "boolean"}},
                            "required": ["b"], "optional": ["a"]})"),
        R"({"b":true})");
}

TEST(Snippet, KeepsTheOrderOfTheSchema) {
    EXPECT_EQ(
        exampleOf(R"({"type": "object", "properties": {"z": {"type": "integer"}, "a": {"type": "integer"}},
                            "required": ["a", "z"]})"),
        R"({"z":1,"a":1})");
}

TEST(Snippet, TakesDefaultsAndFirstValues) {
    EXPECT_EQ(exampleOf(R"({"type": "number", "default": 9.81})"), "9.81");
    EXPECT_EQ(exampleOf(R"({"type": "string", "enum": ["on", "off"]})"), R"("on")");
}

TEST(Snippet, StaysWithinLimits) {
    EXPECT_EQ(exampleOf(R"({"type": "integer", "minimum": 7})"), "10");
    EXPECT_EQ(exampleOf(R"({"type": "integer", "minimum": 2, "maximum": 3})"), "2");
    EXPECT_EQ(exampleOf(R"({"type": "integer", "minimum": 2, "exclusiveMinimum": true, "maximum": 3})"), "3");
    EXPECT_EQ(exampleOf(R"({"type": "number", "minimum": 20, "exclusiveMinimum": true, "maximum": 20.5,
                            "exclusiveMaximum": true})"),
              "20.25");
    EXPECT_EQ(exampleOf(R"({"type": "number", "maximum": 0, "exclusiveMaximum": true})"), "-1");
}

TEST(Snippet, TakesTheVariantOfTheDefault) {
    EXPECT_EQ(exampleOf(R"({"type": "object",
        "properties": {"type": {"type": "string", "enum": ["x", "y"], "default": "y"}, "q": {"type": "integer"}},
        "optional": ["q"], "required": ["type"],
        "oneOf": [{"properties": {"type": {"const": "x"}}, "required": ["type"]},
                  {"properties": {"type": {"const": "y"}}, "required": ["type", "q"]}]})"),
              R"({"type":"y","q":1})");
}

TEST(Snippet, GivesOneOfAPairOnly) {
    EXPECT_EQ(exampleOf(R"({"type": "object",
        "properties": {"q_file": {"type": "string"}, "q": {"type": "integer"}}, "optional": ["q", "q_file"],
        "oneOf": [{"required": ["q_file"]}, {"required": ["q"]}]})"),
              R"({"q":1})");
}

TEST(Snippet, LooksForAnotherVariantWhereGroupsContradict) {
    EXPECT_EQ(exampleOf(R"({"type": "object",
        "properties": {"type": {"type": "string", "enum": ["x", "y"]}}, "required": ["type"],
        "allOf": [{"oneOf": [{"properties": {"type": {"const": "x"}}, "required": ["type"]},
                             {"properties": {"type": {"const": "y"}}, "required": ["type"]}]},
                  {"oneOf": [{"properties": {"type": {"const": "y"}}, "required": ["type"]}]}]})"),
              R"({"type":"y"})");
}

TEST(Snippet, SaysWhereNothingFits) {
    try {
        static_cast<void>(
            exampleOf(R"({"type": "object", "properties": {"A": {"type": "integer", "minimum": 5,
                                        "maximum": 4}}, "required": ["A"]})"));
        FAIL() << "no exception";
    } catch (const std::runtime_error& fault) {
        EXPECT_STREQ(fault.what(), "/A: no example can be made of this schema.");
    }
}

// References lead to other blocks, which the example of a single block does not have.
void removeReferences(Json& schema) {
    if (schema.is_object()) {
        schema.erase("requiredIn");
    }
    if (schema.is_structured()) {
        for (Json& inner : schema) {
            removeReferences(inner);
        }
    }
}

std::string reportOf(const Json& schema, const Json& datum) {
    std::ostringstream report;
    std::istringstream schemaText(schema.dump());
    std::istringstream dataText(datum.dump());
    jsv::validate({&report}, dataText, schemaText);
    return report.str();
}

/// Checks the node and those below it; gives the number of blocks.
int checkExamples(const Json& schema, const std::string& path) {
    int count = 0;
    if (schema.contains("properties") || schema.contains("items")) {
        EXPECT_EQ(reportOf(schema, reference::minimalExample(schema, path)), "") << path;
        count = schema.contains("properties") ? 1 : 0;
    }
    const Json properties = schema.value("properties", Json::object());
    for (const auto& [name, inner] : properties.items()) {
        count += checkExamples(inner, path + '/' + name);
    }
    return schema.contains("items") ? count + checkExamples(schema["items"], path) : count;
}

TEST(Snippet, OfEveryBlockOfTheCommandFileIsValid) {
    std::ifstream file(ORVANTE_SCHEMA_FILE);
    Json schema = Json::parse(file);
    removeReferences(schema);
    EXPECT_GT(checkExamples(schema, ""), 200);
}

} // namespace
