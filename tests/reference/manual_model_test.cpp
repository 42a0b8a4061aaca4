#include "tools/reference/manual_model.hpp"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using reference::Block;
using reference::Condition;
using reference::Json;
using reference::Presence;
using reference::Selector;
using testing::ElementsAre;
using testing::IsEmpty;

Json object(const char* members) {
    Json schema = Json::parse(members);
    schema["type"] = "object";
    return schema;
}

TEST(ManualModel, ReadsTheFactsOfAKey) {
    const Block root = reference::readManual(object(R"({"properties": {"CFL": {
        "type": "number", "description": "<p>Factor.</p>", "units": "[-]", "default": 0.9,
        "minimum": 0, "exclusiveMinimum": true, "maximum": 2}}, "required": ["CFL"]})"));
    ASSERT_EQ(root.keys.size(), 1U);
    const reference::Key& key = root.keys.front();
    EXPECT_EQ(key.name, "CFL");
    EXPECT_EQ(key.path, "/CFL");
    EXPECT_EQ(key.presence, Presence::required);
    EXPECT_EQ(key.description, "<p>Factor.</p>");
    EXPECT_EQ(key.facts.type, "number");
    EXPECT_EQ(key.facts.units, "[-]");
    EXPECT_EQ(key.facts.defaultValue, Json(0.9));
    ASSERT_TRUE(key.facts.lower && key.facts.upper);
    EXPECT_EQ(key.facts.lower->value, 0);
    EXPECT_TRUE(key.facts.lower->isOpen);
    EXPECT_EQ(key.facts.upper->value, 2);
    EXPECT_FALSE(key.facts.upper->isOpen);
}

TEST(ManualModel, TakesTheFactsOfAnArrayFromItsElements) {
    const Block root = reference::readManual(object(R"({"properties": {"d": {"type": "array",
        "description": "Diameters.", "items": {"type": "number", "units": "[mm]", "minimum": 1}}},
        "optional": ["d"]})"));
    const reference::Key& key = root.keys.at(0);
    EXPECT_EQ(key.presence, Presence::optional);
    EXPECT_EQ(key.facts.arrayDepth, 1);
    EXPECT_EQ(key.facts.type, "number");
    EXPECT_EQ(key.facts.units, "[mm]");
    ASSERT_TRUE(key.facts.lower);
    EXPECT_EQ(key.facts.lower->value, 1);
}

TEST(ManualModel, MakesBlocksOfObjectsAndArraysOfObjectsAndKeepsTheirOrder) {
    const Block root = reference::readManual(object(R"({"properties": {
        "Z": {"type": "object", "autoexpand": true, "properties": {}},
        "A": {"type": "array", "description": "All.", "items": {"type": "object", "description": "One.",
              "properties": {"k": {"type": "string", "format": "uri"}}}}}})"));
    ASSERT_EQ(root.blocks.size(), 2U);
    EXPECT_EQ(root.blocks[0].name, "Z");
    EXPECT_TRUE(root.blocks[0].isOpenedByEditors);
    EXPECT_FALSE(root.blocks[0].isArray);
    EXPECT_EQ(root.blocks[1].name, "A");
    EXPECT_TRUE(root.blocks[1].isArray);
    EXPECT_FALSE(root.blocks[1].isOpenedByEditors);
    EXPECT_EQ(root.blocks[1].description, "All.");
    EXPECT_EQ(root.blocks[1].entryDescription, "One.");
    ASSERT_EQ(root.blocks[1].keys.size(), 1U);
    EXPECT_EQ(root.blocks[1].keys[0].path, "/A/k");
    EXPECT_TRUE(root.blocks[1].keys[0].facts.isFile);
}

const char* const structure = R"({
    "properties": {"type": {"type": "string", "enum": ["weir", "gate"]}, "level": {"type": "number"},
                   "level_file": {"type": "string"}, "my": {"type": "number"}, "q": {"type": "number"}},
    "required": ["type"], "optional": ["level", "level_file", "my", "q"],
    "oneOf": [
        {"description": "Over.", "properties": {"type": {"const": "weir"}}, "required": ["type"],
         "optional": ["my"], "oneOf": [{"required": ["level"]}, {"required": ["level_file"]}]},
        {"properties": {"type": {"const": "gate"}}, "required": ["type", "q"]}]})";

