#include "app/text_stream.hpp"

#include <cstring>

TextBuffer::TextBuffer(const char* text) {
    // The base class wants memory that may be written; it writes where a character is put back that was not
    // there, which is refused here as nothing overrides `pbackfail`.
    char* const begin = const_cast<char*>(text); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    setg(begin, begin, begin + std::strlen(text));
}

TextBuffer::pos_type TextBuffer::seekoff(off_type offset, std::ios_base::seekdir direction,
                                         std::ios_base::openmode which) {
    const char* const from = direction == std::ios_base::beg   ? eback()
                             : direction == std::ios_base::cur ? gptr()
                                                               : egptr();
    const off_type position = from - eback() + offset;
    if ((which & std::ios_base::in) == 0 || position < 0 || position > egptr() - eback()) {
        return {off_type(-1)};
    }
    setg(eback(), eback() + position, egptr());
    return {position};
}

TextBuffer::pos_type TextBuffer::seekpos(pos_type position, std::ios_base::openmode which) {
    return seekoff(position, std::ios_base::beg, which);
}

TextStream::TextStream(const char* text) : TextBuffer(text), std::istream(this) {}
