#include "tools/files/write_all.h"

#include <unistd.h>

#include <cerrno>

int write_all(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(file, content.data(), content.size());
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        content.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return 0;
}
