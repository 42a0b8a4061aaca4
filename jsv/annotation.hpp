#pragma once

#include <string>

#include "jsv/issue.hpp"
#include "jsv/location.hpp"

namespace jsv {

/// One finding: a place in the data and what was found there.
struct Annotation {
    Location location;
    Issue issue;
};

/// By the location's text, then by the kind of finding, then by its payload.
[[nodiscard]] bool operator<(const Annotation& a, const Annotation& b);

/// Location, ": ", and the full message; empty for a trace.
[[nodiscard]] std::string reportLine(const Annotation& annotation);

} // namespace jsv
