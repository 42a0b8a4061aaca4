#pragma once

#include <istream>
#include <streambuf>

/// A buffer over a text that stands in memory. Nothing can be written to it.
class TextBuffer : public std::streambuf {
public:
    /// @param text ends with a zero byte and outlives the buffer.
    explicit TextBuffer(const char* text);

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;
};

/// A stream that reads a text where it stands: the text embedded in a program is a megabyte, which a string
/// stream would copy twice.
class TextStream : private TextBuffer, public std::istream {
public:
    /// @param text ends with a zero byte and outlives the stream.
    explicit TextStream(const char* text);
};
