// Runs the program with a terminal for its error stream.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <string>

#include "tests/tools/program.h"

namespace {

constexpr std::chrono::milliseconds kLong(20000);

// A run that waits for its standard input until it is given.
class TerminalRun {
public:
    TerminalRun() {
        int terminal = -1;
        winsize size = {24, 40, 0, 0};
        std::array<int, 2> input{};
        if (openpty(&screen_, &terminal, nullptr, nullptr, &size) != 0 ||
            pipe2(input.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no terminal");
        }
        child_ = fork();
        if (child_ == 0) {
            // A shell that runs the tests in the background has it ignored.
            signal(SIGINT, SIG_DFL);
            dup2(input[0], STDIN_FILENO);
            dup2(terminal, STDERR_FILENO);
            execl(KIVO_PROGRAM, "kivo", "check", "--color", "never", "-", nullptr);
            _exit(127);
        }
        close(terminal);
        close(input[0]);
        input_ = input[1];
    }
    TerminalRun(const TerminalRun&) = delete;
    TerminalRun& operator=(const TerminalRun&) = delete;
    ~TerminalRun() {
        close(screen_);
        if (child_ > 0) {
            ended();
        }
    }

    void interrupt(int signal) const { EXPECT_EQ(kill(child_, signal), 0); }

    // Waits for the end of the run, and returns the state in which it ended.
    int ended() {
        int state = 0;
        waitpid(child_, &state, 0);
        child_ = -1;
        return state;
    }

    void give(const std::string& text) const {
        EXPECT_EQ(write(input_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(input_);
    }

    std::string shown_until_the_end() const { return shown_until({}); }

    // What is shown until that text is.
    std::string shown_until(const std::string& last) const {
        const auto end = std::chrono::steady_clock::now() + kLong;
        std::string text;
        while (last.empty() || text.find(last) == std::string::npos) {
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                end - std::chrono::steady_clock::now());
            pollfd waiting = {screen_, POLLIN, 0};
            std::array<char, 4096> buffer{};
            if (left.count() <= 0 || poll(&waiting, 1, static_cast<int>(left.count())) <= 0) {
                return text;
            }
            const ssize_t size = read(screen_, buffer.data(), buffer.size());
            if (size <= 0) {
                return text;
            }
            text.append(buffer.data(), static_cast<std::size_t>(size));
        }
        return text;
    }

private:
    int screen_ = -1;
    int input_ = -1;
    pid_t child_ = -1;
};

TEST(Progress, a_long_run_says_what_it_does_and_erases_that) {
    const TerminalRun run;
    const std::string line = "\rchecking 1 of 1: -";
    EXPECT_EQ(run.shown_until(line), line);
    run.give("<ROOT><ODD/></ROOT>");
    const std::string rest = run.shown_until_the_end();
    const std::string erasure = '\r' + std::string(18, ' ') + '\r';
    const std::size_t at = rest.find(erasure);
    ASSERT_NE(at, std::string::npos) << rest;
    EXPECT_EQ(rest.find("checking"), rest.substr(0, at).find("checking")) << rest;
    EXPECT_EQ(rest.find("<stdin>:1:7: error:", at), at + erasure.size()) << rest;
    EXPECT_NE(rest.find("1 file checked: 1 error in 1 file"), std::string::npos) << rest;
}

TEST(Progress, an_interrupted_run_leaves_no_line_behind) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        TerminalRun run;
        const std::string line = "\rchecking 1 of 1: -";
        EXPECT_EQ(run.shown_until(line), line);
        run.interrupt(signal);
        const std::string rest = run.shown_until_the_end();
        const std::string erasure = '\r' + std::string(18, ' ') + '\r';
        EXPECT_TRUE(rest.size() >= erasure.size() &&
                    rest.substr(rest.size() - erasure.size()) == erasure)
            << signal << ": " << rest;
        const int state = run.ended();
        EXPECT_TRUE(WIFSIGNALED(state) && WTERMSIG(state) == signal) << signal << ": " << state;
    }
}

TEST(Progress, a_short_run_says_nothing_of_itself) {
    const TerminalRun run;
    run.give("<ROOT/>");
    EXPECT_EQ(run.shown_until_the_end(), "1 file checked: no messages\r\n");
}

}  // namespace
