#include "jsv/keyword_factory.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "jsv/exceptions.hpp"

namespace {

using namespace jsv;

const nlohmann::json::object_t::value_type& memberOf(const nlohmann::json& schema, const std::string& name) {
    return *schema.get_ref<const nlohmann::json::object_t&>().find(name);
}

SchemaKeyword keywordOf(const nlohmann::json& schema, const std::string& name) {
    static const nlohmann::json data;
    const Location start({"schema"});
    return makeKeyword({data, schema}, schema, Place(start), memberOf(schema, name));
}

std::string faultOf(const nlohmann::json& schema, const std::string& name) {
    try {
        static_cast<void>(keywordOf(schema, name));
    } catch (const InvalidSchemaException& fault) {
        return fault.what();
    }
    return "no fault";
}

struct Expected {
    std::string name;
    nlohmann::json schema;
    std::size_t index;
};

TEST(MakeKeyword, everyNameHasItsAlternative) {
    const std::vector<Expected> table = {
        {"const", {{"const", "x"}}, 1},
        {"enum", {{"enum", nlohmann::json::array()}}, 2},
        {"minimum", {{"minimum", 0}}, 3},
        {"minimum", {{"minimum", 0}, {"exclusiveMinimum", false}}, 3},
        {"maximum", {{"maximum", 0}}, 4},
        {"maximum", {{"maximum", 0}, {"exclusiveMaximum", false}}, 4},
        {"minimum", {{"minimum", 0}, {"exclusiveMinimum", true}}, 5},
        {"maximum", {{"maximum", 0}, {"exclusiveMaximum", true}}, 6},
        {"items", {{"items", true}}, 7},
        {"exclusiveMinimum", {{"exclusiveMinimum", true}}, 8},
        {"exclusiveMaximum", {{"exclusiveMaximum", true}}, 8},
        {"$schema", {{"$schema", 1}}, 8},
        {"oneOf", {{"oneOf", nlohmann::json::array()}}, 9},
        {"properties", {{"properties", nlohmann::json::object()}}, 10},
        {"requiredIn", {{"requiredIn", nlohmann::json::object()}}, 11},
        {"required", {{"required", nlohmann::json::array()}}, 12},
        {"type", {{"type", "string"}}, 13},
        {"optional", {{"optional", nlohmann::json::array()}}, 14},
        {"format", {{"format", "uri"}}, 15},
        {"description", {{"description", ""}}, 16},
        {"autoexpand", {{"autoexpand", true}}, 17},
        {"units", {{"units", "m"}}, 18},
        {"default", {{"default", 1}}, 19},
        {"allOf", {{"allOf", nlohmann::json::array()}}, 20},
    };
    for (const Expected& each : table) {
        EXPECT_EQ(keywordOf(each.schema, each.name).index(), each.index) << each.schema;
    }
}

TEST(MakeKeyword, holdsDataAndParameter) {
    const nlohmann::json data = 1;
    const nlohmann::json schema = {{"const", "x"}};
    const Location start;
    const auto keyword =
        std::get<ConstKeyword>(makeKeyword({data, schema}, schema, Place(start), memberOf(schema, "const")));
    EXPECT_EQ(keyword.data, &data);
    EXPECT_EQ(keyword.parameter, &schema["const"]);
}

TEST(MakeKeyword, otherNamesAreRefused) {
    for (const std::string name : {"Type", "anyOf", "not", "$ref", "", "pattern"}) {
        EXPECT_EQ(faultOf({{name, 1}}, name),
                  "/schema/" + name + ": The keyword '" + name + "' is not supported.");
    }
}

TEST(MakeKeyword, switchOfALimitMustBeABoolean) {
    EXPECT_EQ(faultOf({{"minimum", 0}, {"exclusiveMinimum", 1}}, "minimum"),
              "/schema/exclusiveMinimum: This keyword requires a boolean parameter.");
    EXPECT_EQ(faultOf({{"maximum", "x"}, {"exclusiveMaximum", nullptr}}, "maximum"),
              "/schema/exclusiveMaximum: This keyword requires a boolean parameter.");
}

TEST(MakeKeyword, parametersAreNotLookedAtYet) {
    EXPECT_EQ(faultOf({{"type", 5}}, "type"), "no fault");
}

TEST(Exceptions, areOneFamilyWithTheirTexts) {
    const Location at({"a"});
    EXPECT_STREQ(InvalidSchemaException(at, "m").what(), "/a: m");
    EXPECT_STREQ(InvalidSchemaException(Location(), "m").what(), "/: m");
    EXPECT_STREQ(InvalidTypeSchemaException(at, SchemaType::number).what(),
                 "/a: This keyword requires a number parameter.");
    EXPECT_STREQ(InvalidTypeSchemaException(at, SchemaType::string).what(),
                 "/a: This keyword requires a string parameter.");
    EXPECT_STREQ(InvalidTypeSchemaException(at, SchemaType::object).what(),
                 "/a: This keyword requires an object parameter.");
    EXPECT_STREQ(InvalidTypeSchemaException(at, SchemaType::array).what(),
                 "/a: This keyword requires an array parameter.");
    EXPECT_STREQ(InvalidTypeSchemaException(at, SchemaType::boolean).what(),
                 "/a: This keyword requires an boolean parameter.");
    EXPECT_STREQ(UnspecifiedSchemaException().what(), "The schema contains an unspecified error.");
    EXPECT_TRUE((std::is_base_of_v<InvalidSchemaException, InvalidTypeSchemaException>));
    EXPECT_TRUE((std::is_base_of_v<SchemaValidationException, InvalidSchemaException>));
    EXPECT_TRUE((std::is_base_of_v<SchemaValidationException, UnspecifiedSchemaException>));
    EXPECT_TRUE((std::is_base_of_v<std::runtime_error, SchemaValidationException>));
}

} // namespace
