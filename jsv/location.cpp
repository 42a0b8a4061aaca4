#include "jsv/location.hpp"

#include <array>
#include <charconv>
#include <limits>

namespace jsv {

namespace {

std::string unescaped(std::string_view token) {
    std::string name;
    for (std::size_t position = 0; position < token.size(); ++position) {
        if (token[position] == '~') {
            ++position;
            name += token[position] == '1' ? '/' : '~';
        } else {
            name += token[position];
        }
    }
    return name;
}

} // namespace

Location::Location(const std::vector<std::string>& components) {
    for (const std::string& component : components) {
        append(component);
    }
}

void Location::append(std::string_view name) {
    pointer += '/';
    for (const char letter : name) {
        if (letter == '~') {
            pointer += "~0";
        } else if (letter == '/') {
            pointer += "~1";
        } else {
            pointer += letter;
        }
    }
}

void Location::append(std::size_t index) {
    std::array<char, std::numeric_limits<std::size_t>::digits10 + 1> digits{};
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), index).ptr;
    pointer += '/';
    pointer.append(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

std::vector<std::string> Location::components() const {
    std::vector<std::string> names;
    std::size_t start = 0;
    while (start < pointer.size()) {
        const std::size_t end = pointer.find('/', start + 1);
        names.push_back(unescaped(std::string_view(pointer).substr(start + 1, end - start - 1)));
        start = end;
    }
    return names;
}

Location Place::location() const {
    Location location;
    location.pointer.reserve(textSize());
    appendTo(location);
    return location;
}

std::size_t Place::textSize() const {
    constexpr std::size_t usualIndex = 6; // digits
    if (above == nullptr) {
        return name->size();
    }
    return above->textSize() + 1 + (name != nullptr ? name->size() : usualIndex);
}

void Place::appendTo(Location& location) const {
    if (above == nullptr) {
        location.pointer = *name;
        return;
    }
    above->appendTo(location);
    if (name != nullptr) {
        location.append(*name);
    } else {
        location.append(index);
    }
}

} // namespace jsv
