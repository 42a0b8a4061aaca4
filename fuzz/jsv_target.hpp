#pragma once

#include <exception>
#include <sstream>
#include <stdexcept>
#include <string>

#include "jsv/validate.hpp"

namespace fuzz {

/// What a validation gives: verdict and report, or the text of its failure.
inline std::string outcomeOf(const std::string& dataText, const std::string& schemaText) {
    std::istringstream dataStream(dataText);
    std::istringstream schemaStream(schemaText);
    std::ostringstream report;
    try {
        const int verdict = jsv::validate({&report}, dataStream, schemaStream);
        const bool hasError = report.str().find(": Error: ") != std::string::npos;
        const bool isEmpty = report.str().empty();
        if ((verdict == 2) != hasError || (verdict == 0) != isEmpty) {
            throw std::logic_error("the verdict is not that of the report");
        }
        return report.str();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

/// Validates twice: no state may survive a call.
inline void validateTwice(const std::string& dataText, const std::string& schemaText) {
    if (outcomeOf(dataText, schemaText) != outcomeOf(dataText, schemaText)) {
        throw std::logic_error("the second validation gives something else");
    }
}

} // namespace fuzz
