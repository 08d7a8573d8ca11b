#include "tools/files/standard_input.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

namespace {

bool write_all(int file, const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = write(file, data, size);
        if (written < 0 && errno != EINTR) {
            return false;
        }
        const std::size_t done = written < 0 ? 0 : static_cast<std::size_t>(written);
        data += done;
        size -= done;
    }
    return true;
}

// False, with errno, when reading or writing fails.
bool copy_all(int from, int to) {
    std::vector<char> buffer(64UL * 1024);
    while (true) {
        const ssize_t size = read(from, buffer.data(), buffer.size());
        if (size == 0) {
            return true;
        }
        if (size > 0 ? !write_all(to, buffer.data(), static_cast<std::size_t>(size))
                     : errno != EINTR) {
            return false;
        }
    }
}

}  // namespace

StandardInput::StandardInput() {
    // The file must not take the number of a standard input that is closed.
    const bool is_open = fcntl(STDIN_FILENO, F_GETFD) >= 0;
    file_ = is_open ? memfd_create("stdin", MFD_CLOEXEC) : -1;
    if (file_ < 0 || !copy_all(STDIN_FILENO, file_)) {
        failure_ = std::strerror(errno);
    }
}

StandardInput::~StandardInput() {
    if (file_ >= 0) {
        close(file_);
    }
}

std::string StandardInput::path() const {
    return "/proc/self/fd/" + std::to_string(file_);
}
