#include "jsv/name_index.hpp"

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

namespace jsv {

namespace {

template <typename Number>
std::uint64_t numberAt(const char* bytes) {
    Number number = 0;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

} // namespace

NameIndex::Key::Key(const std::string& text)
    : size(static_cast<std::uint32_t>(std::min<std::size_t>(text.size(), UINT32_MAX))) {
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    if (size >= sizeof(std::uint64_t)) {
        head = numberAt<std::uint64_t>(begin);
        tail = numberAt<std::uint64_t>(end - sizeof(std::uint64_t));
    } else if (size >= sizeof(std::uint32_t)) {
        head = numberAt<std::uint32_t>(begin);
        tail = numberAt<std::uint32_t>(end - sizeof(std::uint32_t));
    } else if (size > 0) {
        head = numberAt<std::uint8_t>(begin);
        tail = numberAt<std::uint8_t>(begin + size / 2) << 8U | numberAt<std::uint8_t>(end - 1);
    }
}

std::size_t NameIndex::hashOf(const Key& key, const std::string& text) {
    // Long texts may differ in their middles alone.
    const std::size_t middle = key.decides() ? 0 : std::hash<std::string>()(text);
    // Odd constants with well-spread bits (from the fractional parts of the golden ratio and of the square
    // root of 2). A multiplication spreads bits upwards only, so the upper ones are brought down before and
    // after the second: numbered names differ in them alone.
    std::uint64_t mixed = key.head ^ (key.tail * 0x9E3779B97F4A7C15U) ^ key.size ^ middle;
    mixed = (mixed ^ (mixed >> 32U)) * 0x6A09E667F3BCC909U;
    return static_cast<std::size_t>(mixed ^ (mixed >> 32U));
}

std::size_t NameIndex::slotOf(const Key& key, const std::string& text) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t position = hashOf(key, text) & mask;
    while (slots[position].text != nullptr &&
           !(slots[position] == key && (key.decides() || *slots[position].text == text))) {
        position = (position + 1) & mask;
    }
    return position;
}

void NameIndex::reserve(std::size_t names) {
    constexpr std::size_t smallest = 8;
    std::size_t size = slots.empty() ? smallest : slots.size();
    while (size < 2 * names) {
        size *= 2;
    }
    if (size > slots.size()) {
        grow(size);
    }
}

Name NameIndex::add(const std::string& text) {
    reserve(count + std::size_t{1});
    const Key key(text);
    Slot& slot = slots[slotOf(key, text)];
    if (slot.text == nullptr) {
        slot = {{key}, count, &text};
        ++count;
    }
    return {slot.text, slot.id};
}

void NameIndex::grow(std::size_t size) {
    std::vector<Slot> larger(size);
    larger.swap(slots);
    for (const Slot& slot : larger) {
        if (slot.text != nullptr) {
            slots[slotOf(slot, *slot.text)] = slot;
        }
    }
}

Members::Members(const NameIndex& names, const nlohmann::json& value, MemberScratch& room)
    : index(names),
      datum(value),
      scratch(room),
      firstMember(scratch.members.size()),
      firstValue(scratch.valueOfId.size()) {
    match();
}

void Members::refresh() {
    if (namesMatched != index.size()) {
        giveRoomBack();
        match();
    }
}

void Members::match() {
    namesMatched = index.size();
    if (!datum.is_object()) {
        return;
    }
    count = datum.size();
    scratch.valueOfId.resize(firstValue + namesMatched);
    for (const auto& [name, value] : datum.get_ref<const nlohmann::json::object_t&>()) {
        const NameId id = index.find(name);
        scratch.members.push_back({&name, &value, id});
        if (id != NameIndex::unknown) {
            scratch.valueOfId[firstValue + id] = &value;
        }
    }
}

void Members::giveRoomBack() {
    scratch.members.resize(firstMember);
    scratch.valueOfId.resize(firstValue);
}

} // namespace jsv
