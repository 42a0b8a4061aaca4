#pragma once

#include <istream>
#include <ostream>

namespace jsv {

/// Where the report goes; nowhere without a stream.
struct ReportOutput {
    std::ostream* stream = nullptr;
};

/// Validates JSON data against a schema, both as text.
///
/// The report, one line for each finding, sorted, goes to the output, followed by an empty line; nothing is
/// written where there is no finding. Calls are independent of each other.
/// @return 0 no finding; 1 warnings but no error; 2 at least one error.
/// @throws std::runtime_error "Parsing the JSON data file failed: " + the parser's message, likewise "JSON
/// schema"; the data are parsed first.
/// @throws InvalidSchemaException the first fault of the schema that the data lead to; nothing is written
/// then.
int validate(ReportOutput output, std::istream& data, std::istream& schema);

} // namespace jsv
