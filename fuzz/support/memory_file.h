#pragma once

#include <string>
#include <string_view>

// A file that has a name while it exists and no place on a disk.
class MemoryFile {
public:
    MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile();

    // Makes the text the whole content.
    void write(std::string_view text);
    const std::string& path() const { return path_; }

private:
    int file_;
    std::string path_;
};

// The path of the one file of the process that holds each input in turn.
const std::string& input_file(std::string_view text);
