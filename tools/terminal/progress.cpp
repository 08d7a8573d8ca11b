#include "tools/terminal/progress.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>

#include "tools/text/text_escape.h"
#include "tools/text/text_width.h"

namespace {

constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kInterval(200);

std::size_t terminal_width() {
    winsize size = {};
    const bool is_known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return is_known ? size.ws_col : 80;
}

}  // namespace

Progress::Progress(Stream& stream, std::size_t total) : stream_(stream), total_(total) {
    if (!stream.is_terminal()) {
        return;
    }
    sigemptyset(&signals_);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) {
        sigaddset(&signals_, signal);
    }
    signal_file_ = signalfd(-1, &signals_, SFD_CLOEXEC);
    end_file_ = eventfd(0, EFD_CLOEXEC);
    if (signal_file_ < 0 || end_file_ < 0) {
        return;
    }
    pthread_sigmask(SIG_BLOCK, &signals_, &previous_mask_);
    thread_ = std::thread([this] { run(); });
}

Progress::~Progress() {
    erase();
    if (thread_.joinable()) {
        eventfd_write(end_file_, 1);
        thread_.join();
        pthread_sigmask(SIG_SETMASK, &previous_mask_, nullptr);
    }
    for (const int file : {signal_file_, end_file_}) {
        if (file >= 0) {
            close(file);
        }
    }
}

// False when the thread is to end. Does not return when a signal ends the program.
bool Progress::wait(std::chrono::milliseconds time) {
    std::array<pollfd, 2> files = {{{end_file_, POLLIN, 0}, {signal_file_, POLLIN, 0}}};
    poll(files.data(), files.size(), static_cast<int>(time.count()));
    signalfd_siginfo told = {};
    if (files[1].revents != 0 && read(signal_file_, &told, sizeof told) == sizeof told) {
        erase();
        pthread_sigmask(SIG_UNBLOCK, &signals_, nullptr);
        raise(static_cast<int>(told.ssi_signo));
    }
    return files[0].revents == 0;
}

void Progress::run() {
    for (auto time = kPatience; wait(time); time = kInterval) {
        const std::lock_guard lock(mutex_);
        draw();
    }
}

void Progress::draw() {
    if (line_.empty()) {
        return;
    }
    // A line that fills the terminal would be broken.
    const std::string line(start_within(line_, terminal_width() - 1));
    const std::size_t width = text_width(line);
    const std::size_t surplus = drawn_width_ > width ? drawn_width_ - width : 0;
    stream_.write('\r' + line + std::string(surplus, ' '));
    stream_.flush();
    drawn_width_ = width;
}

void Progress::show(std::size_t number, const std::string& name) {
    const std::lock_guard lock(mutex_);
    line_ = fmt::format("checking {} of {}: {}", number, total_, escape_text(name));
}

void Progress::erase() {
    const std::lock_guard lock(mutex_);
    line_.clear();
    if (drawn_width_ > 0) {
        stream_.write('\r' + std::string(drawn_width_, ' ') + '\r');
        stream_.flush();
        drawn_width_ = 0;
    }
}
