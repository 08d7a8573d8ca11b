#include "tools/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace {

std::string reason() {
    return std::strerror(errno);
}

bool write_all(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(file, content.data(), content.size());
        if (written < 0 && errno == EINTR) {
            continue;
        }
        if (written < 0) {
            return false;
        }
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Devices and pipes are written as they are: nothing may take their place.
bool is_special(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) &&
           !S_ISDIR(status.st_mode);
}

std::optional<std::string> write_special(const std::string& path, std::string_view content) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0) {
        return reason();
    }
    if (!write_all(file, content)) {
        std::string why = reason();
        ::close(file);
        return why;
    }
    return ::close(file) == 0 ? std::nullopt : std::optional(reason());
}

// The file behind a link, so that the link stays one.
std::string resolved(const std::string& path) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    return error ? path : target.string();
}

mode_t new_file_mode(const std::string& path) {
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0) {
        return status.st_mode & 07777;
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

// A new file beside the final one, which goes away unless it takes its place.
class Replacement {
public:
    explicit Replacement(const std::string& path)
        : path_(path), name_(path + ".XXXXXX"), file_(::mkostemp(name_.data(), O_CLOEXEC)) {}
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;
    ~Replacement() {
        if (file_ >= 0) {
            ::close(file_);
        }
        if (!is_in_place_ && is_made_) {
            ::unlink(name_.c_str());
        }
    }

    bool write(std::string_view content) {
        return is_made_ && ::fchmod(file_, new_file_mode(path_)) == 0 &&
               write_all(file_, content) && ::fsync(file_) == 0 && close();
    }

    bool move_into_place() {
        is_in_place_ = ::rename(name_.c_str(), path_.c_str()) == 0;
        return is_in_place_;
    }

private:
    bool close() {
        const int file = file_;
        file_ = -1;
        return ::close(file) == 0;
    }

    const std::string& path_;
    std::string name_;
    int file_;
    const bool is_made_ = file_ >= 0;
    bool is_in_place_ = false;
};

}  // namespace

std::optional<std::string> write_file(const std::string& path, std::string_view content) {
    if (is_special(path)) {
        return write_special(path, content);
    }
    const std::string target = resolved(path);
    Replacement replacement(target);
    if (!replacement.write(content) || !replacement.move_into_place()) {
        return reason();
    }
    return std::nullopt;
}
