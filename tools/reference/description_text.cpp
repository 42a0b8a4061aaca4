#include "tools/reference/description_text.hpp"

#include "tools/reference/html_entities.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace reference {
namespace {

bool isSpace(char character) {
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// Bytes of characters beyond ASCII count as parts of words: Greek letters mostly.
bool isWord(char character) {
    return isDigit(character) || isLetter(character) || static_cast<unsigned char>(character) >= 0x80;
}

void appendUtf8(std::string& text, char32_t character) {
    const auto byte = [&text](std::uint32_t value) {
        text += static_cast<char>(static_cast<unsigned char>(value));
    };
    const auto code = static_cast<std::uint32_t>(character);
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0 | (code >> 6U));
        byte(0x80 | (code & 0x3FU));
    } else if (code < 0x10000) {
        byte(0xE0 | (code >> 12U));
        byte(0x80 | ((code >> 6U) & 0x3FU));
        byte(0x80 | (code & 0x3FU));
    } else {
        byte(0xF0 | (code >> 18U));
        byte(0x80 | ((code >> 12U) & 0x3FU));
        byte(0x80 | ((code >> 6U) & 0x3FU));
        byte(0x80 | (code & 0x3FU));
    }
}

int digitValue(char digit) {
    if (isDigit(digit)) {
        return digit - '0';
    }
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : 16;
}

// "#945" and "#x3B1" are alpha.
std::optional<char32_t> numberedCharacter(std::string_view name) {
    const bool hexadecimal = name.size() > 1 && (name[1] == 'x' || name[1] == 'X');
    const std::string_view digits = name.substr(hexadecimal ? 2 : 1);
    const int base = hexadecimal ? 16 : 10;
    std::uint32_t code = 0;
    for (const char each : digits) {
        const int value = digitValue(each);
        if (value >= base || code > 0x10FFFF) {
            return std::nullopt;
        }
        code = code * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(value);
    }
    const bool surrogate = code >= 0xD800 && code < 0xE000;
    if (digits.empty() || code == 0 || code > 0x10FFFF || surrogate) {
        return std::nullopt;
    }
    return static_cast<char32_t>(code);
}

std::optional<char32_t> entityCharacter(std::string_view name) {
    return !name.empty() && name.front() == '#' ? numberedCharacter(name) : namedCharacter(name);
}

std::string decoded(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t end = text.front() == '&' ? text.find(';') : std::string_view::npos;
        const auto character =
            end == std::string_view::npos ? std::nullopt : entityCharacter(text.substr(1, end - 1));
        if (character) {
            appendUtf8(result, *character);
            text.remove_prefix(end + 1);
        } else {
            result += text.front();
            text.remove_prefix(1);
        }
    }
    return result;
}

std::string escapedForMarkdown(std::string_view text) {
    std::string result;
    for (const char each : text) {
        if (std::string_view("\\`*_[]<>&|~").find(each) != std::string_view::npos) {
            result += '\\';
        }
        result += each;
    }
    return result;
}

// What would begin a heading or a list if it stood at the begin of a line.
std::string guardedLineStart(std::string_view text) {
    const auto digits =
        static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
    const std::size_t mark = digits;
    if (mark == text.size()) {
        return std::string(text);
    }
    const std::string_view marks = digits == 0 ? "#+-=" : ".)";
    if (marks.find(text[mark]) == std::string_view::npos) {
        return std::string(text);
    }
    return std::string(text.substr(0, mark)) + '\\' + std::string(text.substr(mark));
}

struct Script {
    char mark;
    std::array<std::string_view, 10> digits;
    std::string_view plus;
    std::string_view minus;
};

