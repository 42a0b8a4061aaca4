#pragma once

#include <highfive/H5Easy.hpp>
#include <stdexcept>
#include <string>

namespace h5io {

/// Root group of the simulation results in a result file.
extern const std::string resultsGroup;

/// Root of the failures of this layer.
class Exception : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// "Opening the HDF5 file at '" + file name + "' failed."
class OpenFileFailed : public Exception {
public:
    explicit OpenFileFailed(const std::string& fileName);
};

/// "Writing the HDF5 dataset '" + dataset path + "' failed."
class WriteFailed : public Exception {
public:
    explicit WriteFailed(const std::string& datasetPath);
};

/// "Closing the HDF5 file at '" + file name + "' failed."
class CloseFileFailed : public Exception {
public:
    explicit CloseFileFailed(const std::string& fileName);
};

/// Keeps the HDF5 library from closing files on its own when the process ends.
///
/// A program calls this once, before any other use of the library, and closes its files itself. Without it
/// the library goes once more over a file that it failed to write, and crashes.
void leaveFilesAloneAtExit();

/// Opens a file with a mode of `H5Easy::File`; `H5Easy::File::Truncate` creates it and replaces one of that
/// name.
///
/// A file that another process holds open for writing is left as it is. The library prints nothing of its
/// own, here and in the functions below.
/// @throws OpenFileFailed whatever the reason.
[[nodiscard]] H5Easy::File openFile(const std::string& fileName, unsigned mode);

/// Writes a text as scalar string dataset, creates the groups on its path and flushes the file.
///
/// Where the file can no longer be flushed (a full disk), it is given up: `file` is closed as far as the
/// caller is concerned and must not be used again.
/// @throws WriteFailed whatever the reason.
void writeDataset(H5Easy::File& file, const std::string& path, const std::string& text);

/// Closes a file and tells whether all of it reached the disk, which the destructor cannot.
/// @throws CloseFileFailed the library could not write what it held back, or the file is closed already.
void closeFile(H5Easy::File& file);

} // namespace h5io
