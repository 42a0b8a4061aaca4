#include "tools/reference/standard_schema.hpp"

#include <gtest/gtest.h>

#include <ostream>
#include <stdexcept>
#include <string>

namespace {

using Json = nlohmann::ordered_json;
using reference::Draft;
using reference::standardSchema;

// The translation of a schema as that of a member x, without what is around it.
Json translatedMember(const std::string& schema, Draft draft = Draft::draft07) {
    const Json dialect = Json::parse(R"({"properties": {"x": )" + schema + "}}");
    return standardSchema(dialect, draft)["properties"]["x"];
}

struct Case {
    const char* name;
    const char* dialect;
    const char* standard;
};

void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.name;
}

class TranslatedMember : public testing::TestWithParam<Case> {};

TEST_P(TranslatedMember, IsOfBothDrafts) {
    const Json expected = Json::parse(GetParam().standard);
    EXPECT_EQ(translatedMember(GetParam().dialect).dump(1), expected.dump(1));
    EXPECT_EQ(translatedMember(GetParam().dialect, Draft::draft2020).dump(1), expected.dump(1));
}

const Case cases[] = {
    {"Nothing", "{}", "{}"},
    {"True", "true", "true"},
    {"False", "false", "false"},
    {"Type", R"({"type": "integer"})", R"({"type": "integer"})"},
    {"Limits", R"({"minimum": 0, "maximum": 2.5})",
     R"({"description": "Range: ≥ 0, ≤ 2.5", "markdownDescription": "**Range**: ≥ 0, ≤ 2.5",
         "minimum": 0, "maximum": 2.5})"},
    {"ExclusiveLimits", R"({"minimum": 0, "exclusiveMinimum": true, "maximum": 1, "exclusiveMaximum": true})",
     R"({"description": "Range: > 0, < 1", "markdownDescription": "**Range**: \\> 0, \\< 1",
         "exclusiveMinimum": 0, "exclusiveMaximum": 1})"},
    {"InclusiveBySwitch", R"({"maximum": 1, "exclusiveMaximum": false})",
     R"({"description": "Range: ≤ 1", "markdownDescription": "**Range**: ≤ 1", "maximum": 1})"},
    {"SwitchAlone", R"({"exclusiveMinimum": true})", "{}"},
    {"UnitAndDefault",
     R"({"description": "<p>Area <i>A</i>.</p>", "units": "[m<sup>2</sup>]", "default": 2})",
     R"({"description": "Area A.\n\nUnit: [m²]\nDefault: 2",
         "markdownDescription": "Area *A*.\n\n**Unit**: \\[m²\\]\\\n**Default**: `2`", "default": 2})"},
    {"FileName", R"({"type": "string", "format": "uri"})",
     R"({"description": "Value: name of a file", "markdownDescription": "**Value**: name of a file",
         "type": "string"})"},
    {"Reference", R"({"requiredIn": {"itemProperty": "name", "$array_ref": "/A/B"}})",
     R"({"description": "Refers to: a name in /A/B", "markdownDescription": "**Refers to**: a `name` in `/A/B`"})"},
    {"Values", R"({"description": "<ul><li>on: it <i>goes</i></li></ul>", "enum": ["on", "off", "on"]})",
     R"({"description": "- on: it goes", "markdownDescription": "- on: it *goes*", "enum": ["on", "off"],
         "enumDescriptions": ["it goes", ""], "markdownEnumDescriptions": ["it *goes*", ""]})"},
    {"NoValues", R"({"enum": []})", R"({"not": {}})"},
    {"ForEditorsOnly", R"({"autoexpand": true, "$schema": "x"})", "{}"},
    {"Elements", R"({"type": "array", "items": {"type": "number"}})",
     R"({"type": "array", "items": {"type": "number"}})"},
    {"PairOfAnObject", R"({"type": "string", "oneOf": [{"required": ["a"]}, {"required": ["b"]}]})",
     R"({"type": "string", "anyOf": [{"not": {"type": "object"}},
         {"oneOf": [{"required": ["a"]}, {"required": ["b"]}]}]})"},
    {"AlternativesOfAnyDatum", R"({"oneOf": [{"type": "string"}, {"required": ["b"]}]})",
     R"({"oneOf": [{"type": "string"}, {"required": ["b"]}]})"},
    {"EmptyGroup", R"({"oneOf": []})", R"({"not": {"type": "object"}})"},
    {"GroupsThatClash", R"({"enum": [], "oneOf": []})",
     R"({"not": {}, "allOf": [{"not": {"type": "object"}}]})"},
    {"TwoGroups", R"({"oneOf": [{"const": "a"}], "allOf": [{"oneOf": [{"const": "b"}]}]})",
     R"({"oneOf": [{"const": "a"}], "allOf": [{"oneOf": [{"const": "b"}]}]})"},
};

