#pragma once

#include <hdf5.h>

#include <stdexcept>
#include <string>

namespace bench {

/// An identifier or a status as it is.
/// @throws std::runtime_error the library has failed.
template <typename Result>
Result succeeded(Result result) {
    if (result < 0) {
        throw std::runtime_error("HDF5 failed");
    }
    return result;
}

/// Writes a result file with nothing but calls of the HDF5 library: one text, flushed and closed.
inline void writeBareFile(const std::string& fileName, const std::string& text) {
    const hid_t file = succeeded(H5Fcreate(fileName.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT));
    const hid_t type = succeeded(H5Tcopy(H5T_C_S1));
    succeeded(H5Tset_size(type, H5T_VARIABLE));
    succeeded(H5Tset_cset(type, H5T_CSET_UTF8));
    const hid_t space = succeeded(H5Screate(H5S_SCALAR));
    const hid_t links = succeeded(H5Pcreate(H5P_LINK_CREATE));
    succeeded(H5Pset_create_intermediate_group(links, 1));
    const hid_t dataset =
        succeeded(H5Dcreate2(file, ".config/model", type, space, links, H5P_DEFAULT, H5P_DEFAULT));
    const char* const content = text.c_str();
    succeeded(H5Dwrite(dataset, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, &content));
    succeeded(H5Dclose(dataset));
    succeeded(H5Pclose(links));
    succeeded(H5Sclose(space));
    succeeded(H5Tclose(type));
    succeeded(H5Fflush(file, H5F_SCOPE_GLOBAL));
    succeeded(H5Fclose(file));
}

} // namespace bench
