#pragma once

#include <nlohmann/json.hpp>

namespace reference {

enum class Draft { draft07, draft2020 };

/// A schema of the dialect of jsv as a schema of a standard draft, made for editors.
///
/// A standard validator finds data valid against it exactly when jsv finds no error in them, but for
/// references between blocks (requiredIn), which the standard cannot express, and for whole numbers spelt
/// with a fraction or an exponent (3.0), which it counts as integers. Members that nothing uses stay valid,
/// as they only give a warning with jsv; editors that know "deprecationMessage" show the same warning.
///
/// Each description stands as plain text (description) and as Markdown (markdownDescription), with unit,
/// range, default and reference below it. What a value of an enumeration means stands beside it
/// (enumDescriptions, markdownEnumDescriptions), together with what the variant that it selects requires.
/// Selectors stand first among the members. File names have no format: that of the standard would refuse what
/// the file system allows.
///
/// Throws std::invalid_argument with place and text where the schema has a fault.
nlohmann::ordered_json standardSchema(const nlohmann::ordered_json& dialect, Draft draft);

} // namespace reference
