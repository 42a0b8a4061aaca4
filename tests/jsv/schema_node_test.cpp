#include "jsv/schema_node.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "jsv/annotation_collection.hpp"
#include "jsv/exceptions.hpp"
#include "jsv/walk.hpp"

namespace {

using namespace jsv;
using nlohmann::json;

bool faultless(const json& schema) {
    static const json data;
    const Location start;
    SchemaNode node(schema, Place(start));
    const ValidationContext context{data, schema};
    return isFaultless(node, context);
}

TEST(IsFaultless, looksEverywhereBelow) {
    EXPECT_TRUE(faultless(true));
    EXPECT_TRUE(faultless(json::object()));
    EXPECT_TRUE(faultless({{"properties", {{"a", {{"items", {{"type", "string"}}}}}}}}));
    EXPECT_FALSE(faultless(1));
    EXPECT_FALSE(faultless({{"bogus", 1}}));
    EXPECT_FALSE(faultless({{"properties", {{"a", {{"items", {{"type", "bogus"}}}}}}}}));
    EXPECT_FALSE(faultless({{"oneOf", {{{"bogus", 1}}}}}));
    EXPECT_FALSE(faultless({{"allOf", {{{"oneOf", {{{"bogus", 1}}}}}}}}));
    EXPECT_FALSE(faultless({{"properties", {{"a", 1}}}}));
}

json nested(int levels) {
    json schema = true;
    for (int level = 0; level < levels; ++level) {
        schema = {{"items", schema}};
    }
    return schema;
}

json nestedArrays(int levels) {
    json data = 1;
    for (int level = 0; level < levels; ++level) {
        data = json::array({data});
    }
    return data;
}

TEST(Nesting, deeperSchemasThatTheDataDoNotReachDoNoHarm) {
    FilteredAnnotationCollection<IssueFilter> collection;
    const json schema = nested(502);
    const json data = nestedArrays(500);
    json shallow = data;
    json* innermost = &shallow;
    while (innermost->is_array()) {
        innermost = &innermost->front();
    }
    *innermost = json::array();
    EXPECT_NO_THROW(validateAt({shallow, schema}, Location(), Location(), collection));
}

TEST(Nesting, fiveHundredSchemasAreAccepted) {
    FilteredAnnotationCollection<IssueFilter> collection;
    const json schema = nested(501);
    const json data = nestedArrays(501);
    EXPECT_NO_THROW(validateAt({data, schema}, Location(), Location(), collection));
}

TEST(Nesting, oneMoreIsRefused) {
    FilteredAnnotationCollection<IssueFilter> collection;
    const json schema = nested(502);
    const json data = nestedArrays(501);
    try {
        validateAt({data, schema}, Location(), Location(), collection);
        FAIL() << "accepted";
    } catch (const InvalidSchemaException& fault) {
        EXPECT_NE(std::string(fault.what())
                      .find("/items: The schema is nested more than 500 schemas deep: flatten it."),
                  std::string::npos);
    }
}

TEST(Keywords, areKeptForTheNextTime) {
    const json data;
    const json schema = {
        {"minimum", 1}, {"units", "m"}, {"required", {"b", "a"}}, {"properties", {{"b", true}}}};
    const ValidationContext context{data, schema};
    const Location start;
    SchemaNode node(schema, Place(start));
    EXPECT_FALSE(node.isComplete());
    EXPECT_TRUE(isFaultless(node, context));
    EXPECT_TRUE(node.isComplete());
    EXPECT_EQ(node.keywords().size(), 4U);
    EXPECT_EQ(node.effectiveKeywords().size(), 3U) << "units tells nothing of a datum";
    const auto roleOf = [&](const std::string& name) { return node.ownNames().at(node.names().find(name)); };
    EXPECT_TRUE(roleOf("a").isAccounted);
    EXPECT_FALSE(roleOf("a").isDescribed);
    EXPECT_TRUE(roleOf("b").isAccounted);
    EXPECT_TRUE(roleOf("b").isDescribed);
    EXPECT_TRUE(node.describesMembers());
}

} // namespace
