#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>

namespace compat {

namespace detail {

/// How deep containers are emptied from within: far deeper than models are, far from the end of the stack.
constexpr std::size_t releasedLevels = 500;

inline void release(nlohmann::json& value, std::size_t levels) noexcept {
    if (levels == 0) {
        return;
    }
    if (value.is_object()) {
        auto& members = value.get_ref<nlohmann::json::object_t&>();
        for (auto& member : members) {
            release(member.second, levels - 1);
        }
        members.clear();
    } else if (value.is_array()) {
        auto& elements = value.get_ref<nlohmann::json::array_t&>();
        for (nlohmann::json& element : elements) {
            release(element, levels - 1);
        }
        elements.clear();
    }
}

} // namespace detail

/// Empties a document's containers from within.
///
/// The library, to be safe from deep nesting, moves what is in a container to a list before it frees it,
/// which takes three times as long. What is nested deeper than this goes is left to the library.
inline void release(nlohmann::json& document) noexcept {
    detail::release(document, detail::releasedLevels);
}

} // namespace compat
