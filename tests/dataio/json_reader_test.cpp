#include "dataio/json_reader.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "api/base_exception.hpp"

namespace {

using dataio::JSONReader;
using Ints = std::vector<int>;
using Doubles = std::vector<double>;
using Strings = std::vector<std::string>;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

constexpr int absentInt = std::numeric_limits<int>::min();

/// What a query with `found` gives: its value, `found`, and what it wrote to standard error.
template <typename Value>
struct Answer {
    Value value;
    bool found;
    std::string written;
};

template <typename Query>
auto ask(Query query) {
    bool found = false;
    CaptureStderr();
    auto value = query(found);
    return Answer<decltype(value)>{value, found, GetCapturedStderr()};
}

std::string notFound(const std::string& path) {
    return " -> path <" + path + "> not found.\n";
}

template <typename Query>
std::string errorOf(Query query) {
    try {
        static_cast<void>(query());
    } catch (const std::exception& error) {
        return error.what();
    }
    return "nothing thrown";
}

const std::string throughString =
    "[json.exception.type_error.305] cannot use operator[] with a string argument with string";
const std::string throughNumber =
    "[json.exception.type_error.305] cannot use operator[] with a string argument with number";
const std::string throughArray =
    "[json.exception.type_error.305] cannot use operator[] with a string argument with array";
const std::string negativeIndex =
    "[json.exception.out_of_range.401] array index 18446744073709551615 is out of range";

/// A file that lives as long as the object.
class TemporaryFile {
public:
    TemporaryFile(const std::string& name, const std::string& content)
        : folder(std::filesystem::path(testing::TempDir()) / ("reader_" + name)), path(folder / name) {
        std::filesystem::create_directories(folder);
        std::ofstream(path, std::ios::binary) << content;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile(TemporaryFile&&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile() { std::filesystem::remove_all(folder); }

    [[nodiscard]] std::string name() const { return path.string(); }

private:
    std::filesystem::path folder;
    std::filesystem::path path;
};

// ---- Sources
// -------------------------------------------------------------------------------------------------------

TEST(Source, isTakenAsJsonTextFirst) {
    const JSONReader reader(R"({"A":1})");
    EXPECT_EQ(reader.getFileName(), "");
    EXPECT_EQ(reader.dump(), R"({"A":1})");
}

TEST(Source, numberThreeIsTheDocumentAndNoFileName) {
    const JSONReader reader("3");
    EXPECT_EQ(reader.dump(), "3");
    EXPECT_EQ(reader.getFileName(), "");
}

TEST(Source, fileIsReadWhenTheSourceIsNoJsonText) {
    const TemporaryFile file("model.json", "{\"A\": {\"B\": [1, 2]}}\n");
    const JSONReader reader(file.name());
    EXPECT_EQ(reader.getFileName(), file.name());
    EXPECT_EQ(reader.dump(), R"({"A":{"B":[1,2]}})");
}

TEST(Source, missingFileIsToldAndKills) {
    CaptureStderr();
    EXPECT_THROW(JSONReader("no such file.json"), BaseException);
    EXPECT_EQ(GetCapturedStderr(), " -> input file <no such file.json> not found.\n");
}

TEST(Source, directoryIsNotFoundEither) {
    CaptureStderr();
    EXPECT_THROW(JSONReader("."), BaseException);
    EXPECT_EQ(GetCapturedStderr(), " -> input file <.> not found.\n");
}

TEST(Source, emptyTextIsTakenAsAFileName) {
    CaptureStderr();
    EXPECT_THROW(JSONReader(""), BaseException);
    EXPECT_EQ(GetCapturedStderr(), " -> input file <> not found.\n");
}

TEST(Source, syntaxErrorOfTheFilePropagates) {
    const TemporaryFile file("cut.json", "{\"A\": ");
    EXPECT_THROW(JSONReader{file.name()}, nlohmann::json::parse_error);
}

TEST(Source, commentsAreNotAllowed) {
    const TemporaryFile file("comment.json", "// no\n{}");
    EXPECT_THROW(JSONReader{file.name()}, nlohmann::json::parse_error);
}

TEST(Source, byteOrderMarkIsSkipped) {
    const TemporaryFile file("mark.json", "\xEF\xBB\xBF{}");
    EXPECT_EQ(JSONReader(file.name()).dump(), "{}");
}

TEST(Source, deepNestingIsRefusedInTextAndFile) {
    const std::string deep = std::string(300'000, '[') + std::string(300'000, ']');
    const std::string refusal =
        "The command file is nested more than 1000 levels deep: flatten its arrays and objects.";
    EXPECT_EQ(errorOf([&] { return JSONReader(deep).dump(); }), refusal);
    const TemporaryFile file("deep.json", deep);
    EXPECT_EQ(errorOf([&] { return JSONReader(file.name()).dump(); }), refusal);
}

TEST(Source, factoryGivesAReaderOverIt) {
    const auto reader = dataio::createCommandFileReader(R"({"A":{"B":true}})");
    EXPECT_TRUE(reader->getBool("A/B", false));
    EXPECT_TRUE((std::is_same_v<decltype(reader), const std::unique_ptr<api::ICommandFileReader>>));
}

// ---- Whole document
// ------------------------------------------------------------------------------------------------

TEST(Dump, sortsMembersAndIsCompact) {
    EXPECT_EQ(JSONReader(R"({"b":1, "a":[true]})").dump(), R"({"a":[true],"b":1})");
}

TEST(Dump, keepsUtf8AndEscapesControlCharacters) {
    EXPECT_EQ(JSONReader("[\"\xC3\xA4\\u00e4\\u0000\"]").dump(), "[\"\xC3\xA4\xC3\xA4\\u0000\"]");
}

TEST(ComposePath, showsIndices) {
    const JSONReader reader("{}");
    EXPECT_EQ(reader.composePath("A/B", 1, "C"), "A/B[1]/C");
    EXPECT_EQ(reader.composePath("A", -1, "M", 7, "C"), "A[-1]/M[7]/C");
}

// ---- Silent lookups
// ------------------------------------------------------------------------------------------------

TEST(HasPaths, emptyListGivesFalse) {
    EXPECT_FALSE(JSONReader("{}").hasPaths({}));
}

TEST(HasPaths, emptyOrvamdBlockCountsAsNotFound) {
    EXPECT_FALSE(JSONReader(R"({"SETUP":{"ORVAMD":{}}})").hasPaths({"SETUP/ORVAMD"}));
}

TEST(HasPaths, needsEveryPath) {
    const JSONReader reader(R"({"A":{"B":1},"C":0})");
    EXPECT_TRUE(reader.hasPaths({"A/B", "C"}));
    EXPECT_FALSE(reader.hasPaths({"A/B", "D"}));
}

TEST(HasPaths, stopsAtTheFirstMissingPath) {
    const JSONReader reader(R"({"A":1})");
    EXPECT_FALSE(reader.hasPaths({"missing", "A/through"}));
    EXPECT_THROW(static_cast<void>(reader.hasPaths({"A/through", "missing"})), nlohmann::json::type_error);
}

TEST(HasPaths, printsNothing) {
    CaptureStderr();
    EXPECT_FALSE(JSONReader("{}").hasPaths({"A"}));
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(Path, emptyValuesCountAsNotFound) {
    const JSONReader reader(R"({"object":{},"array":[],"null":null,"zero":0,"false":false,"text":""})");
    EXPECT_FALSE(reader.hasPaths({"object"}));
    EXPECT_FALSE(reader.hasPaths({"array"}));
    EXPECT_FALSE(reader.hasPaths({"null"}));
    EXPECT_TRUE(reader.hasPaths({"zero", "false", "text"}));
}

TEST(Path, goingOnThroughAnEmptyValueIsNotFound) {
    const JSONReader reader(R"({"object":{},"array":[],"null":null})");
    EXPECT_FALSE(reader.hasPaths({"object/x"}));
    EXPECT_FALSE(reader.hasPaths({"array/x"}));
    EXPECT_FALSE(reader.hasPaths({"null/x"}));
}

TEST(Path, emptyKeysAreKeys) {
    const JSONReader reader(R"({"":{"A":{"":{"B":5}}},"A":{"B":6}})");
    EXPECT_EQ(reader.getInt("/A//B", 0), 5);
    EXPECT_EQ(reader.getInt("A/B/", 0), 6) << "one trailing separator adds nothing";
    EXPECT_EQ(errorOf([&] { return reader.getInt("A/B//", 0); }), throughNumber)
        << "a second one adds an empty key";
}

TEST(Path, emptyPathIsTheWholeDocument) {
    EXPECT_EQ(JSONReader("[1,2]").getIntVector("", Ints{}), (Ints{1, 2}));
    EXPECT_TRUE(JSONReader("{}").hasPaths({""})) << "no key, no step that could find it empty";
}

TEST(Path, nullDocumentHasNoMembers) {
    EXPECT_FALSE(JSONReader("null").hasPaths({"A"}));
}

TEST(Path, throughAScalarThrowsWithTheTypeName) {
    const JSONReader reader(R"({"s":"x","n":1,"u":18446744073709551615,"f":1.5,"b":true})");
    EXPECT_EQ(errorOf([&] { return reader.getInt("s/x", 0); }), throughString);
    EXPECT_EQ(errorOf([&] { return reader.getInt("n/x", 0); }), throughNumber);
    EXPECT_EQ(errorOf([&] { return reader.getInt("u/x", 0); }), throughNumber);
    EXPECT_EQ(errorOf([&] { return reader.getInt("f/x", 0); }), throughNumber);
    EXPECT_THROW(static_cast<void>(reader.getInt("b/x", 0)), nlohmann::json::type_error);
}

TEST(Path, elementOfAnArrayIsNeverAddressedInsideIt) {
    bool found = false;
    const JSONReader reader(R"({"A":["x"]})");
    EXPECT_EQ(errorOf([&] { return reader.getString("A/0", found); }), throughArray);
}

// ---- Typed queries by path
// -----------------------------------------------------------------------------------------

TEST(GetInt, truncatesAFloatTowardZero) {
    const auto answer =
        ask([](bool& found) { return JSONReader(R"({"A":{"B":2.9}})").getInt("A/B", found); });
    EXPECT_EQ(answer.value, 2);
    EXPECT_TRUE(answer.found);
    EXPECT_EQ(JSONReader(R"({"A":-2.9})").getInt("A", 0), -2);
}

TEST(GetInt, fractionBeyondTheRangeCountsAsWrongKind) {
    const JSONReader reader(R"({"big":1e300,"last":2147483647.9,"first":-2147483648.5,"list":[1,1e300]})");
    const auto answer = ask([&](bool& found) { return reader.getInt("big", found); });
    EXPECT_EQ(answer.value, absentInt);
    EXPECT_TRUE(answer.found);
    EXPECT_EQ(reader.getInt("big", 5), 5);
    EXPECT_EQ(reader.getInt("last", 5), 2147483647);
    EXPECT_EQ(reader.getInt("first", 5), absentInt);
    EXPECT_EQ(reader.getIntVector("list", Ints{7}), Ints{7});
}

TEST(GetInt, wrongKindGivesTheAbsentValueSilently) {
    const auto answer =
        ask([](bool& found) { return JSONReader(R"({"A":{"B":"x"}})").getInt("A/B", found); });
    EXPECT_EQ(answer.value, absentInt);
    EXPECT_TRUE(answer.found);
    EXPECT_EQ(answer.written, "");
}

TEST(GetDouble, missingPathIsToldAndGivesNaN) {
    const auto answer =
        ask([](bool& found) { return JSONReader(R"({"A":{"B":2.9}})").getDouble("A/C", found); });
    EXPECT_TRUE(std::isnan(answer.value));
    EXPECT_FALSE(answer.found);
    EXPECT_EQ(answer.written, notFound("A/C"));
}

TEST(GetDouble, widensAnInteger) {
    EXPECT_EQ(JSONReader(R"({"A":3})").getDouble("A", 0.5), 3.0);
}

const char* const kinds = R"({
    "bool": true, "int": -7, "unsigned": 7, "float": 1.5, "text": "t",
    "ints": [1, 2], "doubles": [0.5, 2], "texts": ["a", "b"]
})";

TEST(Found, everyKindGivesItsValue) {
    const JSONReader reader(kinds);
    bool found = false;
    EXPECT_EQ(reader.getBool("bool", found), true);
    EXPECT_EQ(reader.getInt("int", found), -7);
    EXPECT_EQ(reader.getInt("unsigned", found), 7);
    EXPECT_EQ(reader.getIntVector("ints", found), (Ints{1, 2}));
    EXPECT_EQ(reader.getDouble("float", found), 1.5);
    EXPECT_EQ(reader.getDoubleVector("doubles", found), (Doubles{0.5, 2.0}));
    EXPECT_EQ(reader.getString("text", found), "t");
    EXPECT_EQ(reader.getStringVector("texts", found), (Strings{"a", "b"}));
    EXPECT_EQ(reader.getArraySize("texts", found), 2U);
    EXPECT_TRUE(found);
}

TEST(Found, missingGivesTheAbsentValueAndTheLine) {
    const JSONReader reader(kinds);
    const auto expect = [](const auto& answer, const auto& absent) {
        EXPECT_EQ(answer.value, absent);
        EXPECT_FALSE(answer.found);
        EXPECT_EQ(answer.written, notFound("X/y"));
    };
    expect(ask([&](bool& found) { return reader.getBool("X/y", found); }), false);
    expect(ask([&](bool& found) { return reader.getInt("X/y", found); }), absentInt);
    expect(ask([&](bool& found) { return reader.getIntVector("X/y", found); }), Ints{});
    expect(ask([&](bool& found) { return reader.getDoubleVector("X/y", found); }), Doubles{});
    expect(ask([&](bool& found) { return reader.getString("X/y", found); }), std::string());
    expect(ask([&](bool& found) { return reader.getStringVector("X/y", found); }), Strings{});
    expect(ask([&](bool& found) { return reader.getArraySize("X/y", found); }), 0U);
}

TEST(Found, wrongKindGivesTheAbsentValueAndStaysFound) {
    const JSONReader reader(kinds);
    const auto expect = [](const auto& answer, const auto& absent) {
        EXPECT_EQ(answer.value, absent);
        EXPECT_TRUE(answer.found);
        EXPECT_EQ(answer.written, "");
    };
    expect(ask([&](bool& found) { return reader.getBool("int", found); }), false);
    expect(ask([&](bool& found) { return reader.getInt("bool", found); }), absentInt);
    expect(ask([&](bool& found) { return reader.getIntVector("int", found); }), Ints{});
    expect(ask([&](bool& found) { return reader.getDoubleVector("text", found); }), Doubles{});
    expect(ask([&](bool& found) { return reader.getString("int", found); }), std::string());
    expect(ask([&](bool& found) { return reader.getStringVector("text", found); }), Strings{});
    expect(ask([&](bool& found) { return reader.getArraySize("text", found); }), 0U);
    const auto number = ask([&](bool& found) { return reader.getDouble("text", found); });
    EXPECT_TRUE(std::isnan(number.value) && number.found);
}

TEST(Fallback, valueIsGivenWhereItIsThere) {
    const JSONReader reader(kinds);
    const bool no = false;
    EXPECT_EQ(reader.getBool("bool", no), true);
    EXPECT_EQ(reader.getInt("int", 1), -7);
    EXPECT_EQ(reader.getIntVector("ints", Ints{9}), (Ints{1, 2}));
    EXPECT_EQ(reader.getDouble("float", 9.0), 1.5);
    EXPECT_EQ(reader.getDoubleVector("doubles", Doubles{}), (Doubles{0.5, 2.0}));
    EXPECT_EQ(reader.getString("text", std::string("f")), "t");
    EXPECT_EQ(reader.getStringVector("texts", Strings{}), (Strings{"a", "b"}));
    EXPECT_EQ(reader.getArraySize("ints"), 2U);
}

TEST(Fallback, isGivenSilentlyForMissingAndWrongKind) {
    const JSONReader reader(kinds);
    const bool yes = true;
    CaptureStderr();
    for (const std::string path : {"X/y", "text"}) {
        EXPECT_EQ(reader.getBool(path, yes), true);
        EXPECT_EQ(reader.getInt(path, 9), 9);
        EXPECT_EQ(reader.getIntVector(path, Ints{9}), Ints{9});
        EXPECT_EQ(reader.getDouble(path, 9.5), 9.5);
        EXPECT_EQ(reader.getDoubleVector(path, Doubles{9.5}), Doubles{9.5});
        EXPECT_EQ(reader.getStringVector(path, Strings{"f"}), Strings{"f"});
        EXPECT_EQ(reader.getArraySize(path), 0U);
    }
    EXPECT_EQ(reader.getString("int", std::string("f")), "f");
    EXPECT_EQ(reader.getString("X/y", std::string("f")), "f");
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(Vectors, elementOfTheWrongKindThrowsTheLibrarysError) {
    const JSONReader reader(R"({"n":[1,"x"],"s":["x",1]})");
    EXPECT_EQ(errorOf([&] { return reader.getDoubleVector("n", Doubles{}).size(); }),
              "[json.exception.type_error.302] type must be number, but is string");
    EXPECT_EQ(errorOf([&] { return reader.getIntVector("n", Ints{}).size(); }),
              "[json.exception.type_error.302] type must be number, but is string");
    EXPECT_EQ(errorOf([&] { return reader.getStringVector("s", Strings{}).size(); }),
              "[json.exception.type_error.302] type must be string, but is number");
}

// ---- Sub-blocks
// ----------------------------------------------------------------------------------------------------

TEST(SubBlockNames, areTheMembersThatAreObjectsInSortedOrder) {
    const JSONReader reader(R"({"S":{"b":{"x":1},"a":{},"n":1,"l":[{}],"null":null}})");
    EXPECT_EQ(reader.getSubBlockNames("S"), (Strings{"a", "b"}));
    EXPECT_EQ(reader.getSubBlockNames(""), Strings{"S"});
}

TEST(SubBlockNames, missingPathsAndScalarsGiveNone) {
    const JSONReader reader(R"({"n":1,"s":"x","null":null,"empty":{}})");
    EXPECT_EQ(reader.getSubBlockNames("X/Y/Z"), Strings{});
    EXPECT_EQ(reader.getSubBlockNames("n"), Strings{});
    EXPECT_EQ(reader.getSubBlockNames("s"), Strings{});
    EXPECT_EQ(reader.getSubBlockNames("null/Y"), Strings{});
    EXPECT_EQ(reader.getSubBlockNames("empty/Y"), Strings{});
}

TEST(SubBlockNames, pathThroughANonObjectThrows) {
    const JSONReader reader(R"({"n":1,"empty":[]})");
    EXPECT_EQ(errorOf([&] { return reader.getSubBlockNames("n/x").size(); }), throughNumber);
    EXPECT_EQ(errorOf([&] { return reader.getSubBlockNames("empty/x").size(); }), throughArray)
        << "emptiness is not looked at on the way";
}

TEST(SubBlockNames, arrayWithoutObjectsGivesNone) {
    EXPECT_EQ(JSONReader(R"({"A":[1,[{}],"x"]})").getSubBlockNames("A"), Strings{});
}

TEST(SubBlockNames, arrayWithAnObjectThrowsTheLibrarysError) {
    EXPECT_EQ(errorOf([&] { return JSONReader(R"({"A":[1,{}]})").getSubBlockNames("A").size(); }),
              "[json.exception.invalid_iterator.207] cannot use key() for non-object iterators");
}

// ---- Indexed queries
// -----------------------------------------------------------------------------------------------

const char* const indexed = R"({"A":[
    {"i": 4, "d": 0.25, "s": "zero", "is": [1], "ds": [0.5], "e": {}, "M": [{"d": 1.5, "s": "in"}, {}, "x", null]},
    {},
    null,
    "text"
], "O": {"k": 1}})";

TEST(Indexed, everyKindGivesItsValue) {
    const JSONReader reader(indexed);
    bool found = false;
    EXPECT_EQ(reader.getInt("A", 0, "i", found), 4);
    EXPECT_EQ(reader.getDouble("A", 0, "d", found), 0.25);
    EXPECT_EQ(reader.getString("A", 0, "s", found), "zero");
    EXPECT_EQ(reader.getIntVector("A", 0, "is", found), Ints{1});
    EXPECT_EQ(reader.getDoubleVector("A", 0, "ds", found), Doubles{0.5});
    EXPECT_EQ(reader.getArraySize("A", 0, "M", found), 4U);
    EXPECT_TRUE(found);
    EXPECT_EQ(reader.getInt("A", 0, "i", 9), 4);
    EXPECT_EQ(reader.getDouble("A", 0, "d", 9.0), 0.25);
    EXPECT_EQ(reader.getString("A", 0, "s", std::string("f")), "zero");
    EXPECT_EQ(reader.getDoubleVector("A", 0, "ds", Doubles{}), Doubles{0.5});
    EXPECT_EQ(reader.getArraySize("A", 0, "M"), 4U);
}

TEST(Indexed, missingGivesTheAbsentValueAndTheComposedPath) {
    const JSONReader reader(indexed);
    const auto expect = [](const auto& answer, const auto& absent) {
        EXPECT_EQ(answer.value, absent);
        EXPECT_FALSE(answer.found);
        EXPECT_EQ(answer.written, notFound("A[0]/x"));
    };
    expect(ask([&](bool& found) { return reader.getInt("A", 0, "x", found); }), absentInt);
    expect(ask([&](bool& found) { return reader.getString("A", 0, "x", found); }), std::string());
    expect(ask([&](bool& found) { return reader.getIntVector("A", 0, "x", found); }), Ints{});
    expect(ask([&](bool& found) { return reader.getDoubleVector("A", 0, "x", found); }), Doubles{});
    expect(ask([&](bool& found) { return reader.getArraySize("A", 0, "x", found); }), 0U);
    const auto number = ask([&](bool& found) { return reader.getDouble("A", 0, "x", found); });
    EXPECT_TRUE(std::isnan(number.value) && !number.found);
    EXPECT_EQ(number.written, notFound("A[0]/x"));
}

TEST(Indexed, fallbackIsGivenSilently) {
    const JSONReader reader(indexed);
    CaptureStderr();
    EXPECT_EQ(reader.getInt("A", 9, "i", 5), 5);
    EXPECT_EQ(reader.getDouble("A", 9, "d", 5.5), 5.5);
    EXPECT_EQ(reader.getString("A", 9, "s", std::string("f")), "f");
    EXPECT_EQ(reader.getDoubleVector("A", 9, "ds", Doubles{5.5}), Doubles{5.5});
    EXPECT_EQ(reader.getArraySize("A", 9, "M"), 0U);
    EXPECT_EQ(reader.getInt("A", 0, "s", 5), 5) << "found, of the wrong kind";
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(Indexed, arraySizeBeyondTheEndIsZeroAndTold) {
    const auto answer = ask(
        [](bool& found) { return JSONReader(R"({"A":[{"B":[1,2]}]})").getArraySize("A", 1, "B", found); });
    EXPECT_EQ(answer.value, 0U);
    EXPECT_FALSE(answer.found);
    EXPECT_EQ(answer.written, notFound("A[1]/B"));
}

TEST(Indexed, emptyElementsAndValuesAreNotFound) {
    const JSONReader reader(indexed);
    bool found = true;
    CaptureStderr();
    EXPECT_EQ(reader.getInt("A", 1, "i", found), absentInt);
    EXPECT_FALSE(found);
    found = true;
    EXPECT_EQ(reader.getInt("A", 2, "i", found), absentInt);
    EXPECT_FALSE(found);
    found = true;
    EXPECT_EQ(reader.getInt("A", 0, "e", found), absentInt);
    EXPECT_FALSE(found);
    GetCapturedStderr();
}

TEST(Indexed, nodeThatIsNoArrayIsNotFound) {
    const JSONReader reader(indexed);
    EXPECT_EQ(reader.getInt("O", 0, "k", 5), 5);
    EXPECT_EQ(reader.getInt("O/k", 0, "k", 5), 5);
    EXPECT_EQ(reader.getInt("missing", 0, "k", 5), 5);
}

TEST(Indexed, negativeIndexThrowsTheLibrarysError) {
    const JSONReader reader(indexed);
    EXPECT_EQ(errorOf([&] { return reader.getInt("A", -1, "i", 5); }), negativeIndex);
    EXPECT_EQ(errorOf([&] { return reader.getInt("missing", -1, "i", 5); }), "nothing thrown");
}

TEST(Indexed, elementWithoutMembersThrows) {
    const JSONReader reader(indexed);
    EXPECT_EQ(errorOf([&] { return reader.getInt("A", 3, "i", 5); }), throughString);
}

TEST(Indexed, keyIsNoPath) {
    const JSONReader reader(R"({"A":[{"a":{"b":1},"a/b":2}]})");
    EXPECT_EQ(reader.getInt("A", 0, "a/b", 0), 2);
}

// ---- Double-indexed queries
// ----------------------------------------------------------------------------------------

TEST(DoubleIndexed, giveTheirValues) {
    const JSONReader reader(indexed);
    bool found = false;
    EXPECT_EQ(reader.getDouble("A", 0, "M", 0, "d", found), 1.5);
    EXPECT_TRUE(found);
    found = false;
    EXPECT_EQ(reader.getString("A", 0, "M", 0, "s", found), "in");
    EXPECT_TRUE(found);
    EXPECT_EQ(reader.getDouble("A", 0, "M", 0, "d", 9.0), 1.5);
    EXPECT_EQ(reader.getString("A", 0, "M", 0, "s", std::string("f")), "in");
}

TEST(DoubleIndexed, missingIsToldWithTheFivePartPath) {
    const JSONReader reader(indexed);
    for (const int index2 : {1, 3, 4}) {
        const auto text = ask([&](bool& found) { return reader.getString("A", 0, "M", index2, "s", found); });
        EXPECT_EQ(text.value, "");
        EXPECT_FALSE(text.found);
        EXPECT_EQ(text.written, notFound("A[0]/M[" + std::to_string(index2) + "]/s"));
        const auto number =
            ask([&](bool& found) { return reader.getDouble("A", 0, "M", index2, "d", found); });
        EXPECT_TRUE(std::isnan(number.value));
        EXPECT_EQ(number.written, notFound("A[0]/M[" + std::to_string(index2) + "]/d"));
    }
}

TEST(DoubleIndexed, fallbackIsGivenSilently) {
    const JSONReader reader(indexed);
    CaptureStderr();
    EXPECT_EQ(reader.getDouble("A", 0, "M", 9, "d", 9.5), 9.5);
    EXPECT_EQ(reader.getString("A", 1, "M", 0, "s", std::string("f")), "f");
    EXPECT_EQ(reader.getString("A", 0, "s", 0, "s", std::string("f")), "f") << "the middle is no array";
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(DoubleIndexed, negativeIndicesAndScalarElementsThrow) {
    const JSONReader reader(indexed);
    EXPECT_EQ(errorOf([&] { return reader.getDouble("A", 0, "M", -1, "d", 0.5); }), negativeIndex);
    EXPECT_EQ(errorOf([&] { return reader.getDouble("A", -1, "M", 0, "d", 0.5); }), negativeIndex);
    EXPECT_EQ(errorOf([&] { return reader.getDouble("A", 0, "M", 2, "d", 0.5); }), throughString);
}

// ---- Derived readers and value semantics
// ---------------------------------------------------------------------------

class ShoutingReader : public JSONReader {
public:
    using JSONReader::JSONReader;
    [[nodiscard]] std::string composePath(const std::string& path, const int& index,
                                          const std::string& key) const override {
        return path + "!" + std::to_string(index) + "!" + key;
    }
    [[nodiscard]] std::string composePath(const std::string& path, const int& /*index*/,
                                          const std::string& middle, const int& /*index2*/,
                                          const std::string& key) const override {
        return path + "!" + middle + "!" + key;
    }
};

TEST(DerivedReader, changesTheShownFormOfIndexedPaths) {
    const ShoutingReader reader(indexed);
    EXPECT_EQ(ask([&](bool& found) { return reader.getInt("A", 7, "i", found); }).written, notFound("A!7!i"));
    EXPECT_EQ(ask([&](bool& found) { return reader.getDouble("A", 7, "M", 0, "d", found); }).written,
              notFound("A!M!d"));
}

TEST(Queries, neverChangeTheDocument) {
    const JSONReader reader(indexed);
    const std::string before = reader.dump();
    CaptureStderr();
    bool found = false;
    EXPECT_EQ(reader.getInt("X/Y", found), absentInt);
    EXPECT_EQ(reader.getInt("A", 0, "X", found), absentInt);
    EXPECT_EQ(reader.getString("A", 0, "M", 0, "X", found), "");
    EXPECT_EQ(reader.getSubBlockNames("X/Y"), Strings{});
    GetCapturedStderr();
    EXPECT_EQ(reader.dump(), before);
}

} // namespace
