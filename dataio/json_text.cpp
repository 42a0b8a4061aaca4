#include "dataio/json_text.hpp"

#include <array>
#include <climits>
#include <stdexcept>

namespace dataio {

namespace {

constexpr std::size_t readBlock = std::size_t{1} << 20U;

/// The characters that open or close a string, an array or an object.
constexpr auto marks = [] {
    std::array<bool, 1U << CHAR_BIT> table{};
    for (const char mark : {'"', '[', ']', '{', '}'}) {
        table[static_cast<unsigned char>(mark)] = true;
    }
    return table;
}();

/// Position of the next mark from `position` on, the end of the text if there is none.
std::size_t nextMark(std::string_view text, std::size_t position) {
    while (position < text.size() && !marks[static_cast<unsigned char>(text[position])]) {
        ++position;
    }
    return position;
}

/// Position behind the string whose first character stands at `position`, beyond the text if it is not
/// closed.
std::size_t behindString(std::string_view text, std::size_t position) {
    while (position < text.size() && text[position] != '"') {
        position += text[position] == '\\' ? 2U : 1U;
    }
    return position + 1;
}

/// Bytes left in a stream that can tell; 0 for others.
std::size_t bytesLeft(std::istream& stream) {
    std::streambuf& buffer = *stream.rdbuf();
    const std::streamoff here = buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    const std::streamoff end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
    if (here < 0 || end < here) {
        return 0;
    }
    buffer.pubseekoff(here, std::ios_base::beg, std::ios_base::in);
    return static_cast<std::size_t>(end - here);
}

} // namespace

void requireModestNesting(std::string_view text) {
    std::size_t depth = 0;
    for (std::size_t position = nextMark(text, 0); position < text.size();
         position = nextMark(text, position)) {
        switch (text[position++]) {
            case '"':
                position = behindString(text, position);
                break;
            case '[':
            case '{':
                if (++depth > maximumNesting) {
                    throw std::runtime_error("The command file is nested more than " +
                                             std::to_string(maximumNesting) +
                                             " levels deep: flatten its arrays and objects.");
                }
                break;
            default: // closes one
                depth -= depth > 0 ? 1U : 0U;
                break;
        }
    }
}

std::string readAll(std::istream& stream, const std::string& name) {
    std::string text;
    std::size_t expected = bytesLeft(stream);
    do {
        const std::size_t size = text.size();
        const std::size_t block = expected > 0 ? expected : readBlock;
        text.resize(size + block);
        stream.read(&text[size], static_cast<std::streamsize>(block));
        text.resize(size + static_cast<std::size_t>(stream.gcount()));
        // A file that keeps its announced size ends here; one that grows or does not know its size is read
        // on.
        expected = 0;
    } while (stream.good() && stream.peek() != std::istream::traits_type::eof());
    if (stream.bad()) {
        throw std::runtime_error("Reading the command file '" + name +
                                 "' failed: check the file and its disk.");
    }
    return text;
}

} // namespace dataio
