#include "jsv/exceptions.hpp"

namespace jsv {

namespace {

std::string typeMessage(SchemaType required) {
    // "an boolean" is what schema authors have always been shown.
    const bool plainArticle = required == SchemaType::number || required == SchemaType::string;
    return std::string("This keyword requires ") + (plainArticle ? "a " : "an ") +
           std::string(nameOf(required)) + " parameter.";
}

} // namespace

InvalidSchemaException::InvalidSchemaException(const Location& schemaLocation, const std::string& message)
    : SchemaValidationException(schemaLocation.shown() + ": " + message) {}

InvalidTypeSchemaException::InvalidTypeSchemaException(const Location& schemaLocation, SchemaType required)
    : InvalidSchemaException(schemaLocation, typeMessage(required)) {}

UnspecifiedSchemaException::UnspecifiedSchemaException()
    : SchemaValidationException("The schema contains an unspecified error.") {}

} // namespace jsv
