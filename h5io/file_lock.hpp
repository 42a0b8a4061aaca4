#pragma once

#include <string>

namespace h5io {

/// Whether another process holds the advisory lock that the HDF5 library takes on files that it has open for
/// writing.
///
/// Asked before a file is replaced: the library itself empties the file first and looks for the lock
/// afterwards. False for a file that is not there, is no regular file or cannot be opened.
[[nodiscard]] bool isLockedByAnother(const std::string& fileName);

} // namespace h5io
