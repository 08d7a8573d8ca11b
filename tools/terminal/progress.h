#pragma once

#include <chrono>
#include <csignal>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

#include "tools/terminal/terminal.h"

// Says on a terminal what a run is doing once it takes longer than a second; silent elsewhere. A
// signal that ends the program erases that first.
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
    bool wait(std::chrono::milliseconds time);
    void draw();

    Stream& stream_;
    const std::size_t total_;
    sigset_t signals_ = {};        // those that end the program, which go to the thread
    sigset_t previous_mask_ = {};  // of the thread that made this object
    int signal_file_ = -1;         // readable when one of them has come
    int end_file_ = -1;            // readable when the thread is to end
    std::mutex mutex_;
    std::string line_;             // empty: somebody else writes
    std::size_t drawn_width_ = 0;  // of what stands on the terminal
    std::thread thread_;
};
