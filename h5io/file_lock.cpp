#include "h5io/file_lock.hpp"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

namespace h5io {

namespace {

/// A file descriptor, closed with the object; locks taken on it end with it.
class Descriptor {
public:
    explicit Descriptor(const std::string& fileName) : number(::open(fileName.c_str(), O_RDWR | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor(Descriptor&&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor() {
        if (isOpen()) {
            ::close(number);
        }
    }

    [[nodiscard]] bool isOpen() const { return number >= 0; }
    [[nodiscard]] bool canLock() const {
        return ::flock(number, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    }

private:
    int number;
};

} // namespace

bool isLockedByAnother(const std::string& fileName) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(fileName, ignored)) {
        return false;
    }
    const Descriptor file(fileName);
    return file.isOpen() && !file.canLock();
}

} // namespace h5io
