#include "tools/assemble/output.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;
using namespace assembly;

TEST(PrintedText, hasTwoBlanksALevelAndWindowsLineEnds) {
    const Json value = Json::parse(R"({"b": {"c": ["x", 1.5]}, "a": {}, "d": []})");
    EXPECT_EQ(
        printedText(value),
        "{\r\n  \"b\": {\r\n    \"c\": [\r\n      \"x\",\r\n      1.5\r\n    ]\r\n  },\r\n  \"a\": {},\r\n"
        "  \"d\": []\r\n}");
}

TEST(PrintedText, escapesWhatIsNotAscii) {
    EXPECT_EQ(printedText(Json::parse(R"(["\u00fc\u0000\n"])")), "[\r\n  \"\\u00fc\\u0000\\n\"\r\n]");
}

TEST(CppSource, hasTheCodesOfTheCharactersAndAZero) {
    const std::string source = cppSource("{\r\n\"a\"}");
    EXPECT_THAT(source, testing::HasSubstr("#include \"schema/command_file_schema.hpp\"\n"));
    EXPECT_THAT(source, testing::HasSubstr("constexpr char text[] = {\n123,13,10,34,97,34,125,0};\n"));
    EXPECT_THAT(source, testing::HasSubstr("const char* commandFileSchema() {\n    return &text[0];\n}\n"));
}

TEST(CppSource, breaksItsLines) {
    std::size_t lineStart = 0;
    const std::string source = cppSource(std::string(1000, '~'));
    for (std::size_t end = source.find('\n'); end != std::string::npos; end = source.find('\n', lineStart)) {
        EXPECT_LE(end - lineStart, 110U);
        lineStart = end + 1;
    }
}

TEST(DependencyRule, listsTheFilesOfTheTarget) {
    EXPECT_EQ(dependencyRule("out.json", {"a/root.json", "a/x.json"}),
              "out.json: \\\n  a/root.json \\\n  a/x.json\n");
}

TEST(DependencyRule, escapesWhatMakeWouldRead) {
    EXPECT_EQ(dependencyRule("my out.json", {"a#b/$x.json"}), "my\\ out.json: \\\n  a\\#b/$$x.json\n");
}

TEST(WriteFile, writesTheBytesAsTheyAre) {
    const fs::path file = fs::path(testing::TempDir()) / "orvante_output_test.txt";
    writeFile(file, "a\r\nb\n");
    std::ifstream stream(file, std::ios::binary);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "a\r\nb\n");
    fs::remove(file);
}

TEST(WriteFile, saysWhereItCannot) {
    const fs::path file = fs::path(testing::TempDir()) / "orvante_no_such_folder" / "x";
    try {
        writeFile(file, "a");
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(error.what(), file.generic_string() + ": this file cannot be written");
    }
}

} // namespace