constexpr Script superscript{'^', {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"}, "⁺", "⁻"};
constexpr Script subscript{'_', {"₀", "₁", "₂", "₃", "₄", "₅", "₆", "₇", "₈", "₉"}, "₊", "₋"};
constexpr std::string_view minusSign = "\u2212";

// Unicode has the digits and signs as small ones; most letters it lacks, and fonts lack more.
std::optional<std::string> inSmallCharacters(std::string_view text, const Script& script) {
    std::string result;
    while (!text.empty()) {
        std::size_t length = 1;
        if (isDigit(text.front())) {
            result += script.digits.at(static_cast<std::size_t>(text.front() - '0'));
        } else if (text.front() == '+') {
            result += script.plus;
        } else if (text.front() == '-') {
            result += script.minus;
        } else if (text.substr(0, minusSign.size()) == minusSign) {
            result += script.minus;
            length = minusSign.size();
        } else {
            return std::nullopt;
        }
        text.remove_prefix(length);
    }
    return result;
}

std::string raisedOrLowered(std::string_view text, const Script& script) {
    if (auto small = inSmallCharacters(text, script)) {
        return *small;
    }
    const bool word =
        text.find(minusSign) == std::string_view::npos && std::all_of(text.begin(), text.end(), isWord);
    const std::string inner = word ? std::string(text) : '(' + std::string(text) + ')';
    return script.mark + inner;
}

struct Tag {
    std::string name;
    std::string target; // of a link
    bool closing = false;
};

std::string attribute(std::string_view inner, std::string_view name) {
    const std::string opening = std::string(name) + "=\"";
    const std::size_t begin = inner.find(opening);
    if (begin == std::string_view::npos) {
        return "";
    }
    const std::string_view value = inner.substr(begin + opening.size());
    return decoded(value.substr(0, value.find('"')));
}

// What stands between "<" and ">".
Tag parsedTag(std::string_view inner) {
    Tag tag;
    tag.closing = !inner.empty() && inner.front() == '/';
    if (tag.closing) {
        inner.remove_prefix(1);
    }
    const auto* const end = std::find_if_not(inner.begin(), inner.end(),
                                             [](char each) { return isLetter(each) || isDigit(each); });
    tag.name.assign(inner.begin(), end);
    tag.target = attribute(inner, "href");
    return tag;
}

bool isInline(std::string_view name) {
    constexpr std::array<std::string_view, 6> names{"a", "b", "code", "i", "sub", "sup"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Inside of these nothing else is marked up, and escaping waits until their end.
bool isRaw(std::string_view name) {
    return name == "code" || name == "sub" || name == "sup";
}

// Markdown takes a mark for emphasis only where words touch it on the inside.
std::string emphasized(const std::string& text, std::string_view mark) {
    const bool possible = !text.empty() && isWord(text.front()) && isWord(text.back());
    return possible ? std::string(mark) + text + std::string(mark) : text;
}

std::string codeSpan(const std::string& text) {
    const std::string_view fence = text.find('`') == std::string::npos ? "`" : "``";
    return std::string(fence) + text + std::string(fence);
}

class Writer {
public:
    explicit Writer(TextForm form) : markdown_(form == TextForm::markdown) {}

    void text(std::string_view html) {
        for (const char each : decoded(html)) {
            if (!isSpace(each)) {
                pending_ += each;
            } else if (pending_.empty() ? needsSpace() : !isSpace(pending_.back())) {
                pending_ += ' ';
            }
        }
        add(std::exchange(pending_, ""));
    }

    void tag(const Tag& tag) {
        if (isInline(tag.name)) {
            inlineTag(tag);
        } else if (tag.name == "ul" || tag.name == "ol") {
            list(tag);
        } else if (tag.name == "li" && !tag.closing) {
            beginElement();
        } else if (tag.name == "p" || tag.name == "table") {
            part(lists_.empty() ? 2 : 1);
        } else if (tag.name == "tr") {
            part(markdown_ ? 2 : 1);
        } else if ((tag.name == "td" || tag.name == "th") && !tag.closing) {
            text(" ");
        } else if (tag.name == "br") {
            breakLine();
        }
    }

    std::string finished() {
        while (!open_.empty()) {
            close(open_.back().tag.name);
        }
        trim();
        return result_;
    }

private:
    struct Open {
        Tag tag;
        std::string text;
    };
    struct List {
        bool numbered;
        int count;
    };

    void inlineTag(const Tag& tag) {
        if (tag.closing) {
            close(tag.name);
        } else {
            open_.push_back({tag, ""});
        }
    }

    [[nodiscard]] bool inRaw() const {
        return std::any_of(open_.begin(), open_.end(), [](const Open& each) { return isRaw(each.tag.name); });
    }

    // Spaces at the begin of a line mean nothing; after an opened element the text before it decides.
    [[nodiscard]] bool needsSpace() const {
        for (auto each = open_.rbegin(); each != open_.rend(); ++each) {
            if (!each->text.empty()) {
                return !isSpace(each->text.back());
            }
        }
        return newlines_ == 0 && !atElement_ && !result_.empty() && !isSpace(result_.back());
    }

    void add(const std::string& text) {
        if (!text.empty()) {
            addMarkup(markdown_ && !inRaw() ? escapedForMarkdown(text) : text);
        }
    }

    void addMarkup(const std::string& text) {
        if (!open_.empty()) {
            open_.back().text += text;
            return;
        }
        const bool lineStart = result_.empty() || newlines_ > 0 || atElement_;
        flushNewlines();
        atElement_ = false;
        result_ += markdown_ && lineStart ? guardedLineStart(text) : text;
    }

    void flushNewlines() {
        if (newlines_ > 0) {
            trim();
            if (!result_.empty()) {
                result_.append(newlines_, '\n');
            }
            newlines_ = 0;
        }
    }

    void trim() {
        while (!result_.empty() && isSpace(result_.back())) {
            result_.pop_back();
        }
    }

    void part(std::size_t newlines) {
        if (open_.empty() && !atElement_) {
            newlines_ = std::max(newlines_, newlines);
        }
    }

    void breakLine() {
        if (!open_.empty()) {
            open_.back().text += ' ';
        } else if (markdown_) {
            trim();
            result_ += "\\\n";
        } else {
            part(1);
        }
    }

    void list(const Tag& tag) {
        if (!tag.closing) {
            part(markdown_ && lists_.empty() ? 2 : 1);
            lists_.push_back({tag.name == "ol", 0});
        } else if (!lists_.empty()) {
            lists_.pop_back();
            part(lists_.empty() ? 2 : 1);
        }
    }

    void beginElement() {
        part(1);
        flushNewlines();
        const std::size_t depth = lists_.empty() ? 0 : lists_.size() - 1;
        result_.append(3 * depth, ' ');
        result_ +=
            lists_.empty() || !lists_.back().numbered ? "- " : std::to_string(++lists_.back().count) + ". ";
        atElement_ = true;
    }

    void close(const std::string& name) {
        if (open_.empty() || open_.back().tag.name != name) {
            return;
        }
        const Open element = std::move(open_.back());
        open_.pop_back();
        if (name == "sub" || name == "sup") {
            add(raisedOrLowered(element.text, name == "sup" ? superscript : subscript));
        } else if (!markdown_ || inRaw()) {
            addMarkup(element.text);
        } else {
            addMarkup(markedUp(element));
        }
    }

    static std::string markedUp(const Open& element) {
        const std::string& name = element.tag.name;
        if (name == "code") {
            return codeSpan(element.text);
        }
        if (name == "a") {
            return element.tag.target.empty() ? element.text
                                              : '[' + element.text + "](<" + element.tag.target + ">)";
        }
        return emphasized(element.text, name == "b" ? "**" : "*");
    }

    bool markdown_;
    bool atElement_ = false;
    std::size_t newlines_ = 0;
    std::string pending_;
    std::string result_;
    std::vector<Open> open_;
    std::vector<List> lists_;
};

} // namespace

std::string descriptionText(std::string_view html, TextForm form) {
    Writer writer(form);
    while (!html.empty()) {
        const std::size_t begin = std::min(html.find('<'), html.size());
        writer.text(html.substr(0, begin));
        html.remove_prefix(begin);
        const std::size_t end = html.find('>');
        if (end == std::string_view::npos) {
            writer.text(html);
            break;
        }
        writer.tag(parsedTag(html.substr(1, end - 1)));
        html.remove_prefix(end + 1);
    }
    return writer.finished();
}

} // namespace reference
