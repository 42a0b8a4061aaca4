#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace jsv {

/// A place in a JSON document: the names and indices on the way from its root, kept as JSON pointer text (RFC
/// 6901).
class Location {
public:
    /// The root.
    Location() = default;
    explicit Location(const std::vector<std::string>& components);

    /// Goes one step down, to the member `name`.
    void append(std::string_view name);
    /// Goes one step down, to the element `index`.
    void append(std::size_t index);

    /// JSON pointer text; the root is the empty text.
    [[nodiscard]] const std::string& text() const { return pointer; }
    /// Text for people: as `text`, the root being "/".
    [[nodiscard]] std::string shown() const { return pointer.empty() ? "/" : pointer; }
    /// Names and indices from the root down, not escaped.
    [[nodiscard]] std::vector<std::string> components() const;

    /// Byte-wise by their texts.
    friend bool operator<(const Location& a, const Location& b) { return a.pointer < b.pointer; }
    friend bool operator==(const Location& a, const Location& b) { return a.pointer == b.pointer; }

private:
    friend class Place;

    std::string pointer;
};

/// A place on the way of a walk: one step away from the place above it, which must outlive it, as must the
/// name.
///
/// A walk goes down by making a place and up by leaving its scope; the location is put together only where it
/// is needed.
class Place {
public:
    /// The place where a walk begins.
    explicit Place(const Location& start) : name(&start.pointer) {}
    Place(const Place& parent, const std::string& member) : above(&parent), name(&member) {}
    Place(const Place& parent, std::size_t element) : above(&parent), index(element) {}
    Place(const Place& parent, std::string&& member) = delete;

    [[nodiscard]] Location location() const;

private:
    /// About how long the pointer text is; one that needs escapes is longer.
    [[nodiscard]] std::size_t textSize() const;
    void appendTo(Location& location) const;

    /// Null where a walk begins.
    const Place* above = nullptr;
    /// Where a walk begins, the whole pointer text; null for an element.
    const std::string* name = nullptr;
    std::size_t index = 0;
};

} // namespace jsv
