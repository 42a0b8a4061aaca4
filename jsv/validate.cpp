#include "jsv/validate.hpp"

#include <cstddef>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <utility>

#include "compat/json_document.hpp"
#include "jsv/annotation_collection.hpp"
#include "jsv/location.hpp"
#include "jsv/walk.hpp"

namespace jsv {

/// A text that cannot be parsed, whatever the reason; callers catch it as std::runtime_error.
class CannotValidateException : public std::runtime_error {
public:
    CannotValidateException(const std::string& documentName, const std::string& reason)
        : std::runtime_error("Parsing the " + documentName + " file failed: " + reason) {}
};

namespace {

constexpr std::size_t readBlock = std::size_t{1} << 20U;

/// Bytes left in a stream that can tell; 0 for others.
std::size_t bytesLeft(std::istream& stream) {
    std::streambuf& buffer = *stream.rdbuf();
    const std::streamoff here = buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    const std::streamoff end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
    if (here < 0 || end < here) {
        return 0;
    }
    buffer.pubseekoff(here, std::ios_base::beg, std::ios_base::in);
    return static_cast<std::size_t>(end - here);
}

/// The rest of a stream; parsing from memory beats parsing from the stream.
std::string readAll(std::istream& stream, const std::string& documentName) {
    std::string text;
    std::size_t expected = bytesLeft(stream);
    do {
        const std::size_t size = text.size();
        const std::size_t block = expected > 0 ? expected : readBlock;
        text.resize(size + block);
        stream.read(&text[size], static_cast<std::streamsize>(block));
        text.resize(size + static_cast<std::size_t>(stream.gcount()));
        expected = 0;
    } while (stream.good() && stream.peek() != std::istream::traits_type::eof());
    if (stream.bad()) {
        throw CannotValidateException(documentName, "it cannot be read; check the file and its disk.");
    }
    return text;
}

/// A parsed text.
class Document {
public:
    explicit Document(nlohmann::json parsed) : document(std::move(parsed)) {}
    Document(const Document&) = delete;
    Document(Document&&) = delete;
    Document& operator=(const Document&) = delete;
    Document& operator=(Document&&) = delete;
    ~Document() { compat::release(document); }

    [[nodiscard]] const nlohmann::json& value() const { return document; }

private:
    nlohmann::json document;
};

nlohmann::json parse(std::istream& stream, const std::string& documentName) {
    const std::string text = readAll(stream, documentName);
    try {
        return nlohmann::json::parse(text);
    } catch (const nlohmann::json::exception& failure) {
        throw CannotValidateException(documentName, failure.what());
    }
}

int verdictOf(const AnnotationCollection& annotations) {
    if (annotations.count(Severity::Error) > 0) {
        return 2;
    }
    return annotations.count(Severity::Warning) > 0 ? 1 : 0;
}

} // namespace

int validate(ReportOutput output, std::istream& data, std::istream& schema) {
    const Document dataDocument(parse(data, "JSON data"));
    const Document schemaDocument(parse(schema, "JSON schema"));
    FilteredAnnotationCollection<IssueFilter> annotations;
    validateAt({dataDocument.value(), schemaDocument.value()}, Location(), Location(), annotations);
    if (output.stream != nullptr) {
        const std::string report = annotations.report();
        if (!report.empty()) {
            *output.stream << report << std::endl;
        }
    }
    return verdictOf(annotations);
}

} // namespace jsv
