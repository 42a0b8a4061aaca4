#include "tools/assemble/assembler.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "tools/assemble/place.hpp"

namespace {

namespace fs = std::filesystem;
using assembly::assemble;
using assembly::AssemblyError;
using assembly::Place;
using assembly::placeOf;

/// A folder of fragments of each test's own.
class Fragments : public testing::Test {
protected:
    Fragments() {
        const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
        folder = fs::path(testing::TempDir()) / (std::string("orvante_fragments_") + test.name());
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    void TearDown() override { fs::remove_all(folder); }

    void write(const std::string& path, const std::string& text) const {
        fs::create_directories((folder / path).parent_path());
        std::ofstream(folder / path, std::ios::binary) << text;
    }

    /// The assembled text in one line.
    [[nodiscard]] std::string text(const std::string& root = "root.json") const {
        return assemble(folder, root).value.dump();
    }

    /// What is said of a fault, without the folder.
    [[nodiscard]] std::string fault(const std::string& root = "root.json") const {
        try {
            return "no fault: " + text(root);
        } catch (const AssemblyError& error) {
            const std::string prefix = folder.generic_string() + "/";
            const std::string message = error.what();
            return message.rfind(prefix, 0) == 0 ? message.substr(prefix.size()) : "elsewhere: " + message;
        }
    }

    fs::path folder;
};

using Inclusion = Fragments;
using Faults = Fragments;

TEST_F(Inclusion, textWithoutFragmentsKeepsTheOrderOfItsMembers) {
    write("root.json", R"({"z": 1, "a": [true, null, -2, 1.5, "x"], "m": {"y": {}, "b": []}})");
    EXPECT_EQ(text(), R"({"z":1,"a":[true,null,-2,1.5,"x"],"m":{"y":{},"b":[]}})");
}

TEST_F(Inclusion, membersOfTheFragmentStandWhereItIsAskedFor) {
    write("root.json", R"({"first": 1, "$fragment": "block.json", "last": 2})");
    write("block.json", R"({"z": 3, "a": 4})");
    EXPECT_EQ(text(), R"({"first":1,"z":3,"a":4,"last":2})");
}

TEST_F(Inclusion, ownMembersWinAndKeepTheirPlace) {
    write("root.json", R"({"a": 1, "$fragment": "block.json", "c": 3})");
    write("block.json", R"({"c": 30, "b": 20, "a": 10})");
    EXPECT_EQ(text(), R"({"a":1,"b":20,"c":3})");
}

TEST_F(Inclusion, isNotDeep) {
    write("root.json", R"({"$fragment": "block.json", "a": {"y": 1}})");
    write("block.json", R"({"a": {"x": 0}, "b": 0})");
    EXPECT_EQ(text(), R"({"b":0,"a":{"y":1}})");
}

TEST_F(Inclusion, worksInObjectsAndArraysAtAnyDepth) {
    write("root.json", R"({"a": [{"$fragment": "block.json"}, [{"b": {"$fragment": "block.json"}}]]})");
    write("block.json", R"({"c": 1})");
    EXPECT_EQ(text(), R"({"a":[{"c":1},[{"b":{"c":1}}]]})");
}

TEST_F(Inclusion, goesThroughOtherFragments) {
    write("root.json", R"({"$fragment": "outer/block.json"})");
    write("outer/block.json", R"({"a": {"$fragment": "inner/block.json"}, "$fragment": "more.json"})");
    write("inner/block.json", R"({"b": 1})");
    write("more.json", R"({"c": 2})");
    EXPECT_EQ(text(), R"({"a":{"b":1},"c":2})");
}

TEST_F(Inclusion, sameFragmentManyTimesIsNoCircle) {
    write("root.json", R"({"a": {"$fragment": "x.json"}, "b": {"$fragment": "./y/../x.json"}})");
    write("x.json", R"({"c": {"$fragment": "z.json"}, "d": {"$fragment": "z.json"}})");
    write("z.json", R"({"e": 1})");
    EXPECT_EQ(text(), R"({"a":{"c":{"e":1},"d":{"e":1}},"b":{"c":{"e":1},"d":{"e":1}}})");
}

TEST_F(Inclusion, startsAnywhereInTheFolder) {
    write("deep/share.json", R"({"$fragment": "common/x.json"})");
    write("common/x.json", R"({"a": 1})");
    EXPECT_EQ(text("deep/share.json"), R"({"a":1})");
}

TEST_F(Inclusion, filesReadAreToldOnceEach) {
    write("root.json",
          R"({"a": {"$fragment": "x.json"}, "b": {"$fragment": "y.json"}, "c": {"$fragment": "./x.json"}})");
    write("x.json", R"({"$fragment": "z.json"})");
    write("y.json", "{}");
    write("z.json", "{}");
    const std::vector<fs::path> files = assemble(folder, "root.json").files;
    EXPECT_THAT(files, testing::ElementsAre(folder / "root.json", folder / "x.json", folder / "z.json",
                                            folder / "y.json"));
}

TEST_F(Faults, missingFragment) {
    write("root.json", "{\n  \"a\": 1,\n    \"$fragment\": \"x.json\"\n}");
    EXPECT_EQ(fault(), "root.json:3:5: the fragment 'x.json' cannot be read");
}

TEST_F(Faults, missingFragmentOfAFragment) {
    write("root.json", R"({"$fragment": "x.json"})");
    write("x.json", "{\n \"a\": {\"$fragment\": \"y.json\"}}");
    EXPECT_EQ(fault(), "x.json:2:8: the fragment 'y.json' cannot be read");
}

TEST_F(Faults, folderInsteadOfFragment) {
    write("root.json", R"({"$fragment": "x"})");
    write("x/y.json", "{}");
    EXPECT_EQ(fault(), "root.json:1:2: the fragment 'x' cannot be read");
}

TEST_F(Faults, missingFragmentToBeginWith) {
    EXPECT_EQ(fault("nothing.json"), "nothing.json:1:1: the fragment 'nothing.json' cannot be read");
}

TEST_F(Faults, circle) {
    write("root.json", R"({"a": {"$fragment": "x.json"}})");
    write("x.json", R"({"$fragment": "y.json"})");
    write("y.json", "{\"b\": 1,\n\"$fragment\": \"./x.json\"}");
    EXPECT_EQ(fault(), "y.json:2:1: the fragment includes itself: x.json -> y.json -> x.json");
}

TEST_F(Faults, circleOfOne) {
    write("root.json", R"({"a": [{"$fragment": "root.json"}]})");
    EXPECT_EQ(fault(), "root.json:1:9: the fragment includes itself: root.json -> root.json");
}

TEST_F(Faults, fragmentThatIsNoObject) {
    write("root.json", R"({"$fragment": "x.json"})");
    for (const char* const value : {"[]", "1", "\"text\"", "true", "null"}) {
        write("x.json", value);
        EXPECT_EQ(fault(), "root.json:1:2: the fragment 'x.json' is no object");
    }
}

TEST_F(Faults, fragmentToBeginWithThatIsNoObject) {
    write("root.json", "[{}]");
    EXPECT_EQ(fault(), "root.json:1:1: the fragment 'root.json' is no object");
}

TEST_F(Faults, pathThatIsNoString) {
    for (const char* const value : {"1", "null", R"(["x.json"])", "{}"}) {
        write("root.json", std::string("{\"a\": {\n  \"$fragment\": ") + value + "}}");
        EXPECT_EQ(fault(), "root.json:2:3: '$fragment' must be a string, the path of a fragment");
    }
}

TEST_F(Faults, pathThatLeavesTheFolder) {
    const std::string throughParent = "../" + folder.filename().generic_string() + "/x.json";
    const std::string absolute = folder.generic_string() + "/x.json";
    const std::string inner = "a/../../x.json";
    for (const std::string& path : {throughParent, absolute, inner, std::string()}) {
        write("root.json", R"({"$fragment": ")" + path + R"("})");
        write("x.json", "{}");
        EXPECT_EQ(fault(), "root.json:1:2: the path '" + path + "' leaves the folder of the fragments");
    }
}

TEST_F(Faults, memberTwice) {
    write("root.json", "{\"a\": {\"b\": 1,\n  \"c\": 2, \"b\": 3}}");
    EXPECT_EQ(fault(), "root.json:2:11: the member 'b' stands twice in one object");
}

TEST_F(Faults, fragmentTwiceInOneObject) {
    write("root.json", "{\"$fragment\": \"x.json\",\n\"$fragment\": \"x.json\"}");
    write("x.json", "{}");
    EXPECT_EQ(fault(), "root.json:2:1: the member '$fragment' stands twice in one object");
}

TEST_F(Faults, memberTwiceIsFoundBehindQuotesAndBackslashes) {
    write("root.json", R"({"\"a\\\"": {"\\": 1}, "\"a\\\"": 2})");
    EXPECT_EQ(fault(), R"(root.json:1:24: the member '"a\"' stands twice in one object)");
}

TEST_F(Faults, brokenText) {
    const std::map<std::string, std::string> faults{
        {"{\"a\": 1,\n \"b\": }",
         "2:7: syntax error while parsing value - unexpected '}'; expected '[', '{', or a literal"},
        {"{\"a\": 1", "1:8: syntax error while parsing object - unexpected end of input; expected '}'"},
        {"{\"a\":\n1e999}", "2:5: number overflow parsing '1e999'"},
        {"{}\n{}", "2:1: syntax error while parsing value - unexpected '{'; expected end of input"},
    };
    for (const auto& [broken, message] : faults) {
        write("root.json", broken);
        EXPECT_EQ(fault(), "root.json:" + message);
    }
}

TEST_F(Faults, brokenTextOfAFragment) {
    write("root.json", R"({"$fragment": "x.json"})");
    write("x.json", "\n\n}");
    EXPECT_THAT(fault(),
                testing::StartsWith("x.json:3:1: syntax error while parsing value - unexpected '}'"));
}

TEST_F(Faults, emptyText) {
    write("root.json", "");
    EXPECT_THAT(fault(), testing::StartsWith("root.json:1:1: "));
}

TEST_F(Faults, bytesThatAreNotAscii) {
    write("root.json", "{\n  \"a\": \"M\xC3\xBCller\"}");
    EXPECT_EQ(fault(), "root.json:2:10: this character is not ASCII: write its HTML entity");
    write("root.json", "\xEF\xBB\xBF{}");
    EXPECT_EQ(fault(), "root.json:1:1: this character is not ASCII: write its HTML entity");
}

TEST(PlaceOf, countsLinesAndColumnsFromOne) {
    const auto shown = [](std::size_t offset) {
        const Place place = placeOf("x", "ab\ncd\n\ne", offset);
        return std::to_string(place.line) + ":" + std::to_string(place.column);
    };
    EXPECT_EQ(shown(0), "1:1");
    EXPECT_EQ(shown(2), "1:3");
    EXPECT_EQ(shown(3), "2:1");
    EXPECT_EQ(shown(6), "3:1");
    EXPECT_EQ(shown(8), "4:2");
    EXPECT_EQ(shown(99), "4:2");
}

} // namespace
