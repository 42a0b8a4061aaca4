#include "jsv/walk.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

#include "jsv/annotation_collection.hpp"
#include "jsv/exceptions.hpp"

namespace {

using namespace jsv;
using nlohmann::json;

/// Texts of the findings of one kind: "LOCATION" of each, with the traces kept.
template <typename Kind>
std::vector<std::string> placesOf(const AnnotationCollection& collection) {
    std::vector<std::string> places;
    for (const Annotation& each : collection) {
        if (std::holds_alternative<Kind>(each.issue)) {
            places.push_back(each.location.text());
        }
    }
    return places;
}

template <typename Kind>
Kind only(const AnnotationCollection& collection) {
    std::vector<Kind> found;
    for (const Annotation& each : collection) {
        if (const auto* kind = std::get_if<Kind>(&each.issue)) {
            found.push_back(*kind);
        }
    }
    EXPECT_EQ(found.size(), 1U);
    return found.empty() ? Kind() : found.front();
}

class TracedWalk : public testing::Test {
protected:
    const AnnotationCollection& walk(const json& schema, const json& data) {
        validateAt({data, schema}, Location(), Location(), collection);
        return collection;
    }

    using Places = std::vector<std::string>;
    AnnotationCollection collection;
};

TEST_F(TracedWalk, subschemasAreTraced) {
    walk({{"properties", {{"a", {{"items", true}}}}}}, {{"a", {1, 2}}});
    EXPECT_EQ(placesOf<SubschemaTrace>(collection), (Places{"", "/a", "/a/0", "/a/1"}));
}

TEST_F(TracedWalk, referencesAreTracedInAnyCase) {
    walk({{"properties",
           {{"a", {{"requiredIn", {{"itemProperty", "n"}, {"$array_ref", "/l"}}}}}, {"l", true}}}},
         {{"a", "x"}, {"l", {{{"n", "x"}}}}});
    EXPECT_EQ(only<RequiredInTrace>(collection).payload(), std::make_tuple("n", "/l"));
    EXPECT_EQ(collection.count(Severity::Error), 0U);
}

TEST_F(TracedWalk, documentingKeywordsAreTraced) {
    walk({{"description", "d"}, {"format", "uri"}, {"units", "m"}, {"default", "x"}, {"autoexpand", true}},
         "y");
    EXPECT_EQ(only<DescriptionTrace>(collection).text, "d");
    EXPECT_EQ(only<FormatTrace>(collection).format, "uri");
    EXPECT_EQ(only<UnitsTrace>(collection).units, "m");
    EXPECT_EQ(only<DefaultTrace>(collection).value, "\"x\"");
    EXPECT_EQ(only<AutoexpandTrace>(collection).expand, true);
}

TEST_F(TracedWalk, accountedNamesAreTraced) {
    walk({{"required", {"r"}}, {"optional", {"o"}}, {"properties", {{"p", true}}}}, {{"r", 1}});
    EXPECT_EQ(placesOf<AccountedTrace>(collection), (Places{"/o", "/p", "/r"}));
}

TEST_F(TracedWalk, limitsAreTracedWithTheirValueForEveryDatum) {
    for (const json& datum : {json(5), json(-5), json("text")}) {
        AnnotationCollection own;
        const json exclusive = {
            {"minimum", 1}, {"exclusiveMinimum", true}, {"maximum", 2.5}, {"exclusiveMaximum", true}};
        const json inclusive = {{"minimum", 3}, {"maximum", 4}};
        validateAt({datum, exclusive}, Location(), Location(), own);
        validateAt({datum, inclusive}, Location(), Location(), own);
        EXPECT_EQ(only<ExclusiveMinimumTrace>(own).limit, 1.0);
        EXPECT_EQ(only<ExclusiveMaximumTrace>(own).limit, 2.5);
        EXPECT_EQ(only<MinimumTrace>(own).limit, 3.0);
        EXPECT_EQ(only<MaximumTrace>(own).limit, 4.0);
    }
}

TEST_F(TracedWalk, choiceOfAnAlternativeIsTraced) {
    walk({{"oneOf", {{{"required", {"a"}}}, {{"required", {"b"}}}}}}, {{"b", 1}});
    EXPECT_EQ(only<AlternativeTrace>(collection).payload(), std::make_tuple("/oneOf", 1U));
    EXPECT_EQ(placesOf<AccountedTrace>(collection), Places{"/b"}) << "of the chosen alternative alone";
}

TEST_F(TracedWalk, choiceInAConjunctionNamesItsGroup) {
    const char* const schema = R"({"allOf": [{"oneOf": [{"required": ["a"]}]},
                                             {"oneOf": [{"required": ["b"]}, {"required": ["a"]}]}]})";
    walk(json::parse(schema), {{"a", 1}});
    std::vector<std::string> groups;
    for (const auto& annotation : collection) {
        if (const auto* choice = std::get_if<AlternativeTrace>(&annotation.issue)) {
            groups.push_back(choice->group);
        }
    }
    EXPECT_EQ(groups, (std::vector<std::string>{"/allOf/0/oneOf", "/allOf/1/oneOf"}));
}

