#include "h5io/result_file.hpp"

#include <cstddef>
#include <utility>
#include <vector>

#include "h5io/file_lock.hpp"

namespace h5io {

const std::string resultsGroup = "/RESULTS/";

OpenFileFailed::OpenFileFailed(const std::string& fileName)
    : Exception("Opening the HDF5 file at '" + fileName + "' failed.") {}

WriteFailed::WriteFailed(const std::string& datasetPath)
    : Exception("Writing the HDF5 dataset '" + datasetPath + "' failed.") {}

CloseFileFailed::CloseFileFailed(const std::string& fileName)
    : Exception("Closing the HDF5 file at '" + fileName + "' failed.") {}

namespace {

/// Switches the library's printing of its error stack off for the life of the object.
class ErrorPrintingOff {
public:
    ErrorPrintingOff() {
        H5Eget_auto2(H5E_DEFAULT, &print, &clientData);
        H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
    }
    ErrorPrintingOff(const ErrorPrintingOff&) = delete;
    ErrorPrintingOff(ErrorPrintingOff&&) = delete;
    ErrorPrintingOff& operator=(const ErrorPrintingOff&) = delete;
    ErrorPrintingOff& operator=(ErrorPrintingOff&&) = delete;
    ~ErrorPrintingOff() { H5Eset_auto2(H5E_DEFAULT, print, clientData); }

private:
    H5E_auto2_t print = nullptr;
    void* clientData = nullptr;
};

std::string nameOf(const H5Easy::File& file) {
    const ssize_t length = H5Fget_name(file.getId(), nullptr, 0);
    if (length <= 0) {
        return {};
    }
    std::vector<char> name(static_cast<std::size_t>(length) + 1);
    H5Fget_name(file.getId(), name.data(), name.size());
    return {name.data(), static_cast<std::size_t>(length)};
}

/// Takes a file out of use without closing it: after a failed flush the library crashes when it goes over the
/// file again. It stays open, reachable and untouched until the process ends.
void giveUp(H5Easy::File& file) {
    static auto& givenUp = *new std::vector<H5Easy::File>();
    givenUp.push_back(std::move(file));
}

} // namespace

void leaveFilesAloneAtExit() {
    H5dont_atexit();
}

H5Easy::File openFile(const std::string& fileName, unsigned mode) {
    const ErrorPrintingOff quiet;
    if ((mode & H5Easy::File::Truncate) != 0 && isLockedByAnother(fileName)) {
        throw OpenFileFailed(fileName);
    }
    try {
        return H5Easy::File(fileName, mode);
    } catch (...) {
        throw OpenFileFailed(fileName);
    }
}

void writeDataset(H5Easy::File& file, const std::string& path, const std::string& text) {
    const ErrorPrintingOff quiet;
    try {
        H5Easy::dump(file, path, text);
    } catch (...) {
        if (H5Fflush(file.getId(), H5F_SCOPE_GLOBAL) < 0) {
            giveUp(file);
        }
        throw WriteFailed(path);
    }
}

void closeFile(H5Easy::File& file) {
    const ErrorPrintingOff quiet;
    const std::string fileName = nameOf(file);
    if (H5Fclose(file.getId()) < 0) {
        giveUp(file);
        throw CloseFileFailed(fileName);
    }
}

} // namespace h5io
