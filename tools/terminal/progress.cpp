#include "tools/terminal/progress.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

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

Progress::Progress(Stream& stream, std::size_t total)
    : stream_(stream), total_(total), begin_(std::chrono::steady_clock::now()) {
    if (stream.is_terminal()) {
        thread_ = std::thread([this] { run(); });
    }
}

Progress::~Progress() {
    erase();
    if (thread_.joinable()) {
        {
            const std::lock_guard lock(mutex_);
            has_ended_ = true;
        }
        ended_.notify_one();
        thread_.join();
    }
}

void Progress::run() {
    std::unique_lock lock(mutex_);
    auto next = begin_ + kPatience;
    while (!ended_.wait_until(lock, next, [this] { return has_ended_; })) {
        draw();
        next = std::chrono::steady_clock::now() + kInterval;
    }
}

void Progress::draw() {
    if (line_.empty()) {
        return;
    }
    // So much that the terminal does not break it.
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
