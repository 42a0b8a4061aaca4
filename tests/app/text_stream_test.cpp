#include "app/text_stream.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace {

std::string rest(std::istream& stream) {
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace

TEST(TextStream, givesTheTextAndEnds) {
    TextStream stream("{\"a\": 1}\n");
    EXPECT_EQ(rest(stream), "{\"a\": 1}\n");
    EXPECT_EQ(stream.get(), std::istream::traits_type::eof());
    EXPECT_TRUE(stream.eof());
}

TEST(TextStream, emptyTextHasNothing) {
    TextStream stream("");
    EXPECT_EQ(stream.peek(), std::istream::traits_type::eof());
}

TEST(TextStream, readsBlocks) {
    TextStream stream("abcdef");
    std::string block(4, '-');
    stream.read(block.data(), 4);
    EXPECT_EQ(block, "abcd");
    stream.read(block.data(), 4);
    EXPECT_EQ(stream.gcount(), 2);
    EXPECT_EQ(block, "efcd");
}

TEST(TextStream, tellsAndSeeksInTheText) {
    TextStream stream("abcdef");
    stream.seekg(0, std::ios_base::end);
    EXPECT_EQ(stream.tellg(), 6);
    stream.seekg(-2, std::ios_base::cur);
    EXPECT_EQ(rest(stream), "ef");
    stream.clear();
    stream.seekg(1);
    EXPECT_EQ(rest(stream), "bcdef");
}

TEST(TextStream, doesNotSeekBeyondTheText) {
    for (const int position : {-1, 4}) {
        TextStream stream("abc");
        stream.get();
        stream.seekg(position);
        EXPECT_TRUE(stream.fail()) << position;
        stream.clear();
        EXPECT_EQ(rest(stream), "bc") << position;
    }
}

TEST(TextStream, takesNothingIn) {
    const char text[] = "abc";
    TextStream stream(text);
    stream.get();
    stream.putback('x');
    EXPECT_TRUE(stream.bad());
    EXPECT_STREQ(text, "abc");
}
