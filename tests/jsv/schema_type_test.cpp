#include "jsv/schema_type.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {

using jsv::nameOf;
using jsv::satisfies;
using jsv::SchemaType;
using jsv::typeNamed;
using jsv::typeOf;

const std::vector<std::string> names = {"unknown", "integer", "number", "string",
                                        "object",  "array",   "boolean"};

TEST(SchemaType, codesHaveTheirNames) {
    for (std::size_t code = 0; code < names.size(); ++code) {
        EXPECT_EQ(nameOf(static_cast<SchemaType>(code)), names[code]);
        EXPECT_EQ(typeNamed(names[code]), static_cast<SchemaType>(code));
    }
}

TEST(SchemaType, otherNamesAreUnknown) {
    for (const std::string name : {"null", "Integer", "INTEGER", "int", "", " integer"}) {
        EXPECT_EQ(typeNamed(name), SchemaType::unknown) << name;
    }
}

TEST(SchemaType, valuesHaveTheirTypes) {
    EXPECT_EQ(typeOf(-1), SchemaType::integer);
    EXPECT_EQ(typeOf(18446744073709551615ULL), SchemaType::integer);
    EXPECT_EQ(typeOf(3.0), SchemaType::number);
    EXPECT_EQ(typeOf("x"), SchemaType::string);
    EXPECT_EQ(typeOf(nlohmann::json::object()), SchemaType::object);
    EXPECT_EQ(typeOf(nlohmann::json::array()), SchemaType::array);
    EXPECT_EQ(typeOf(true), SchemaType::boolean);
    EXPECT_EQ(typeOf(nullptr), SchemaType::unknown);
}

TEST(SchemaType, isSatisfiedByItselfAndNumberByIntegers) {
    for (int actual = 0; actual <= 6; ++actual) {
        for (int required = 0; required <= 6; ++required) {
            const bool expected = required != 0 && (actual == required || (required == 2 && actual == 1));
            EXPECT_EQ(satisfies(static_cast<SchemaType>(actual), static_cast<SchemaType>(required)), expected)
                << actual << " for " << required;
        }
    }
}

} // namespace
