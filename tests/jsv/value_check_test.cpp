#include "jsv/keywords/value_check.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <vector>

#include "jsv/annotation_collection.hpp"
#include "jsv/schema_node.hpp"
#include "jsv/walk.hpp"

namespace {

using namespace jsv;
using nlohmann::json;

const json names = {{{"name", "left"}}, {{"name", "a long name that is not kept in the table itself"}}};

/// The check of a schema that a walk has completed.
struct Completed {
    explicit Completed(const json& schema)
        : data{{"names", names}}, context{data, schema}, node(schema, Place(start)) {
        AnnotationCollection unheard(false);
        Walk(context, unheard).visit(node, data, Place(start));
    }

    [[nodiscard]] bool passes(const json& datum) const { return node.valueCheck().passes(datum); }
    /// As the keywords tell it: where traces are kept, none is passed over.
    bool hasFinding(const json& datum) {
        AnnotationCollection findings(true);
        Walk(context, findings).visit(node, datum, Place(start));
        return findings.count(Severity::Error) + findings.count(Severity::Warning) > 0;
    }

    Location start;
    json data;
    ValidationContext context;
    SchemaNode node;
};

const std::vector<json> data = {nullptr,
                                true,
                                0,
                                1,
                                -1,
                                0.0,
                                0.5,
                                1.0,
                                1e300,
                                -1e300,
                                18446744073709551615U,
                                "",
                                "left",
                                "right",
                                "a long name that is not kept in the table itself",
                                "a long name that is mot kept in the table itself",
                                json::array(),
                                {1, 2},
                                {"left"}};

const std::vector<json> sets = {
    {{"type", "number"}},
    {{"type", "integer"}},
    {{"type", "string"}},
    {{"type", "boolean"}},
    {{"type", "array"}},
    {{"type", "object"}},
    {{"type", "number"}, {"minimum", 0}},
    {{"type", "number"}, {"minimum", 0}, {"exclusiveMinimum", true}},
    {{"type", "number"}, {"maximum", 1}},
    {{"type", "number"}, {"maximum", 1}, {"exclusiveMaximum", true}},
    {{"type", "integer"}, {"minimum", 0}, {"maximum", 0.5}, {"units", "[m]"}, {"default", 0}},
    {{"type", "string"}, {"minimum", 0}},
    {{"type", "string"}, {"enum", {"left", "right"}}, {"description", "side"}},
    {{"type", "number"}, {"enum", {"left", "right"}}},
    {{"type", "string"}, {"const", "left"}},
    {{"type", "string"}, {"format", "uri"}},
    {{"type", "string"}, {"requiredIn", {{"itemProperty", "name"}, {"$array_ref", "/names"}}}},
    {{"type", "string"}, {"requiredIn", {{"itemProperty", "name"}, {"$array_ref", "/nowhere"}}}},
};

TEST(ValueCheck, passesWhatHasNoFindingAndNothingElse) {
    for (const json& schema : sets) {
        Completed completed(schema);
        for (const json& datum : data) {
            EXPECT_EQ(completed.passes(datum), !completed.hasFinding(datum)) << schema << " over " << datum;
        }
    }
}

TEST(ValueCheck, leavesToTheKeywordsWhatGoesBeyondTheValue) {
    for (const json& schema : {json{{"minimum", 0}}, json{{"type", "array"}, {"items", {{"type", "string"}}}},
                               json{{"type", "number"}, {"oneOf", {{{"minimum", 0}}}}},
                               json{{"type", "number"}, {"required", {"a"}}}}) {
        Completed completed(schema);
        for (const json& datum : data) {
            EXPECT_FALSE(completed.passes(datum)) << schema << " over " << datum;
        }
    }
}

} // namespace
