#pragma once

#include <cassert>
#include <cstdint>
#include <string>
#include <utility>

#include "kivo/toolkit/xml/internal/encoding.h"

// What tells files apart, whatever the spelling of their paths: device and inode.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

// An open file.
class KIVO_FILE {
public:
    KIVO_FILE() = default;
    KIVO_FILE(const KIVO_FILE&) = delete;
    KIVO_FILE& operator=(const KIVO_FILE&) = delete;
    virtual ~KIVO_FILE();

    // Opens a regular file for reading; false for everything else, without waiting for a pipe.
    bool open(const std::string& path);
    void close();
    // The whole content from the current position on; false when it cannot be read.
    bool read_all(TextBuffer& text);
    // After a failure of open(): whether something stands at the path all the same.
    bool is_there() const;
    // After a failure: what the system says of it ("Permission denied").
    std::string failure() const;
    // Of the open file.
    FileIdentity identity() const { return identity_; }

private:
    int descriptor_ = -1;
    int error_ = 0;  // the errno of the last failure
    std::size_t expected_size_ = 0;
    FileIdentity identity_;
};

// Where a parser reads its text from.
class KIVO_XML_SAX_INPUT_SOURCE {
public:
    virtual ~KIVO_XML_SAX_INPUT_SOURCE() = default;

    // Hands over the whole text. False when it cannot be read.
    virtual bool read_text(TextBuffer& text) = 0;

    bool is_open = false;
    std::string name;               // how parser messages call the source; may be empty
    std::uint32_t file_number = 0;  // in the marks of its elements
};

class KIVO_XML_FILE_INPUT_SOURCE : public KIVO_XML_SAX_INPUT_SOURCE {
public:
    // REQUIRES: new_file != nullptr; it stays the caller's
    explicit KIVO_XML_FILE_INPUT_SOURCE(KIVO_FILE* new_file) : file(new_file) {
        assert(file != nullptr);
    }

    // False when the file cannot be opened; is_open keeps the result.
    bool open_xml_file(const std::string& path);
    void close_xml_file();
    bool read_text(TextBuffer& text) override;

    KIVO_FILE* file;
};
