#include "dataio/json_reader.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <type_traits>
#include <utility>

#include "api/base_exception.hpp"
#include "compat/json_document.hpp"
#include "dataio/json_text.hpp"

namespace dataio {

namespace {

using Json = nlohmann::json;

constexpr char pathSeparator = '/';

std::vector<std::string> splitPath(const std::string& path) {
    std::vector<std::string> keys;
    std::istringstream pieces(path);
    for (std::string key; std::getline(pieces, key, pathSeparator);) {
        keys.push_back(std::move(key));
    }
    return keys;
}

/// Member of a block; null when the block lacks it. A JSON null counts as a block without members.
/// @throws Json::type_error (305) the node has no members.
const Json* memberOf(const Json& node, const std::string& key) {
    if (node.is_null()) {
        return nullptr;
    }
    if (!node.is_object()) {
        return &node[key]; // throws: only objects have members
    }
    const auto member = node.find(key);
    return member == node.end() ? nullptr : &*member;
}

const Json* unlessEmpty(const Json* node) {
    return node == nullptr || node->empty() ? nullptr : node;
}

/// Member of an array's element; null when there is none or something on the way is empty.
/// @throws Json::out_of_range a negative index; Json::type_error the element has no members.
const Json* memberOfElement(const Json* node, int index, const std::string& key) {
    // The comparison is signed: a negative index is refused by `at`.
    if (node == nullptr || !node->is_array() || index >= static_cast<std::int64_t>(node->size())) {
        return nullptr;
    }
    const Json* element = unlessEmpty(&node->at(static_cast<std::size_t>(index)));
    return element == nullptr ? nullptr : unlessEmpty(memberOf(*element, key));
}

void warnNotFound(const std::string& path) {
    std::cerr << " -> path <" << path << "> not found." << std::endl;
}

template <typename Value>
bool holds(const Json& node) {
    if constexpr (std::is_same_v<Value, bool>) {
        return node.is_boolean();
    } else if constexpr (std::is_arithmetic_v<Value>) {
        return node.is_number();
    } else if constexpr (std::is_same_v<Value, std::string>) {
        return node.is_string();
    } else {
        return node.is_array();
    }
}

/// Whether the conversion of a number has a result: that of a fraction beyond the range of `int` has none.
bool fitsInt(const Json& node) {
    if (!node.is_number_float()) {
        return true;
    }
    const double truncated = std::trunc(node.get<double>());
    return truncated >= std::numeric_limits<int>::min() && truncated <= std::numeric_limits<int>::max();
}

template <typename Value>
bool converts(const Json& node) {
    if constexpr (std::is_same_v<Value, int>) {
        return fitsInt(node);
    } else if constexpr (std::is_same_v<Value, std::vector<int>>) {
        return std::all_of(node.begin(), node.end(), fitsInt);
    } else {
        return true;
    }
}

template <typename Value>
Value valueOr(const Json* node, const Value& fallback) {
    return node != nullptr && holds<Value>(*node) && converts<Value>(*node) ? node->get<Value>() : fallback;
}

template <typename Value>
Value absentValue() {
    if constexpr (std::is_same_v<Value, int>) {
        return std::numeric_limits<int>::min();
    } else if constexpr (std::is_same_v<Value, double>) {
        return std::numeric_limits<double>::quiet_NaN();
    } else {
        return Value();
    }
}

unsigned int sizeOf(const Json* node) {
    return node != nullptr && node->is_array() ? static_cast<unsigned int>(node->size()) : 0U;
}

} // namespace

JSONReader::JSONReader(const std::string& source) {
    requireModestNesting(source);
    try {
        document = Json::parse(source);
    } catch (...) {
        readFile(source);
    }
}

JSONReader::~JSONReader() {
    compat::release(document);
}

void JSONReader::readFile(const std::string& name) {
    fileName = name;
    std::ifstream file(name);
    std::error_code ignored;
    // Opening a directory as a stream succeeds on some systems.
    if (!file.good() || std::filesystem::is_directory(name, ignored)) {
        std::cerr << " -> input file <" << name << "> not found." << std::endl;
        throw BaseException();
    }
    const std::string text = readAll(file, name);
    requireModestNesting(text);
    document = Json::parse(text);
}

const JSONReader::Json* JSONReader::find(const std::string& path) const {
    const Json* node = &document;
    for (const std::string& key : splitPath(path)) {
        node = unlessEmpty(memberOf(*node, key));
        if (node == nullptr) {
            break;
        }
    }
    return node;
}

const JSONReader::Json* JSONReader::find(const std::string& path, int index, const std::string& key) const {
    return memberOfElement(find(path), index, key);
}

const JSONReader::Json* JSONReader::find(const std::string& path, int index, const std::string& middle,
                                         int index2, const std::string& key) const {
    return memberOfElement(find(path, index, middle), index2, key);
}

const JSONReader::Json* JSONReader::findOrWarn(bool& found, const std::string& path) const {
    const Json* node = find(path);
    found = node != nullptr;
    if (!found) {
        warnNotFound(path);
    }
    return node;
}

const JSONReader::Json* JSONReader::findOrWarn(bool& found, const std::string& path, int index,
                                               const std::string& key) const {
    const Json* node = find(path, index, key);
    found = node != nullptr;
    if (!found) {
        warnNotFound(composePath(path, index, key));
    }
    return node;
}

const JSONReader::Json* JSONReader::findOrWarn(bool& found, const std::string& path, int index,
                                               const std::string& middle, int index2,
                                               const std::string& key) const {
    const Json* node = find(path, index, middle, index2, key);
    found = node != nullptr;
    if (!found) {
        warnNotFound(composePath(path, index, middle, index2, key));
    }
    return node;
}

std::string JSONReader::getFileName() const {
    return fileName;
}

std::string JSONReader::dump() const {
    return document.dump();
}

bool JSONReader::hasPaths(const std::vector<std::string>& paths) const {
    for (const std::string& path : paths) {
        if (find(path) == nullptr) {
            return false;
        }
    }
    return !paths.empty();
}

std::string JSONReader::composePath(const std::string& path, const int& index, const std::string& key) const {
    return path + "[" + std::to_string(index) + "]" + pathSeparator + key;
}

std::string JSONReader::composePath(const std::string& path, const int& index, const std::string& middle,
                                    const int& index2, const std::string& key) const {
    return path + "[" + std::to_string(index) + "]" + pathSeparator + middle + "[" + std::to_string(index2) +
           "]" + pathSeparator + key;
}

std::vector<std::string> JSONReader::getSubBlockNames(const std::string& path) const {
    const Json* node = &document;
    for (const std::string& key : splitPath(path)) {
        node = memberOf(*node, key);
        if (node == nullptr) {
            return {};
        }
    }
    std::vector<std::string> names;
    for (auto member = node->begin(); member != node->end(); ++member) {
        if (member->is_object()) {
            names.push_back(member.key());
        }
    }
    return names;
}

bool JSONReader::getBool(const std::string& path, bool& found) const {
    return valueOr(findOrWarn(found, path), absentValue<bool>());
}

bool JSONReader::getBool(const std::string& path, const bool& fallback) const {
    return valueOr(find(path), fallback);
}

int JSONReader::getInt(const std::string& path, bool& found) const {
    return valueOr(findOrWarn(found, path), absentValue<int>());
}

int JSONReader::getInt(const std::string& path, const int& fallback) const {
    return valueOr(find(path), fallback);
}

std::vector<int> JSONReader::getIntVector(const std::string& path, bool& found) const {
    return valueOr(findOrWarn(found, path), absentValue<std::vector<int>>());
}

std::vector<int> JSONReader::getIntVector(const std::string& path, const std::vector<int>& fallback) const {
    return valueOr(find(path), fallback);
}

std::vector<int> JSONReader::getIntVector(const std::string& path, const int& index, const std::string& key,
                                          bool& found) const {
    return valueOr(findOrWarn(found, path, index, key), absentValue<std::vector<int>>());
}

double JSONReader::getDouble(const std::string& path, bool& found) const {
    return valueOr(findOrWarn(found, path), absentValue<double>());
}

double JSONReader::getDouble(const std::string& path, const double& fallback) const {
    return valueOr(find(path), fallback);
}

std::vector<double> JSONReader::getDoubleVector(const std::string& path, bool& found) const {
    return valueOr(findOrWarn(found, path), absentValue<std::vector<double>>());
}

std::vector<double> JSONReader::getDoubleVector(const std::string& path,
                                                const std::vector<double>& fallback) const {
    return valueOr(find(path), fallback);
}

std::string JSONReader::getString(const std::string& path, bool& found) const {
    return valueOr(findOrWarn(found, path), absentValue<std::string>());
}

std::string JSONReader::getString(const std::string& path, const std::string& fallback) const {
    return valueOr(find(path), fallback);
}

std::vector<std::string> JSONReader::getStringVector(const std::string& path, bool& found) const {
    return valueOr(findOrWarn(found, path), absentValue<std::vector<std::string>>());
}

std::vector<std::string> JSONReader::getStringVector(const std::string& path,
                                                     const std::vector<std::string>& fallback) const {
    return valueOr(find(path), fallback);
}

unsigned int JSONReader::getArraySize(const std::string& path, bool& found) const {
    return sizeOf(findOrWarn(found, path));
}

unsigned int JSONReader::getArraySize(const std::string& path) const {
    return sizeOf(find(path));
}

unsigned int JSONReader::getArraySize(const std::string& path, const int& index, const std::string& key,
                                      bool& found) const {
    return sizeOf(findOrWarn(found, path, index, key));
}

unsigned int JSONReader::getArraySize(const std::string& path, const int& index,
                                      const std::string& key) const {
    return sizeOf(find(path, index, key));
}

int JSONReader::getInt(const std::string& path, const int& index, const std::string& key, bool& found) const {
    return valueOr(findOrWarn(found, path, index, key), absentValue<int>());
}

int JSONReader::getInt(const std::string& path, const int& index, const std::string& key,
                       const int& fallback) const {
    return valueOr(find(path, index, key), fallback);
}

double JSONReader::getDouble(const std::string& path, const int& index, const std::string& key,
                             bool& found) const {
    return valueOr(findOrWarn(found, path, index, key), absentValue<double>());
}

double JSONReader::getDouble(const std::string& path, const int& index, const std::string& key,
                             const double& fallback) const {
    return valueOr(find(path, index, key), fallback);
}

double JSONReader::getDouble(const std::string& path, const int& index, const std::string& middle,
                             const int& index2, const std::string& key, bool& found) const {
    return valueOr(findOrWarn(found, path, index, middle, index2, key), absentValue<double>());
}

double JSONReader::getDouble(const std::string& path, const int& index, const std::string& middle,
                             const int& index2, const std::string& key, const double& fallback) const {
    return valueOr(find(path, index, middle, index2, key), fallback);
}

std::string JSONReader::getString(const std::string& path, const int& index, const std::string& key,
                                  bool& found) const {
    return valueOr(findOrWarn(found, path, index, key), absentValue<std::string>());
}

std::string JSONReader::getString(const std::string& path, const int& index, const std::string& key,
                                  const std::string& fallback) const {
    return valueOr(find(path, index, key), fallback);
}

std::string JSONReader::getString(const std::string& path, const int& index, const std::string& middle,
                                  const int& index2, const std::string& key, bool& found) const {
    return valueOr(findOrWarn(found, path, index, middle, index2, key), absentValue<std::string>());
}

std::string JSONReader::getString(const std::string& path, const int& index, const std::string& middle,
                                  const int& index2, const std::string& key,
                                  const std::string& fallback) const {
    return valueOr(find(path, index, middle, index2, key), fallback);
}

std::vector<double> JSONReader::getDoubleVector(const std::string& path, const int& index,
                                                const std::string& key, bool& found) const {
    return valueOr(findOrWarn(found, path, index, key), absentValue<std::vector<double>>());
}

std::vector<double> JSONReader::getDoubleVector(const std::string& path, const int& index,
                                                const std::string& key,
                                                const std::vector<double>& fallback) const {
    return valueOr(find(path, index, key), fallback);
}

std::unique_ptr<api::ICommandFileReader> createCommandFileReader(const std::string& source) {
    return std::make_unique<JSONReader>(source);
}

} // namespace dataio