INSTANTIATE_TEST_SUITE_P(Cases, TranslatedMember, testing::ValuesIn(cases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(StandardSchema, NamesItsDraft) {
    EXPECT_EQ(standardSchema(Json::object(), Draft::draft07).dump(),
              R"({"$schema":"http://json-schema.org/draft-07/schema#"})");
    EXPECT_EQ(standardSchema(Json::object(), Draft::draft2020)["$schema"],
              "https://json-schema.org/draft/2020-12/schema");
    EXPECT_EQ(standardSchema(false, Draft::draft07)["not"], Json::object());
}

TEST(StandardSchema, LetsEditorsWarnOfMembersThatNothingUses) {
    const char* const object =
        R"({"type": "object", "required": ["a", "a"], "optional": ["b"], "properties": {"b": true}})";
    EXPECT_EQ(translatedMember(object), Json::parse(R"({
        "type": "object", "properties": {"b": true, "a": true}, "required": ["a"],
        "additionalProperties": {"deprecationMessage": "The value of this item will not be used."}})"));
    EXPECT_EQ(translatedMember(object, Draft::draft2020)["additionalProperties"], Json::parse(R"(
        {"deprecated": true, "deprecationMessage": "The value of this item will not be used."})"));
}

TEST(StandardSchema, LetsTheCommandFileNameItsSchema) {
    const Json schema =
        standardSchema(Json::parse(R"({"properties": {"SETUP": {"properties": {}}}})"), Draft::draft07);
    EXPECT_TRUE(schema["properties"].contains("$schema"));
    EXPECT_FALSE(schema["properties"]["SETUP"]["properties"].contains("$schema"));
}

const char* const weir = R"({
    "type": "object",
    "properties": {
        "crest": {"type": "number"},
        "crest_file": {"type": "string"},
        "my": {"type": "number"},
        "type": {"type": "string", "enum": ["wall", "weir"], "description": "<ul><li>wall: closed</li></ul>"}
    },
    "required": ["my", "type"],
    "oneOf": [
        {"description": "<p>No water passes.</p>", "properties": {"type": {"const": "wall"}}, "required": ["type"]},
        {"description": "<p>A crest.</p>", "required": ["my", "type"], "optional": ["level"],
         "properties": {"type": {"const": "weir"}},
         "allOf": [{"oneOf": [{"required": ["crest"]}, {"required": ["crest_file"]}]}]}
    ]})";

TEST(StandardSchema, PutsSelectorsFirst) {
    const Json schema = translatedMember(weir);
    EXPECT_EQ(schema["properties"].begin().key(), "type");
    EXPECT_EQ(schema["required"], Json::parse(R"(["type", "my"])"));
    EXPECT_EQ(schema["oneOf"][1].begin().key(), "properties");
    EXPECT_EQ(schema["oneOf"][1]["required"], Json::parse(R"(["type", "my"])"));
}

TEST(StandardSchema, TellsWithEachValueWhatItsVariantRequires) {
    const Json type = translatedMember(weir)["properties"]["type"];
    EXPECT_EQ(type["enumDescriptions"], Json::parse(R"(["closed\n\nNo water passes.",
        "A crest.\n\nRequires my; one of crest, crest_file.\n\nMay use level."])"));
    EXPECT_EQ(type["markdownEnumDescriptions"][1],
              "A crest.\n\nRequires `my`; one of `crest`, `crest_file`.\n\nMay use `level`.");
}

TEST(StandardSchema, LeavesTheHoverOfABlockToItsOwnDescription) {
    const Json schema = translatedMember(weir);
    EXPECT_EQ(schema["oneOf"][0],
              Json::parse(R"({"properties": {"type": {"const": "wall"}}, "required": ["type"]})"));
    EXPECT_EQ(schema["oneOf"][1]["allOf"],
              Json::parse(R"([{"oneOf": [{"required": ["crest"]}, {"required": ["crest_file"]}]}])"));
}

TEST(StandardSchema, KeepsTheDescriptionOfAnAlternativeThatNoValueSelects) {
    const Json schema =
        translatedMember(R"({"type": "object", "oneOf": [{"description": "Inline.", "required": ["a"]}]})");
    EXPECT_EQ(schema["oneOf"][0]["description"], "Inline.");
}

struct Fault {
    const char* name;
    const char* dialect;
    const char* message;
};

void PrintTo(const Fault& each, std::ostream* stream) {
    *stream << each.name;
}

class FaultySchema : public testing::TestWithParam<Fault> {};

TEST_P(FaultySchema, IsRefusedWithItsPlace) {
    try {
        standardSchema(Json::parse(GetParam().dialect), Draft::draft07);
        FAIL() << "accepted";
    } catch (const std::invalid_argument& error) {
        EXPECT_STREQ(error.what(), GetParam().message);
    }
}

const Fault faults[] = {
    {"Array", "[]", "/: A schema must be defined by either an object or a boolean."},
    {"Keyword", R"({"items": {"title": ""}})", "/items/title: The keyword 'title' is not supported."},
    {"Type", R"({"type": "null"})", "/type: The provided type is invalid."},
    {"Description", R"({"description": 1})", "/description: This keyword requires a string parameter."},
    {"Limit", R"({"minimum": "0"})", "/minimum: This keyword requires a number parameter."},
    {"Switch", R"({"minimum": 0, "exclusiveMinimum": 1})",
     "/exclusiveMinimum: This keyword requires a boolean parameter."},
    {"Names", R"({"required": [1]})", "/required: The schema is invalid."},
    {"Members", R"({"properties": []})", "/properties: This keyword requires an object parameter."},
    {"Alternative", R"({"oneOf": [1]})", "/oneOf/0: This keyword requires an object parameter."},
    {"AllOf", R"({"allOf": [{"oneOf": [], "type": "object"}]})",
     "/allOf/0: Only single items are supported."},
    {"AllOfOther", R"({"allOf": [{"anyOf": []}]})",
     "/allOf/0: Only a single 'oneOf' item is supported here."},
    {"Default", R"({"default": null})",
     "/default: Only string, numeric, and boolean default values are supported."},
    {"Format", R"({"format": "date"})", "/format: Only the 'uri' format is currently supported."},
    {"Reference", R"({"requiredIn": {"itemProperty": "name"}})", "/requiredIn: The schema is invalid."},
    {"Autoexpand", R"({"autoexpand": "yes"})", "/autoexpand: This keyword requires an boolean parameter."},
};

INSTANTIATE_TEST_SUITE_P(Faults, FaultySchema, testing::ValuesIn(faults),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(StandardSchema, RefusesSchemasThatAreNestedTooDeep) {
    Json schema = Json::object();
    for (int level = 0; level < 501; ++level) {
        schema = Json{{"items", schema}};
    }
    EXPECT_THROW(standardSchema(schema, Draft::draft07), std::invalid_argument);
    EXPECT_NO_THROW(standardSchema(schema["items"], Draft::draft07));
}

} // namespace
