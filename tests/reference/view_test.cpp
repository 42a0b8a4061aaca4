#include "tools/reference/view.hpp"

#include <gmock/gmock.h>

namespace {

using reference::Condition;
using reference::Facts;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(View, ShowsOpenAndClosedEnds) {
    Facts facts;
    EXPECT_EQ(reference::rangeText(facts), "");
    facts.lower = {0, true};
    EXPECT_EQ(reference::rangeText(facts), "> 0");
    facts.upper = {2.5, false};
    EXPECT_EQ(reference::rangeText(facts), "> 0 and \u2264 2.5");
    facts.lower = {1, false};
    facts.upper = {2, true};
    EXPECT_EQ(reference::rangeText(facts), "\u2265 1 and < 2");
}

TEST(View, NamesTypes) {
    Facts facts;
    EXPECT_EQ(reference::typeText(facts), "any value");
    facts.type = "number";
    EXPECT_EQ(reference::typeText(facts), "number");
    facts.arrayDepth = 2;
    EXPECT_EQ(reference::typeText(facts), "array of arrays of numbers");
    facts = {};
    facts.type = "string";
    facts.isFile = true;
    EXPECT_EQ(reference::typeText(facts), "file name");
    facts.isFile = false;
    facts.allowed = {"on", "off"};
    EXPECT_EQ(reference::typeText(facts), "choice");
}

TEST(View, PutsConditionsOfAKindTogether) {
    EXPECT_THAT(reference::conditionTexts({}), IsEmpty());
    EXPECT_THAT(reference::conditionTexts({{Condition::Need::required, {{"type", "weir"}}},
                                           {Condition::Need::allowed, {{"type", "dyke"}}},
                                           {Condition::Need::required, {{"type", "gate"}}},
                                           {Condition::Need::required, {{"type", "gate"}, {"mode", "x"}}}}),
                ElementsAre("required with type weir, gate", "of use with type dyke",
                            "required with type gate, mode x"));
    EXPECT_THAT(reference::conditionTexts({{Condition::Need::oneOfSeveral, {}}}),
                ElementsAre("one of several, of which exactly one is given"));
}

} // namespace
