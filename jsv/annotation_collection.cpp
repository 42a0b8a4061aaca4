#include "jsv/annotation_collection.hpp"

#include <algorithm>
#include <iterator>

namespace jsv {

void AnnotationCollection::add(Location location, Issue issue) {
    next = std::next(annotations.insert(next, Annotation{std::move(location), std::move(issue)}));
}

std::size_t AnnotationCollection::count(Severity severity) const {
    return static_cast<std::size_t>(std::count_if(
        begin(), end(), [severity](const Annotation& each) { return severityOf(each.issue) == severity; }));
}

std::string AnnotationCollection::report() const {
    std::string text;
    for (const Annotation& annotation : annotations) {
        const std::string line = reportLine(annotation);
        if (!line.empty()) {
            text += line;
            text += '\n';
        }
    }
    return text;
}

} // namespace jsv
