#include "app/assertion.hpp"

#include <iostream>
#include <sstream>

#include "api/base_exception.hpp"
#include "app/version.hpp"

void assertThat(bool holds, const std::string& conditionText, const std::string& message,
                const SourceLine& place) {
    if (holds) {
        return;
    }
    std::ostringstream text;
    text << (message.empty() ? conditionText : message) << ", in file: " << place.file << " on line "
         << place.number << ", version " << orvante::versionTag();
    std::cerr << " -> " << text.str() << std::endl;
    throw BaseException();
}
