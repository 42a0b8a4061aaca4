#pragma once

#include <nlohmann/json.hpp>

namespace jsv {

/// The two documents of a validation; both must outlive it.
struct ValidationContext {
    const nlohmann::json& data;
    const nlohmann::json& schema;
};

} // namespace jsv
