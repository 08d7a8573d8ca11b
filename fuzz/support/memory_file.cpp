#include "fuzz/support/memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include "fuzz/support/expect.h"

MemoryFile::MemoryFile()
    : file_(memfd_create("input", MFD_CLOEXEC)), path_("/proc/self/fd/" + std::to_string(file_)) {
    expect(file_ >= 0, "the system gives memory files");
}

MemoryFile::~MemoryFile() {
    close(file_);
}

void MemoryFile::write(std::string_view text) {
    const auto size = static_cast<ssize_t>(text.size());
    expect(ftruncate(file_, 0) == 0 && pwrite(file_, text.data(), text.size(), 0) == size,
           "a memory file takes the input");
}

const std::string& input_file(std::string_view text) {
    static MemoryFile file;
    file.write(text);
    return file.path();
}
