// Loaded into the program before the C library, it refuses memory and breaks reading, as the
// environment says. It takes no memory itself.
//
//   KIVO_FAULT_MEMORY=once:N, all:N   refuse the allocation after N others, or all from then on
//   KIVO_FAULT_READ=error:N, end:N    files come in pieces; the read after N others fails or ends
//                                     the file
//   KIVO_FAULT_READ=interrupt:N       each read is interrupted before it gives a piece
//   KIVO_FAULT_READ=pieces:N          files come in pieces of N bytes
//   KIVO_FAULT_DESCRIPTORS=free:N     N descriptors beside the standard streams
//   KIVO_FAULT_LOG=FILE               gets a word as soon as an allocation is refused or a read is
//                                     broken; else, when the program exits, how many allocations
//                                     there were

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
}

namespace {

struct Fault {
    std::string_view kind;  // empty: none
    std::size_t number = 0;
};

constexpr std::size_t kPiece = 64;

Fault memory_fault;
Fault read_fault;
const char* log_path = nullptr;
std::atomic<bool> is_active = false;
std::atomic<std::size_t> allocations = 0;
std::atomic<std::size_t> reads = 0;
std::atomic<bool> is_interrupted = false;

Fault fault_of(const char* variable) {
    const char* const text = std::getenv(variable);
    Fault fault;
    if (text != nullptr) {
        const std::string_view whole = text;
        const std::size_t colon = whole.find(':');
        fault.kind = whole.substr(0, colon);
        if (colon != std::string_view::npos) {
            std::from_chars(whole.data() + colon + 1, whole.data() + whole.size(), fault.number);
        }
    }
    return fault;
}

void log(std::string_view text) {
    const int file =
        log_path == nullptr ? -1 : open(log_path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file >= 0) {
        [[maybe_unused]] const ssize_t written = write(file, text.data(), text.size());
        close(file);
    }
}

bool refuses() {
    if (!is_active) {
        return false;
    }
    const std::size_t number = allocations++;
    if (memory_fault.kind.empty() || number < memory_fault.number) {
        return false;
    }
    if (number == memory_fault.number) {
        log("refused");
    }
    return number == memory_fault.number || memory_fault.kind == "all";
}

bool is_file(int descriptor) {
    struct stat state = {};
    return fstat(descriptor, &state) == 0 && S_ISREG(state.st_mode);
}

// After the C library and all others are ready, before the program's own tables.
__attribute__((constructor)) void begin() {
    memory_fault = fault_of("KIVO_FAULT_MEMORY");
    read_fault = fault_of("KIVO_FAULT_READ");
    log_path = std::getenv("KIVO_FAULT_LOG");
    if (const Fault fault = fault_of("KIVO_FAULT_DESCRIPTORS"); !fault.kind.empty()) {
        // Whoever started the program may have left some open.
        close_range(STDERR_FILENO + 1, ~0U, 0);
        rlimit limit = {};
        getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = STDERR_FILENO + 1 + fault.number;
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    is_active = true;
}

__attribute__((destructor)) void end() {
    is_active = false;
    if (memory_fault.kind.empty() && read_fault.kind.empty()) {
        char digits[24];
        const auto end = std::to_chars(digits, digits + sizeof digits, allocations.load()).ptr;
        log({digits, static_cast<std::size_t>(end - digits)});
    }
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
    if (refuses()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    if (refuses()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size) {
    if (refuses()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_realloc(memory, size);
}

ssize_t read(int descriptor, void* to, std::size_t size) {
    if (!is_active || read_fault.kind.empty() || !is_file(descriptor)) {
        return syscall(SYS_read, descriptor, to, size);
    }
    const std::size_t number = reads++;
    if (number == 0) {
        log("broken");
    }
    if (read_fault.kind == "interrupt") {
        is_interrupted = !is_interrupted;
        if (is_interrupted) {
            errno = EINTR;
            return -1;
        }
    } else if (read_fault.kind != "pieces" && number >= read_fault.number) {
        errno = EIO;
        return read_fault.kind == "error" ? -1 : 0;
    }
    const std::size_t piece = read_fault.kind == "pieces" ? read_fault.number : kPiece;
    return syscall(SYS_read, descriptor, to, std::min(size, piece));
}

}  // extern "C"
