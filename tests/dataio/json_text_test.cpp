#include "dataio/json_text.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace {

using dataio::readAll;
using dataio::requireModestNesting;

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(Nesting, thousandLevelsAreAccepted) {
    EXPECT_NO_THROW(requireModestNesting(nested(1000)));
}

TEST(Nesting, oneLevelMoreIsRefusedWithItsText) {
    try {
        requireModestNesting(nested(1001));
        FAIL() << "accepted";
    } catch (const std::runtime_error& refusal) {
        EXPECT_STREQ(
            refusal.what(),
            "The command file is nested more than 1000 levels deep: flatten its arrays and objects.");
    }
}

TEST(Nesting, objectsCountAsArraysDo) {
    std::string text;
    for (int level = 0; level < 501; ++level) {
        text += R"({"a":[)";
    }
    EXPECT_THROW(requireModestNesting(text), std::runtime_error);
}

TEST(Nesting, siblingsDoNotAddUp) {
    std::string text = "[";
    for (int sibling = 0; sibling < 5000; ++sibling) {
        text += "[],";
    }
    EXPECT_NO_THROW(requireModestNesting(text + "0]"));
}

TEST(Nesting, bracketsInStringsDoNotCount) {
    EXPECT_NO_THROW(requireModestNesting("\"" + std::string(5000, '[') + "\""));
    EXPECT_NO_THROW(requireModestNesting(R"("\")" + std::string(5000, '{') + "\""));
}

TEST(Nesting, stringThatEndsInEscapedBackslashIsClosed) {
    EXPECT_THROW(requireModestNesting(R"(["\\",)" + nested(1000)), std::runtime_error);
}

TEST(Nesting, openStringAndSurplusBracketsDoNotTroubleIt) {
    EXPECT_NO_THROW(requireModestNesting("\"open"));
    EXPECT_NO_THROW(requireModestNesting("\"open\\"));
    EXPECT_NO_THROW(requireModestNesting("]]]]}}}}"));
    EXPECT_NO_THROW(requireModestNesting(""));
}

TEST(ReadAll, givesTheRestOfASeekableStream) {
    std::istringstream stream("skipped rest");
    std::string word;
    stream >> word;
    EXPECT_EQ(readAll(stream, "name"), " rest");
}

TEST(ReadAll, emptyStreamGivesEmptyText) {
    std::istringstream stream;
    EXPECT_EQ(readAll(stream, "name"), "");
}

/// Gives `total` bytes and knows neither size nor position, like a pipe; may fail at the end instead of
/// ending.
class Pipe : public std::streambuf {
public:
    explicit Pipe(std::size_t total, bool failing = false) : left(total), fails(failing) {}

protected:
    int_type underflow() override {
        if (left == 0) {
            if (fails) {
                throw std::runtime_error("device error");
            }
            return traits_type::eof();
        }
        const std::size_t size = left < sizeof block ? left : sizeof block;
        left -= size;
        std::fill(block, block + size, 'x');
        setg(block, block, block + size);
        return traits_type::to_int_type('x');
    }

private:
    std::size_t left;
    bool fails;
    char block[1000] = {};
};

TEST(ReadAll, readsStreamsOfUnknownSizeWhole) {
    Pipe pipe(3'000'001);
    std::istream stream(&pipe);
    EXPECT_EQ(readAll(stream, "name"), std::string(3'000'001, 'x'));
}

TEST(ReadAll, failureOfTheDeviceIsTold) {
    Pipe pipe(10, true);
    std::istream stream(&pipe);
    try {
        static_cast<void>(readAll(stream, "model.json"));
        FAIL() << "accepted";
    } catch (const std::runtime_error& failure) {
        EXPECT_STREQ(failure.what(),
                     "Reading the command file 'model.json' failed: check the file and its disk.");
    }
}

} // namespace
