#pragma once

#include <stdexcept>
#include <string>

#include "jsv/location.hpp"
#include "jsv/schema_type.hpp"

namespace jsv {

/// Root of the faults of a schema. The first fault that a walk meets ends the validation.
class SchemaValidationException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A fault at a place of the schema: the location as the report shows it, ": ", then the message.
class InvalidSchemaException : public SchemaValidationException {
public:
    InvalidSchemaException(const Location& schemaLocation, const std::string& message);
};

/// A parameter of the wrong type: "This keyword requires a number parameter." and the like.
class InvalidTypeSchemaException : public InvalidSchemaException {
public:
    InvalidTypeSchemaException(const Location& schemaLocation, SchemaType required);
};

/// "The schema contains an unspecified error."
class UnspecifiedSchemaException : public SchemaValidationException {
public:
    UnspecifiedSchemaException();
};

} // namespace jsv
