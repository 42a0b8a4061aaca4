#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace jsv {

/// The number of a name in its index.
using NameId = std::uint32_t;

/// A member name of a schema, numbered by the index that it belongs to; refers into the schema document.
struct Name {
    const std::string* text;
    NameId id;
};

/// The member names that a schema and its groups of alternatives, which all speak of the same datum, mention
/// anywhere.
///
/// The names of an object are looked up once; whatever the keywords then ask about a name they ask by its
/// number. The table is made for short names: those of up to 16 bytes are compared as two numbers.
class NameIndex {
public:
    /// Number of a name that is not in the index.
    static constexpr NameId unknown = UINT32_MAX;

    /// Makes room for so many names in all.
    void reserve(std::size_t names);
    /// The name with its number, which stays; the text must outlive the index.
    Name add(const std::string& text);
    /// The number of a name, or `unknown`.
    [[nodiscard]] NameId find(const std::string& text) const {
        return slots.empty() ? unknown : slots[slotOf(Key(text), text)].id;
    }
    [[nodiscard]] std::size_t size() const { return count; }

private:
    /// The ends of a text, which are all of it where it is short.
    struct Key {
        Key() = default;
        explicit Key(const std::string& text);

        [[nodiscard]] bool decides() const { return size <= 2 * sizeof(std::uint64_t); }
        friend bool operator==(const Key& a, const Key& b) {
            return a.head == b.head && a.tail == b.tail && a.size == b.size;
        }

        std::uint64_t head = 0;
        std::uint64_t tail = 0;
        /// The greatest number stands for all sizes from there on.
        std::uint32_t size = 0;
    };
    /// Derived, so that the number takes the room that is left at the key's end.
    struct Slot : Key {
        NameId id = unknown;
        const std::string* text = nullptr;
    };

    [[nodiscard]] static std::size_t hashOf(const Key& key, const std::string& text);
    /// The slot of a text, or the free one where it belongs.
    [[nodiscard]] std::size_t slotOf(const Key& key, const std::string& text) const;
    void grow(std::size_t size);

    /// A power of two of slots, at most half of them taken.
    std::vector<Slot> slots;
    NameId count = 0;
};

/// A member of a datum with its number.
struct Member {
    const std::string* name;
    const nlohmann::json* value;
    NameId id;
};

/// Room for the members of objects inside each other, used like a stack.
struct MemberScratch {
    std::vector<Member> members;
    std::vector<const nlohmann::json*> valueOfId;
};

/// The members of an object, numbered by an index.
class Members {
public:
    /// Takes the members up; a datum that is no object has none.
    Members(const NameIndex& names, const nlohmann::json& value, MemberScratch& room);
    Members(const Members&) = delete;
    Members(Members&&) = delete;
    Members& operator=(const Members&) = delete;
    Members& operator=(Members&&) = delete;
    ~Members() { giveRoomBack(); }

    /// The value of a member; null if the datum has none of this name. Names that came to the index later
    /// need `refresh` first.
    [[nodiscard]] const nlohmann::json* find(const Name& name) const {
        return scratch.valueOfId[firstValue + name.id];
    }
    [[nodiscard]] bool has(const Name& name) const { return find(name) != nullptr; }

    [[nodiscard]] std::size_t size() const { return count; }
    /// The members in the order of their names.
    [[nodiscard]] Member operator[](std::size_t position) const {
        return scratch.members[firstMember + position];
    }

    /// Takes up the names that came to the index. No other members may have been made since that still are
    /// there.
    void refresh();

private:
    void match();
    void giveRoomBack();

    const NameIndex& index;
    const nlohmann::json& datum;
    MemberScratch& scratch;
    std::size_t firstMember;
    std::size_t firstValue;
    std::size_t count = 0;
    std::size_t namesMatched = 0;
};

} // namespace jsv
