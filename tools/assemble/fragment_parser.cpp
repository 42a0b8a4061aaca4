#include "tools/assemble/fragment_parser.hpp"

#include <cstddef>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace assembly {

namespace {

using Json = nlohmann::ordered_json;

/// Hands a text to the parser and tells how far it has come, which the parser does not.
class TrackedCharacter {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    TrackedCharacter(const char* character, const char*& reached)
        : current(character), reachedByParser(&reached) {}

    reference operator*() const { return *current; }
    TrackedCharacter& operator++() {
        *reachedByParser = ++current;
        return *this;
    }
    bool operator==(const TrackedCharacter& other) const { return current == other.current; }
    bool operator!=(const TrackedCharacter& other) const { return !(*this == other); }

private:
    const char* current;
    const char** reachedByParser;
};

/// An object or array whose end has not been reached.
struct OpenContainer {
    Json value;
    /// The member that is being read, of objects.
    std::string name{};
    std::optional<Place> fragmentPlace{};
};

Json withMembersOf(const Json& fragment, const Json& object) {
    Json joined = Json::object();
    for (const auto& [name, value] : object.items()) {
        if (name != fragmentMember) {
            joined[name] = value;
            continue;
        }
        for (const auto& [included, includedValue] : fragment.items()) {
            if (!object.contains(included)) {
                joined[included] = includedValue;
            }
        }
    }
    return joined;
}

/// The parser's words without its name for the error and its own notion of the place.
std::string withoutPreamble(std::string message) {
    for (const char* const end : {"] ", ": "}) {
        const bool hasPart = message.rfind('[', 0) == 0 || message.rfind("parse error at ", 0) == 0;
        const std::size_t at = message.find(end);
        if (hasPart && at != std::string::npos) {
            message.erase(0, at + 2);
        }
    }
    return message;
}

/// Builds the value of a fragment from the parser's events.
class FragmentBuilder : public nlohmann::json_sax<Json> {
public:
    FragmentBuilder(std::string fileName, std::string_view fileText, Include includeFragment)
        : file(std::move(fileName)),
          text(fileText),
          include(std::move(includeFragment)),
          reached(text.data()) {}

    Json parse() {
        Json::sax_parse(TrackedCharacter(text.data(), reached),
                        TrackedCharacter(text.data() + text.size(), reached), this);
        return std::move(root);
    }

    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(number_integer_t value) override { return add(value); }
    bool number_unsigned(number_unsigned_t value) override { return add(value); }
    bool number_float(number_float_t value, const string_t& /*digits*/) override { return add(value); }
    bool string(string_t& value) override { return add(std::move(value)); }
    bool binary(binary_t& value) override { return add(std::move(value)); }

    bool start_object(std::size_t /*size*/) override { return open(Json::object()); }
    bool start_array(std::size_t /*size*/) override { return open(Json::array()); }
    bool end_array() override { return close(); }
    bool end_object() override {
        OpenContainer& object = stack.back();
        if (object.fragmentPlace) {
            object.value = withMembersOf(fragmentOf(object), object.value);
        }
        return close();
    }

    bool key(string_t& name) override {
        OpenContainer& object = stack.back();
        if (object.value.contains(name)) {
            throw AssemblyError(placeOfKey(), "the member '" + name + "' stands twice in one object");
        }
        if (name == fragmentMember) {
            object.fragmentPlace = placeOfKey();
        }
        object.name = std::move(name);
        return true;
    }

    bool parse_error(std::size_t read, const std::string& /*token*/,
                     const nlohmann::detail::exception& fault) override {
        throw AssemblyError(placeOf(file, text, read == 0 ? 0 : read - 1), withoutPreamble(fault.what()));
    }

private:
    bool open(Json empty) {
        stack.push_back({std::move(empty)});
        return true;
    }

    bool close() {
        Json value = std::move(stack.back().value);
        stack.pop_back();
        return add(std::move(value));
    }

    bool add(Json value) {
        if (stack.empty()) {
            root = std::move(value);
        } else if (OpenContainer& parent = stack.back(); parent.value.is_array()) {
            parent.value.push_back(std::move(value));
        } else {
            parent.value[parent.name] = std::move(value);
        }
        return true;
    }

    [[nodiscard]] Json fragmentOf(const OpenContainer& object) const {
        const Json& path = object.value.at(fragmentMember);
        if (!path.is_string()) {
            throw AssemblyError(*object.fragmentPlace,
                                "'$fragment' must be a string, the path of a fragment");
        }
        return include(path.get<std::string>(), *object.fragmentPlace);
    }

    /// The parser has read up to the quote that ends the key: its beginning is the quote before that no
    /// backslash stands in front of, since inside a string every quote has one.
    [[nodiscard]] Place placeOfKey() const {
        std::size_t quote = static_cast<std::size_t>(reached - text.data()) - 1;
        do {
            quote = text.rfind('"', quote - 1);
        } while (quote > 0 && text[quote - 1] == '\\');
        return placeOf(file, text, quote);
    }

    std::string file;
    std::string_view text;
    Include include;
    const char* reached;
    std::vector<OpenContainer> stack;
    Json root;
};

void requireAscii(const std::string& file, std::string_view text) {
    for (std::size_t offset = 0; offset < text.size(); ++offset) {
        if (static_cast<unsigned char>(text[offset]) > 0x7F) {
            throw AssemblyError(placeOf(file, text, offset),
                                "this character is not ASCII: write its HTML entity");
        }
    }
}

} // namespace

Json parseFragment(const std::string& file, std::string_view text, const Include& include) {
    requireAscii(file, text);
    return FragmentBuilder(file, text, include).parse();
}

} // namespace assembly