TEST(ManualModel, ReadsVariantsWithTheirPairs) {
    const Block root = reference::readManual(object(structure));
    ASSERT_EQ(root.groups.size(), 1U);
    ASSERT_EQ(root.groups[0].alternatives.size(), 2U);
    const reference::Alternative& weir = root.groups[0].alternatives[0];
    EXPECT_THAT(weir.selectors, ElementsAre(Selector("type", "weir")));
    EXPECT_EQ(weir.description, "Over.");
    EXPECT_THAT(weir.required, IsEmpty());
    EXPECT_THAT(weir.optional, ElementsAre("my"));
    ASSERT_EQ(weir.groups.size(), 1U);
    EXPECT_THAT(weir.groups[0].alternatives.at(1).selectors, IsEmpty());
    EXPECT_THAT(weir.groups[0].alternatives.at(1).required, ElementsAre("level_file"));
    EXPECT_THAT(root.groups[0].alternatives[1].required, ElementsAre("q"));
}

TEST(ManualModel, TellsOfEachKeyWhatTheVariantsSayOfIt) {
    const Block root = reference::readManual(object(structure));
    ASSERT_EQ(root.keys.size(), 5U);
    EXPECT_THAT(root.keys[0].conditions, IsEmpty());
    ASSERT_EQ(root.keys[1].conditions.size(), 1U);
    EXPECT_EQ(root.keys[1].conditions[0].need, Condition::Need::oneOfSeveral);
    EXPECT_THAT(root.keys[1].conditions[0].selectors, ElementsAre(Selector("type", "weir")));
    ASSERT_EQ(root.keys[3].conditions.size(), 1U);
    EXPECT_EQ(root.keys[3].conditions[0].need, Condition::Need::allowed);
    ASSERT_EQ(root.keys[4].conditions.size(), 1U);
    EXPECT_EQ(root.keys[4].conditions[0].need, Condition::Need::required);
    EXPECT_THAT(root.keys[4].conditions[0].selectors, ElementsAre(Selector("type", "gate")));
}

TEST(ManualModel, ReadsEveryGroupOfAConjunction) {
    const Block root = reference::readManual(object(R"({
        "properties": {"a": {"type": "number"}, "b": {"type": "number"}, "c": {"type": "number"}},
        "allOf": [{"oneOf": [{"required": ["a"]}, {"required": ["b"]}]}, {"oneOf": [{"required": ["c"]}]}]})"));
    ASSERT_EQ(root.groups.size(), 2U);
    EXPECT_EQ(root.groups[0].alternatives.size(), 2U);
    EXPECT_THAT(root.groups[1].alternatives.at(0).required, ElementsAre("c"));
}

TEST(ManualModel, FollowsReferencesInBothDirectionsWhateverTheIndices) {
    const Block root = reference::readManual(object(R"({"properties": {
        "D": {"type": "array", "items": {"type": "object", "properties": {
              "S": {"type": "array", "items": {"type": "object", "properties": {"name": {"type": "string"}}}}}}},
        "of": {"type": "string", "requiredIn": {"itemProperty": "name", "$array_ref": "/D/0/S"}}}})"));
    ASSERT_TRUE(root.keys.at(0).facts.reference);
    EXPECT_EQ(root.keys[0].facts.reference->member, "name");
    EXPECT_EQ(root.keys[0].facts.reference->block, "/D/S");
    EXPECT_THAT(root.blocks.at(0).blocks.at(0).referredFrom, ElementsAre("/of"));
    EXPECT_THAT(root.blocks[0].referredFrom, IsEmpty());
}

TEST(ManualModel, EscapesNamesAsInAPointer) {
    EXPECT_EQ(reference::memberPath("/A", "b/c~d"), "/A/b~1c~0d");
    EXPECT_EQ(reference::memberPath("", "show gridlines"), "/show gridlines");
}

TEST(ManualModel, NamesThePlaceOfWhatCannotBeShown) {
    const auto message = [](const Json& schema) {
        try {
            static_cast<void>(reference::readManual(schema));
        } catch (const std::runtime_error& fault) {
            return std::string(fault.what());
        }
        return std::string("no exception");
    };
    EXPECT_EQ(message(Json(true)), "/: this schema is no object.");
    EXPECT_EQ(message(object(R"({"properties": {"A": {"type": "object", "properties": {"k": false}}}})")),
              "/A/k: this schema is no object.");
}

} // namespace
