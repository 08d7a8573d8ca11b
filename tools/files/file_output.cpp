#include "tools/files/file_output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>

#include "tools/files/write_all.h"

namespace {

constexpr mode_t kPermissions = 07777;

// Some file systems report a full disk only when a file is closed.
int write_and_close(int file, std::string_view content) {
    const int failure = write_all(file, content);
    const int closing = close(file) == 0 ? 0 : errno;
    return failure != 0 ? failure : closing;
}

int write_device(const std::string& path, std::string_view content) {
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    return file < 0 ? errno : write_and_close(file, content);
}

// Where links lead; the path itself when nothing stands there.
std::string resolve(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr),
                                                           &std::free);
    if (real == nullptr && errno == ENOMEM) {
        throw std::bad_alloc();
    }
    return real ? real.get() : path;
}

mode_t mode_of_new_files() {
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

int replace_file(const std::string& path, mode_t mode, std::string_view content) {
    // The file's own name with an ending could be longer than a name may be.
    std::string temporary = path.substr(0, path.find_last_of('/') + 1) + ".kivo-XXXXXX";
    const int file = mkostemp(temporary.data(), O_CLOEXEC);
    if (file < 0) {
        return errno;
    }
    int failure = fchmod(file, mode) == 0 ? 0 : errno;
    const int writing = write_and_close(file, content);
    failure = failure != 0 ? failure : writing;
    if (failure == 0 && rename(temporary.c_str(), path.c_str()) != 0) {
        failure = errno;
    }
    if (failure != 0) {
        unlink(temporary.c_str());
    }
    return failure;
}

int put_file(const std::string& path, std::string_view content) {
    struct stat state = {};
    if (stat(path.c_str(), &state) != 0) {
        return errno == ENOENT ? replace_file(path, mode_of_new_files(), content) : errno;
    }
    if (S_ISDIR(state.st_mode)) {
        return EISDIR;
    }
    if (!S_ISREG(state.st_mode)) {
        return write_device(path, content);
    }
    // A new file could take the place of one that may not be written.
    if (access(path.c_str(), W_OK) != 0) {
        return errno;
    }
    return replace_file(path, state.st_mode & kPermissions, content);
}

}  // namespace

std::optional<std::string> write_file(const std::string& path, std::string_view content) {
    const int failure = put_file(resolve(path), content);
    if (failure != 0) {
        return std::strerror(failure);
    }
    return std::nullopt;
}

bool is_same_file(const std::string& left, const std::string& right) {
    std::error_code error;
    const std::filesystem::path real = std::filesystem::weakly_canonical(left, error);
    const bool is_same = !error && real == std::filesystem::weakly_canonical(right, error);
    return is_same && !error && !std::filesystem::is_other(real, error);
}
