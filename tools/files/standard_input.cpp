#include "tools/files/standard_input.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

#include "tools/files/write_all.h"

namespace {

// Stands for an errno where there is more to read than is allowed.
constexpr int kTooLong = -1;

// The errno of the read or write that failed, kTooLong for more than "limit" bytes, 0 for none.
int copy_all(int from, int to, std::size_t limit) {
    std::vector<char> buffer(64UL * 1024);
    std::size_t room = limit;
    while (true) {
        const ssize_t size = read(from, buffer.data(), buffer.size());
        if (size == 0) {
            return 0;
        }
        if (size < 0 && errno != EINTR) {
            return errno;
        }
        const std::size_t got = size < 0 ? 0 : static_cast<std::size_t>(size);
        if (got > room) {
            return kTooLong;
        }
        room -= got;
        if (const int failure = write_all(to, {buffer.data(), got}); failure != 0) {
            return failure;
        }
    }
}

}  // namespace

StandardInput::StandardInput(std::size_t limit) {
    // The file must not take the number of a standard input that is closed.
    const bool is_open = fcntl(STDIN_FILENO, F_GETFD) >= 0;
    file_ = is_open ? memfd_create("stdin", MFD_CLOEXEC) : -1;
    const int failure = file_ < 0 ? errno : copy_all(STDIN_FILENO, file_, limit);
    if (failure == kTooLong) {
        failure_ = "it is longer than --input-limit allows";
    } else if (failure != 0) {
        failure_ = std::strerror(failure);
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
