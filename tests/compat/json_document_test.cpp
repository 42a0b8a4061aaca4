#include "compat/json_document.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using nlohmann::json;

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(Release, emptiesObjectsAndArrays) {
    for (const char* const text : {R"({"a": {"b": [1, "x", {"c": null}]}, "d": []})", R"([[1], {}, "x"])"}) {
        json document = json::parse(text);
        compat::release(document);
        EXPECT_TRUE(document.empty()) << text;
        EXPECT_EQ(document.type(), json::parse(text).type());
    }
}

TEST(Release, leavesPlainValues) {
    for (const char* const text : {"1", "\"x\"", "true", "null"}) {
        json document = json::parse(text);
        compat::release(document);
        EXPECT_EQ(document, json::parse(text));
    }
}

TEST(Release, survivesNestingOfAnyDepth) {
    json document = json::parse(nested(1'000'000));
    compat::release(document);
    EXPECT_TRUE(document.empty());
}

} // namespace
