#include "jsv/validate.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace {

struct Outcome {
    int verdict;
    std::string report;
};

Outcome validate(const std::string& data, const std::string& schema) {
    std::istringstream dataStream(data);
    std::istringstream schemaStream(schema);
    std::ostringstream report;
    const int verdict = jsv::validate({&report}, dataStream, schemaStream);
    return {verdict, report.str()};
}

std::string failureOf(const std::string& data, const std::string& schema) {
    try {
        validate(data, schema);
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "no failure";
}

TEST(Validate, givesThreeVerdicts) {
    EXPECT_EQ(validate("{}", "{}").verdict, 0);
    EXPECT_EQ(validate(R"({"a":1})", "{}").verdict, 1);
    EXPECT_EQ(validate(R"({"a":1})", "false").verdict, 2);
}

TEST(Validate, reportIsFollowedByAnEmptyLine) {
    EXPECT_EQ(validate("{}", "{}").report, "");
    EXPECT_EQ(validate(R"({"a":1})", "{}").report,
              "/a: Warning: The value of this item will not be used.\n\n");
}

TEST(Validate, nothingIsWrittenWithoutAStream) {
    std::istringstream data(R"({"a":1})");
    std::istringstream schema("false");
    EXPECT_EQ(jsv::validate({}, data, schema), 2);
}

TEST(Validate, startsWhereTheStreamsStand) {
    std::istringstream data("skipped [1]");
    std::istringstream schema(R"({"type":"array"})");
    std::string word;
    data >> word;
    EXPECT_EQ(jsv::validate({}, data, schema), 0);
}

TEST(Validate, dataAreParsedFirst) {
    const std::string begin = "Parsing the JSON data file failed: [json.exception.parse_error.101]";
    EXPECT_EQ(failureOf("", "").substr(0, begin.size()), begin);
    const std::string schemaBegin = "Parsing the JSON schema file failed: [json.exception.parse_error.101]";
    EXPECT_EQ(failureOf("1", "").substr(0, schemaBegin.size()), schemaBegin);
}

TEST(Validate, numbersThatOverflowAreAParseFailure) {
    EXPECT_EQ(failureOf("1e999", "true"),
              "Parsing the JSON data file failed: [json.exception.out_of_range.406] number overflow parsing "
              "'1e999'");
}

TEST(Validate, nothingIsWrittenWhenTheSchemaIsAtFault) {
    std::istringstream data(R"({"a":1,"b":2})");
    std::istringstream schema(R"({"properties":{"a":false,"b":{"type":"bogus"}}})");
    std::ostringstream report;
    EXPECT_THROW(jsv::validate({&report}, data, schema), std::runtime_error);
    EXPECT_EQ(report.str(), "");
}

/// Fails on the first read, as a device does.
class Broken : public std::streambuf {
    int_type underflow() override { throw std::runtime_error("device error"); }
};

TEST(Validate, streamThatCannotBeReadIsAFailure) {
    Broken broken;
    std::istream data(&broken);
    std::istringstream schema("true");
    try {
        jsv::validate({}, data, schema);
        FAIL() << "accepted";
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(),
                     "Parsing the JSON data file failed: it cannot be read; check the file and its disk.");
    }
}

} // namespace
