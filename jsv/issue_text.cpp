#include "jsv/issue_text.hpp"

namespace jsv {

namespace {

std::string typePhrase(SchemaType type) {
    switch (type) {
        case SchemaType::integer:
            return "an integer";
        case SchemaType::number:
            return "a number";
        case SchemaType::string:
            return "a string";
        case SchemaType::object:
            return "an object";
        case SchemaType::array:
            return "an array";
        case SchemaType::unknown:
        case SchemaType::boolean:
            break;
    }
    return "of a different type";
}

/// Heading and a list of quoted names, closed by a full stop. Without names the stop takes the place of the
/// heading's colon.
std::string listing(const std::string& heading, const std::vector<std::string>& names) {
    std::string text = heading;
    for (const std::string& name : names) {
        text += " '" + name + "',";
    }
    text.back() = '.';
    return text;
}

struct Wording {
    std::string operator()(const ConstMismatch& issue) const {
        return "This value must be equal to '" + issue.required + "'.";
    }
    std::string operator()(const EnumMismatch& issue) const {
        return listing("This value must be equal to one of the following:", issue.allowed);
    }
    std::string operator()(const ExclusiveAlternatives& issue) const {
        return "Only one of the following two items is allowed: '" + issue.first + "', '" + issue.second +
               "'.";
    }
    std::string operator()(const BelowMinimum& issue) const {
        return "This value must be greater than or equal to " + std::to_string(issue.limit) + ".";
    }
    std::string operator()(const NotAboveExclusiveMinimum& issue) const {
        return "This value must be greater than " + std::to_string(issue.limit) + ".";
    }
    std::string operator()(const AboveMaximum& issue) const {
        return "This value must be less than or equal to " + std::to_string(issue.limit) + ".";
    }
    std::string operator()(const NotBelowExclusiveMaximum& issue) const {
        return "This value must be less than " + std::to_string(issue.limit) + ".";
    }
    std::string operator()(const TypeMismatch& issue) const {
        return "This value must be " + typePhrase(issue.required) + ".";
    }
    std::string operator()(const MissingRequired& /*issue*/) const {
        return "This item is required but missing.";
    }
    std::string operator()(const MissingAlternative& issue) const {
        return listing("One of the following items must be provided:", issue.names);
    }
    std::string operator()(const RequiredInMismatch& issue) const {
        return "This value must match a '" + issue.itemProperty + "' in '" + issue.arrayReference + "'.";
    }
    std::string operator()(const SuperfluousItem& /*issue*/) const {
        return "The value of this item will not be used.";
    }
    std::string operator()(const InvalidItem& /*issue*/) const { return "This item is invalid."; }

    std::string operator()(const SubschemaTrace& /*issue*/) const { return {}; }
    std::string operator()(const RequiredInTrace& /*issue*/) const { return {}; }
    std::string operator()(const DescriptionTrace& /*issue*/) const { return {}; }
    std::string operator()(const FormatTrace& /*issue*/) const { return {}; }
    std::string operator()(const UnitsTrace& /*issue*/) const { return {}; }
    std::string operator()(const DefaultTrace& /*issue*/) const { return {}; }
    std::string operator()(const AccountedTrace& /*issue*/) const { return {}; }
    std::string operator()(const AutoexpandTrace& /*issue*/) const { return {}; }
    std::string operator()(const AlternativeTrace& /*issue*/) const { return {}; }
    std::string operator()(const MinimumTrace& /*issue*/) const { return {}; }
    std::string operator()(const ExclusiveMinimumTrace& /*issue*/) const { return {}; }
    std::string operator()(const MaximumTrace& /*issue*/) const { return {}; }
    std::string operator()(const ExclusiveMaximumTrace& /*issue*/) const { return {}; }
};

} // namespace

std::string messageText(const Issue& issue) {
    return std::visit(Wording(), issue);
}

std::string severityPrefix(const Issue& issue) {
    switch (severityOf(issue)) {
        case Severity::Error:
            return "Error: ";
        case Severity::Warning:
            return "Warning: ";
        case Severity::Info:
            break;
    }
    return {};
}

std::string fullMessage(const Issue& issue) {
    return severityPrefix(issue) + messageText(issue);
}

} // namespace jsv
