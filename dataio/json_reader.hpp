#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "api/command_file_reader.hpp"

namespace dataio {

/// Command file in JSON, kept as a document in memory.
///
/// Queries never change the document and hand out copies of its values only. They walk it by reference, so
/// that a query costs as much as its path and its result, not as much as the document. Concurrent queries are
/// safe.
class JSONReader : public api::ICommandFileReader {
public:
    /// Takes `source` as JSON text; where it is none, as the name of a file with JSON text. A name that is
    /// JSON text itself, such as 42, is therefore never opened.
    /// @throws BaseException the file cannot be opened, after the line " -> input file <NAME> not found." on
    /// `std::cerr`.
    /// @throws std::runtime_error the document is nested more than 1000 levels deep, or the file cannot be
    /// read to its end.
    /// @throws nlohmann::json::exception the file is no JSON text: the library's exception and text.
    explicit JSONReader(const std::string& source);
    JSONReader(const JSONReader&) = delete;
    JSONReader(JSONReader&&) = delete;
    JSONReader& operator=(const JSONReader&) = delete;
    JSONReader& operator=(JSONReader&&) = delete;
    ~JSONReader() override;

    [[nodiscard]] std::string getFileName() const override;
    [[nodiscard]] std::string dump() const override;
    [[nodiscard]] bool hasPaths(const std::vector<std::string>& paths) const override;
    [[nodiscard]] std::string composePath(const std::string& path, const int& index,
                                          const std::string& key) const override;
    [[nodiscard]] std::string composePath(const std::string& path, const int& index,
                                          const std::string& middle, const int& index2,
                                          const std::string& key) const override;
    [[nodiscard]] std::vector<std::string> getSubBlockNames(const std::string& path) const override;
    [[nodiscard]] bool getBool(const std::string& path, bool& found) const override;
    [[nodiscard]] bool getBool(const std::string& path, const bool& fallback) const override;
    [[nodiscard]] int getInt(const std::string& path, bool& found) const override;
    [[nodiscard]] int getInt(const std::string& path, const int& fallback) const override;
    [[nodiscard]] std::vector<int> getIntVector(const std::string& path, bool& found) const override;
    [[nodiscard]] std::vector<int> getIntVector(const std::string& path,
                                                const std::vector<int>& fallback) const override;
    [[nodiscard]] std::vector<int> getIntVector(const std::string& path, const int& index,
                                                const std::string& key, bool& found) const override;
    [[nodiscard]] double getDouble(const std::string& path, bool& found) const override;
    [[nodiscard]] double getDouble(const std::string& path, const double& fallback) const override;
    [[nodiscard]] std::vector<double> getDoubleVector(const std::string& path, bool& found) const override;
    [[nodiscard]] std::vector<double> getDoubleVector(const std::string& path,
                                                      const std::vector<double>& fallback) const override;
    [[nodiscard]] std::string getString(const std::string& path, bool& found) const override;
    [[nodiscard]] std::string getString(const std::string& path, const std::string& fallback) const override;
    [[nodiscard]] std::vector<std::string> getStringVector(const std::string& path,
                                                           bool& found) const override;
    [[nodiscard]] std::vector<std::string> getStringVector(
        const std::string& path, const std::vector<std::string>& fallback) const override;
    [[nodiscard]] unsigned int getArraySize(const std::string& path, bool& found) const override;
    [[nodiscard]] unsigned int getArraySize(const std::string& path) const override;
    [[nodiscard]] unsigned int getArraySize(const std::string& path, const int& index, const std::string& key,
                                            bool& found) const override;
    [[nodiscard]] unsigned int getArraySize(const std::string& path, const int& index,
                                            const std::string& key) const override;
    [[nodiscard]] int getInt(const std::string& path, const int& index, const std::string& key,
                             bool& found) const override;
    [[nodiscard]] int getInt(const std::string& path, const int& index, const std::string& key,
                             const int& fallback) const override;
    [[nodiscard]] double getDouble(const std::string& path, const int& index, const std::string& key,
                                   bool& found) const override;
    [[nodiscard]] double getDouble(const std::string& path, const int& index, const std::string& key,
                                   const double& fallback) const override;
    [[nodiscard]] double getDouble(const std::string& path, const int& index, const std::string& middle,
                                   const int& index2, const std::string& key, bool& found) const override;
    [[nodiscard]] double getDouble(const std::string& path, const int& index, const std::string& middle,
                                   const int& index2, const std::string& key,
                                   const double& fallback) const override;
    [[nodiscard]] std::string getString(const std::string& path, const int& index, const std::string& key,
                                        bool& found) const override;
    [[nodiscard]] std::string getString(const std::string& path, const int& index, const std::string& key,
                                        const std::string& fallback) const override;
    [[nodiscard]] std::string getString(const std::string& path, const int& index, const std::string& middle,
                                        const int& index2, const std::string& key,
                                        bool& found) const override;
    [[nodiscard]] std::string getString(const std::string& path, const int& index, const std::string& middle,
                                        const int& index2, const std::string& key,
                                        const std::string& fallback) const override;
    [[nodiscard]] std::vector<double> getDoubleVector(const std::string& path, const int& index,
                                                      const std::string& key, bool& found) const override;
    [[nodiscard]] std::vector<double> getDoubleVector(const std::string& path, const int& index,
                                                      const std::string& key,
                                                      const std::vector<double>& fallback) const override;

private:
    using Json = nlohmann::json;

    void readFile(const std::string& name);

    /// The lookups return null where nothing is found.
    [[nodiscard]] const Json* find(const std::string& path) const;
    [[nodiscard]] const Json* find(const std::string& path, int index, const std::string& key) const;
    [[nodiscard]] const Json* find(const std::string& path, int index, const std::string& middle, int index2,
                                   const std::string& key) const;

    /// As `find`, telling the outcome and writing the not-found line.
    [[nodiscard]] const Json* findOrWarn(bool& found, const std::string& path) const;
    [[nodiscard]] const Json* findOrWarn(bool& found, const std::string& path, int index,
                                         const std::string& key) const;
    [[nodiscard]] const Json* findOrWarn(bool& found, const std::string& path, int index,
                                         const std::string& middle, int index2, const std::string& key) const;

    std::string fileName;
    Json document;
};

/// A new reader over a command file or JSON text; errors as the constructor of `JSONReader`.
[[nodiscard]] std::unique_ptr<api::ICommandFileReader> createCommandFileReader(const std::string& source);

} // namespace dataio
