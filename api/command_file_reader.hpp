#pragma once

#include <string>
#include <vector>

namespace api {

/// Typed queries on a command file.
///
/// A path is a list of member names joined by "/". Elements of arrays are never named inside a path: they are
/// reached by the operations that take an index and the name of a member of that element.
///
/// A value counts as found when every step of its path exists and is not empty; null, an object without
/// members and an array without elements are empty. The operations that take `found` report whether the value
/// was found, write the line " -> path <PATH> not found." to `std::cerr` when it was not, and return the
/// absent value when it was not found or is of another kind than asked for: false, the smallest `int`, a
/// quiet NaN, an empty string, an empty vector, the size 0. The operations that take `fallback` are silent
/// and return a copy of it in these cases. A number of any kind is accepted as `double`
/// and, truncated toward zero, as `int`; a fraction beyond the range of `int` counts as a value of another
/// kind.
///
/// @throws std::exception (all queries) a path goes through a value that has no members; an index is
/// negative; an element of an array that is read as a vector is of the wrong kind.
class ICommandFileReader {
public:
    virtual ~ICommandFileReader() = default;

    /// Name of the file that the document was read from; empty when the source was JSON text itself.
    [[nodiscard]] virtual std::string getFileName() const = 0;
    /// The whole document as compact JSON text in UTF-8, members in sorted order.
    /// @throws std::exception a string of the document is not UTF-8.
    [[nodiscard]] virtual std::string dump() const = 0;
    /// Whether every path leads to a value that is not empty. An empty list of paths gives false.
    [[nodiscard]] virtual bool hasPaths(const std::vector<std::string>& paths) const = 0;
    /// The shown form of an indexed path: `path[index]/key`.
    [[nodiscard]] virtual std::string composePath(const std::string& path, const int& index,
                                                  const std::string& key) const = 0;
    /// The shown form of a double-indexed path: `path[index]/middle[index2]/key`.
    [[nodiscard]] virtual std::string composePath(const std::string& path, const int& index,
                                                  const std::string& middle, const int& index2,
                                                  const std::string& key) const = 0;
    /// Names of the members of the block at `path` that are blocks themselves, sorted; empty for a missing
    /// path.
    /// @throws std::exception the path goes through a value without members, or the node is an array that
    /// holds a block.
    [[nodiscard]] virtual std::vector<std::string> getSubBlockNames(const std::string& path) const = 0;

    /// A truth value.
    [[nodiscard]] virtual bool getBool(const std::string& path, bool& found) const = 0;
    [[nodiscard]] virtual bool getBool(const std::string& path, const bool& fallback) const = 0;

    /// A whole number.
    [[nodiscard]] virtual int getInt(const std::string& path, bool& found) const = 0;
    [[nodiscard]] virtual int getInt(const std::string& path, const int& fallback) const = 0;

    /// A list of whole numbers.
    [[nodiscard]] virtual std::vector<int> getIntVector(const std::string& path, bool& found) const = 0;
    [[nodiscard]] virtual std::vector<int> getIntVector(const std::string& path,
                                                        const std::vector<int>& fallback) const = 0;
    [[nodiscard]] virtual std::vector<int> getIntVector(const std::string& path, const int& index,
                                                        const std::string& key, bool& found) const = 0;

    /// A number.
    [[nodiscard]] virtual double getDouble(const std::string& path, bool& found) const = 0;
    [[nodiscard]] virtual double getDouble(const std::string& path, const double& fallback) const = 0;

    /// A list of numbers.
    [[nodiscard]] virtual std::vector<double> getDoubleVector(const std::string& path, bool& found) const = 0;
    [[nodiscard]] virtual std::vector<double> getDoubleVector(const std::string& path,
                                                              const std::vector<double>& fallback) const = 0;

    /// A text.
    [[nodiscard]] virtual std::string getString(const std::string& path, bool& found) const = 0;
    [[nodiscard]] virtual std::string getString(const std::string& path,
                                                const std::string& fallback) const = 0;

    /// A list of texts.
    [[nodiscard]] virtual std::vector<std::string> getStringVector(const std::string& path,
                                                                   bool& found) const = 0;
    [[nodiscard]] virtual std::vector<std::string> getStringVector(
        const std::string& path, const std::vector<std::string>& fallback) const = 0;

    /// The number of elements of an array; without `found`: silent, 0 when it is missing or no array.
    [[nodiscard]] virtual unsigned int getArraySize(const std::string& path, bool& found) const = 0;
    [[nodiscard]] virtual unsigned int getArraySize(const std::string& path) const = 0;
    [[nodiscard]] virtual unsigned int getArraySize(const std::string& path, const int& index,
                                                    const std::string& key, bool& found) const = 0;
    [[nodiscard]] virtual unsigned int getArraySize(const std::string& path, const int& index,
                                                    const std::string& key) const = 0;

    /// A whole number.
    [[nodiscard]] virtual int getInt(const std::string& path, const int& index, const std::string& key,
                                     bool& found) const = 0;
    [[nodiscard]] virtual int getInt(const std::string& path, const int& index, const std::string& key,
                                     const int& fallback) const = 0;

    /// A number.
    [[nodiscard]] virtual double getDouble(const std::string& path, const int& index, const std::string& key,
                                           bool& found) const = 0;
    [[nodiscard]] virtual double getDouble(const std::string& path, const int& index, const std::string& key,
                                           const double& fallback) const = 0;
    [[nodiscard]] virtual double getDouble(const std::string& path, const int& index,
                                           const std::string& middle, const int& index2,
                                           const std::string& key, bool& found) const = 0;
    [[nodiscard]] virtual double getDouble(const std::string& path, const int& index,
                                           const std::string& middle, const int& index2,
                                           const std::string& key, const double& fallback) const = 0;

    /// A text.
    [[nodiscard]] virtual std::string getString(const std::string& path, const int& index,
                                                const std::string& key, bool& found) const = 0;
    [[nodiscard]] virtual std::string getString(const std::string& path, const int& index,
                                                const std::string& key,
                                                const std::string& fallback) const = 0;
    [[nodiscard]] virtual std::string getString(const std::string& path, const int& index,
                                                const std::string& middle, const int& index2,
                                                const std::string& key, bool& found) const = 0;
    [[nodiscard]] virtual std::string getString(const std::string& path, const int& index,
                                                const std::string& middle, const int& index2,
                                                const std::string& key,
                                                const std::string& fallback) const = 0;

    /// A list of numbers.
    [[nodiscard]] virtual std::vector<double> getDoubleVector(const std::string& path, const int& index,
                                                              const std::string& key, bool& found) const = 0;
    [[nodiscard]] virtual std::vector<double> getDoubleVector(const std::string& path, const int& index,
                                                              const std::string& key,
                                                              const std::vector<double>& fallback) const = 0;

protected:
    ICommandFileReader() = default;
    ICommandFileReader(const ICommandFileReader&) = default;
    ICommandFileReader(ICommandFileReader&&) = default;
    ICommandFileReader& operator=(const ICommandFileReader&) = default;
    ICommandFileReader& operator=(ICommandFileReader&&) = default;
};

} // namespace api