TEST_F(TracedWalk, tracesDoNotChangeTheReport) {
    const json schema = {{"type", "object"},
                         {"oneOf", {{{"required", {"a"}}}, {{"required", {"b"}}}}},
                         {"properties", {{"n", {{"minimum", 1}, {"units", "m"}}}}}};
    const json data = {{"n", 0}, {"z", {{"y", 1}}}};
    FilteredAnnotationCollection<IssueFilter> filtered;
    validateAt({data, schema}, Location(), Location(), filtered);
    EXPECT_EQ(walk(schema, data).report(), filtered.report());
    EXPECT_NE(filtered.report(), "");
}

TEST(Walk, goesFromAnyTwoLocations) {
    const json schema = {{"properties", {{"a", {{"items", {{"minimum", 2}}}}}}}};
    const json data = {{"x", {1, 2}}};
    FilteredAnnotationCollection<IssueFilter> collection;
    validateAt({data, schema}, Location({"x", "0"}), Location({"properties", "a", "items"}), collection);
    EXPECT_EQ(collection.report(), "/x/0: Error: This value must be greater than or equal to 2.000000.\n");
    const json faulty = {{"p", {{"type", "none"}}}};
    try {
        validateAt({data, faulty}, Location(), Location({"p"}), collection);
        FAIL() << "no fault";
    } catch (const InvalidSchemaException& fault) {
        EXPECT_STREQ(fault.what(), "/p/type: The provided type is invalid.");
    }
}

/// Every kind of finding by some schema and data: none of the variant's alternatives is out of reach.
TEST(Walk, everyKindOfFindingIsReachable) {
    const std::vector<std::pair<json, json>> pairs = {
        {{{"const", "x"}}, 1},
        {{{"enum", {"x"}}}, 1},
        {{{"oneOf", {{{"required", {"a"}}}, {{"required", {"b"}}}}}}, {{"a", 1}, {"b", 1}}},
        {{{"oneOf", {{{"required", {"a"}}}, {{"required", {"b"}}}}}}, json::object()},
        {{{"minimum", 1}, {"maximum", -1}}, 0},
        {{{"minimum", 0}, {"exclusiveMinimum", true}, {"maximum", 0}, {"exclusiveMaximum", true}}, 0},
        {{{"type", "string"}}, 1},
        {{{"required", {"a"}}}, {{"z", 1}}},
        {{{"requiredIn", {{"itemProperty", "n"}, {"$array_ref", "/l"}}}}, "x"},
        {false, 1},
        {{{"properties", {{"a", {{"description", "d"}, {"format", "uri"}, {"units", "m"}}}}}}, {{"a", "x"}}},
        {{{"default", 1}, {"autoexpand", true}}, 1},
        {{{"oneOf", {{{"required", {"a"}}}, {{"required", {"b"}}}}}}, {{"a", 1}}},
    };
    std::set<std::size_t> kinds;
    for (const auto& [schema, data] : pairs) {
        AnnotationCollection collection;
        validateAt({data, schema}, Location(), Location(), collection);
        for (const Annotation& each : collection) {
            kinds.insert(each.issue.index());
        }
    }
    std::set<std::size_t> all;
    for (std::size_t kind = 0; kind < std::variant_size_v<Issue>; ++kind) {
        all.insert(kind);
    }
    EXPECT_EQ(kinds, all);
}

/// A group nested in itself again and again costs time in proportion, not two to its power.
TEST(Walk, nestedGroupsThatFailCostNoPowerOfTheirDepth) {
    json schema = {{"required", {"never"}}};
    for (int level = 0; level < 100; ++level) {
        schema = {{"oneOf", {schema, {{"required", {"other"}}, {"properties", {{"other", false}}}}}}};
    }
    const json data = {{"other", 1}};
    FilteredAnnotationCollection<IssueFilter> collection;
    validateAt({data, schema}, Location(), Location(), collection);
    EXPECT_EQ(collection.count(Severity::Error), 1U) << collection.report();
}

} // namespace
