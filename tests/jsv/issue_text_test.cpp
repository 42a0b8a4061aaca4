#include "jsv/issue_text.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace jsv;

struct Expected {
    Issue issue;
    std::string message;
};

const std::vector<Expected> reported = {
    {ConstMismatch{"uniform"}, "This value must be equal to 'uniform'."},
    {EnumMismatch{{"a", "b"}}, "This value must be equal to one of the following: 'a', 'b'."},
    {ExclusiveAlternatives{"x", "y"}, "Only one of the following two items is allowed: 'x', 'y'."},
    {BelowMinimum{0}, "This value must be greater than or equal to 0.000000."},
    {NotAboveExclusiveMinimum{0.5}, "This value must be greater than 0.500000."},
    {AboveMaximum{-2.25}, "This value must be less than or equal to -2.250000."},
    {NotBelowExclusiveMaximum{1e6}, "This value must be less than 1000000.000000."},
    {TypeMismatch{SchemaType::integer}, "This value must be an integer."},
    {MissingRequired{}, "This item is required but missing."},
    {MissingAlternative{{"x", "x_file"}}, "One of the following items must be provided: 'x', 'x_file'."},
    {RequiredInMismatch{"name", "/A/B"}, "This value must match a 'name' in '/A/B'."},
    {SuperfluousItem{}, "The value of this item will not be used."},
    {InvalidItem{}, "This item is invalid."},
};

const std::vector<Issue> traces = {SubschemaTrace{},         RequiredInTrace{"n", "/a"},
                                   DescriptionTrace{"d"},    FormatTrace{"uri"},
                                   UnitsTrace{"m"},          DefaultTrace{"1"},
                                   AccountedTrace{},         AutoexpandTrace{true},
                                   AlternativeTrace{"/", 0}, MinimumTrace{0},
                                   ExclusiveMinimumTrace{0}, MaximumTrace{0},
                                   ExclusiveMaximumTrace{0}};

TEST(MessageText, isThatOfEachKind) {
    for (std::size_t index = 0; index < reported.size(); ++index) {
        EXPECT_EQ(reported[index].issue.index(), index);
        EXPECT_EQ(messageText(reported[index].issue), reported[index].message);
    }
}

TEST(MessageText, typesHaveTheirPhrases) {
    EXPECT_EQ(messageText(TypeMismatch{SchemaType::number}), "This value must be a number.");
    EXPECT_EQ(messageText(TypeMismatch{SchemaType::string}), "This value must be a string.");
    EXPECT_EQ(messageText(TypeMismatch{SchemaType::object}), "This value must be an object.");
    EXPECT_EQ(messageText(TypeMismatch{SchemaType::array}), "This value must be an array.");
    EXPECT_EQ(messageText(TypeMismatch{SchemaType::boolean}), "This value must be of a different type.");
    EXPECT_EQ(messageText(TypeMismatch{SchemaType::unknown}), "This value must be of a different type.");
}

TEST(MessageText, emptyListsEndInAFullStop) {
    EXPECT_EQ(messageText(EnumMismatch{}), "This value must be equal to one of the following.");
    EXPECT_EQ(messageText(MissingAlternative{}), "One of the following items must be provided.");
}

TEST(MessageText, singleNamesAreNotFollowedByAComma) {
    EXPECT_EQ(messageText(EnumMismatch{{"yes"}}), "This value must be equal to one of the following: 'yes'.");
}

TEST(Traces, haveNoTextAndSeverityInfo) {
    for (std::size_t index = 0; index < traces.size(); ++index) {
        EXPECT_EQ(traces[index].index(), index + 13);
        EXPECT_EQ(messageText(traces[index]), "");
        EXPECT_EQ(fullMessage(traces[index]), "");
        EXPECT_EQ(severityOf(traces[index]), Severity::Info);
    }
}

TEST(Severity, isAFunctionOfTheKind) {
    for (const Expected& each : reported) {
        const bool warning = each.issue.index() == 11;
        EXPECT_EQ(severityOf(each.issue), warning ? Severity::Warning : Severity::Error);
        EXPECT_EQ(severityPrefix(each.issue), warning ? "Warning: " : "Error: ");
        EXPECT_EQ(fullMessage(each.issue), (warning ? "Warning: " : "Error: ") + each.message);
    }
    EXPECT_EQ(static_cast<int>(Severity::Error), 0);
    EXPECT_EQ(static_cast<int>(Severity::Warning), 1);
    EXPECT_EQ(static_cast<int>(Severity::Info), 2);
}

} // namespace
