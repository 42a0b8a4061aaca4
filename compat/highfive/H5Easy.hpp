#pragma once

// Stand-in for the H5Easy layer of HighFive 2, for systems that do not package it: the names that h5io uses,
// with the same result on disk.

#include <hdf5.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>

namespace H5Easy {

namespace detail {

/// Owner of one HDF5 identifier.
class Handle {
public:
    using Closer = herr_t (*)(hid_t);

    /// @throws std::runtime_error `failure`, when the library gave no identifier.
    Handle(hid_t identifier, Closer close, const char* failure) : id(identifier), closer(close) {
        if (id < 0) {
            throw std::runtime_error(failure);
        }
    }
    Handle(Handle&& other) noexcept : id(std::exchange(other.id, H5I_INVALID_HID)), closer(other.closer) {}
    Handle& operator=(Handle&& other) noexcept {
        std::swap(id, other.id);
        std::swap(closer, other.closer);
        return *this;
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (id != H5I_INVALID_HID && H5Iis_valid(id) > 0) {
            closer(id);
        }
    }

    [[nodiscard]] hid_t get() const noexcept { return id; }

private:
    hid_t id;
    Closer closer;
};

inline void require(herr_t status, const char* failure) {
    if (status < 0) {
        throw std::runtime_error(failure);
    }
}

} // namespace detail

/// What `dump` does with a dataset that is there already; this layer only creates.
enum class DumpMode { Create = 0 };

/// An open HDF5 file, closed with the object.
class File {
public:
    /// Access modes, to be combined; with the values of the layer that this one stands in for.
    enum : unsigned {
        ReadOnly = 0x00U,
        ReadWrite = 0x01U,
        Truncate = 0x02U,
        Excl = 0x04U,
        Create = 0x10U,
        Overwrite = Truncate,
        OpenOrCreate = ReadWrite | Create
    };

    /// @throws std::runtime_error the file cannot be opened or created.
    explicit File(const std::string& name, unsigned mode = ReadOnly)
        : handle(open(name, mode), H5Fclose, "The HDF5 file cannot be opened.") {}

    [[nodiscard]] hid_t getId() const noexcept { return handle.get(); }

    /// @throws std::runtime_error the library failed to write what it held back.
    void flush() { detail::require(H5Fflush(getId(), H5F_SCOPE_GLOBAL), "The HDF5 file cannot be flushed."); }

private:
    static hid_t open(const std::string& name, unsigned mode) {
        if ((mode & Truncate) != 0) {
            return H5Fcreate(name.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT);
        }
        if ((mode & Excl) != 0) {
            return H5Fcreate(name.c_str(), H5F_ACC_EXCL, H5P_DEFAULT, H5P_DEFAULT);
        }
        const unsigned access = (mode & ReadWrite) != 0 ? H5F_ACC_RDWR : H5F_ACC_RDONLY;
        if ((mode & Create) == 0 || H5Fis_hdf5(name.c_str()) > 0) {
            return H5Fopen(name.c_str(), access, H5P_DEFAULT);
        }
        return H5Fcreate(name.c_str(), H5F_ACC_EXCL, H5P_DEFAULT, H5P_DEFAULT);
    }

    detail::Handle handle;
};

/// Writes a text as a scalar dataset of one variable-length, null-terminated UTF-8 string, creating the
/// groups on the way, and flushes the file.
/// @throws std::runtime_error the dataset exists already or cannot be written.
inline void dump(File& file, const std::string& path, const std::string& text,
                 DumpMode mode = DumpMode::Create) {
    static_cast<void>(mode);
    const detail::Handle type(H5Tcopy(H5T_C_S1), H5Tclose, "The string type cannot be created.");
    detail::require(H5Tset_size(type.get(), H5T_VARIABLE), "The string type cannot be made variable.");
    detail::require(H5Tset_cset(type.get(), H5T_CSET_UTF8), "The string type cannot be made UTF-8.");
    const detail::Handle space(H5Screate(H5S_SCALAR), H5Sclose, "The scalar space cannot be created.");
    const detail::Handle links(H5Pcreate(H5P_LINK_CREATE), H5Pclose,
                               "The link properties cannot be created.");
    detail::require(H5Pset_create_intermediate_group(links.get(), 1), "The link properties cannot be set.");
    const detail::Handle dataset(H5Dcreate2(file.getId(), path.c_str(), type.get(), space.get(), links.get(),
                                            H5P_DEFAULT, H5P_DEFAULT),
                                 H5Dclose, "The dataset cannot be created.");
    const detail::Handle transfer(H5Pcreate(H5P_DATASET_XFER), H5Pclose,
                                  "The transfer properties cannot be created.");
    // The library's own buffer is made to convert a megabyte of elements; here is one.
    constexpr std::size_t bufferSize = 4096;
    detail::require(H5Pset_buffer(transfer.get(), bufferSize, nullptr, nullptr),
                    "The transfer properties cannot be set.");
    const char* const content = text.c_str();
    detail::require(H5Dwrite(dataset.get(), type.get(), H5S_ALL, H5S_ALL, transfer.get(), &content),
                    "The dataset cannot be written.");
    file.flush();
}

} // namespace H5Easy
