#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

#include "tools/terminal/terminal.h"

// Says on a terminal what a run is doing once it takes longer than a second; silent elsewhere.
class Progress {
public:
    Progress(Stream& stream, std::size_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    // What is being done from now on. Nobody else writes to the stream until it is erased.
    void show(std::size_t number, const std::string& name);
    void erase();

private:
    void run();
    void draw();

    Stream& stream_;
    const std::size_t total_;
    const std::chrono::steady_clock::time_point begin_;
    std::mutex mutex_;
    std::condition_variable ended_;
    bool has_ended_ = false;
    std::string line_;             // empty: somebody else writes
    std::size_t drawn_width_ = 0;  // of what stands on the terminal
    std::thread thread_;
};
