#include "kivo/toolkit/xml/internal/input_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace {

// Stands for an errno where the file is no regular one.
constexpr int kNotRegular = -1;

// Reads up to "size" bytes, fewer only at the end of the file; -1 for an error.
ssize_t read_fully(int descriptor, char* to, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const ssize_t count = ::read(descriptor, to + done, size - done);
        if (count == 0) {
            break;
        }
        if (count < 0 && errno != EINTR) {
            return -1;
        }
        done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    return static_cast<ssize_t>(done);
}

}  // namespace

KIVO_FILE::~KIVO_FILE() {
    close();
}

bool KIVO_FILE::open(const std::string& path) {
    close();
    if (path.find('\0') != std::string::npos) {
        error_ = ENOENT;
        return false;
    }
    descriptor_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status {};
    if (descriptor_ < 0 || fstat(descriptor_, &status) != 0) {
        error_ = errno;
        close();
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        error_ = S_ISDIR(status.st_mode) ? EISDIR : kNotRegular;
        close();
        return false;
    }
    expected_size_ = static_cast<std::size_t>(status.st_size);
    identity_ = {status.st_dev, status.st_ino};
    return true;
}

void KIVO_FILE::close() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
}

bool KIVO_FILE::read_all(TextBuffer& text) {
    constexpr std::size_t kLeastGrowth = 65536;
    std::size_t done = 0;
    // A file may hold more than its size says: it grows, or the system makes it up while it is
    // read. So the buffer always has room for one byte more, and only a short read is the end.
    std::size_t room = expected_size_ + 1;
    TextBuffer whole;
    for (;;) {
        TextBuffer buffer = make_text_buffer(room);
        if (done > 0) {
            std::memcpy(buffer.data.get(), whole.data.get(), done);
        }
        whole = std::move(buffer);
        const ssize_t count = read_fully(descriptor_, whole.data.get() + done, room - done);
        if (count < 0) {
            error_ = errno;
            return false;
        }
        done += static_cast<std::size_t>(count);
        if (done < room) {
            break;
        }
        room = std::max(room * 2, kLeastGrowth);
    }
    whole.data[done] = '\0';
    whole.size = done;
    text = std::move(whole);
    return true;
}

bool KIVO_FILE::is_there() const {
    return error_ != ENOENT && error_ != ENOTDIR && error_ != ENAMETOOLONG;
}

std::string KIVO_FILE::failure() const {
    return error_ == kNotRegular ? "Not a regular file" : std::generic_category().message(error_);
}

bool KIVO_XML_FILE_INPUT_SOURCE::open_xml_file(const std::string& path) {
    is_open = file->open(path);
    return is_open;
}

void KIVO_XML_FILE_INPUT_SOURCE::close_xml_file() {
    file->close();
    is_open = false;
}

bool KIVO_XML_FILE_INPUT_SOURCE::read_text(TextBuffer& text) {
    return is_open && file->read_all(text);
}
