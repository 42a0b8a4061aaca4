#include "jsv/location.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using jsv::Location;
using jsv::Place;

TEST(Location, rootIsEmptyTextAndShownAsSlash) {
    EXPECT_EQ(Location().text(), "");
    EXPECT_EQ(Location().shown(), "/");
    EXPECT_TRUE(Location().components().empty());
}

TEST(Location, namesAndIndicesBecomeAPointer) {
    Location location;
    location.append("SETUP");
    location.append(std::size_t{12});
    location.append("x");
    EXPECT_EQ(location.text(), "/SETUP/12/x");
    EXPECT_EQ(location.shown(), "/SETUP/12/x");
}

TEST(Location, tildeAndSlashAreEscaped) {
    EXPECT_EQ(Location({"a/b"}).text(), "/a~1b");
    EXPECT_EQ(Location({"x~y"}).text(), "/x~0y");
    EXPECT_EQ(Location({"~1"}).text(), "/~01");
}

TEST(Location, emptyNamesAreComponents) {
    EXPECT_EQ(Location({""}).text(), "/");
    EXPECT_EQ(Location({"", ""}).text(), "//");
}

TEST(Location, componentsComeBackUnescaped) {
    const std::vector<std::vector<std::string>> lists = {
        {"a/b", "x~y", "~1", "~0"}, {""}, {"", "a", ""}, {"10", "\xC3\xA4"}};
    for (const auto& components : lists) {
        EXPECT_EQ(Location(components).components(), components);
    }
}

TEST(Location, orderIsThatOfTheTexts) {
    EXPECT_LT(Location({"A", "10"}), Location({"A", "2"}));
    EXPECT_LT(Location({"A"}), Location({"A", "0"}));
    EXPECT_LT(Location(), Location({"A"}));
    EXPECT_FALSE(Location({"A"}) < Location({"A"}));
    EXPECT_LT(Location({"z"}), Location({"\xC3\xA4"})) << "bytes compare as unsigned";
}

TEST(Place, isPutTogetherFromTheStepsDown) {
    const Location start({"base"});
    const std::string name = "a/b";
    const Place root(start);
    const Place member(root, name);
    const Place element(member, std::size_t{3});
    EXPECT_EQ(root.location().text(), "/base");
    EXPECT_EQ(element.location().text(), "/base/a~1b/3");
}

} // namespace
