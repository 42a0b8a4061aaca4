#include "jsv/annotation.hpp"

#include "jsv/issue_text.hpp"

namespace jsv {

bool operator<(const Annotation& a, const Annotation& b) {
    const int order = a.location.text().compare(b.location.text());
    return order < 0 || (order == 0 && a.issue < b.issue);
}

std::string reportLine(const Annotation& annotation) {
    const std::string message = fullMessage(annotation.issue);
    return message.empty() ? message : annotation.location.shown() + ": " + message;
}

} // namespace jsv
