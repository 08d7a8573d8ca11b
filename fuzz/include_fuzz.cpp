// Files that include each other in any way, themselves among them: a model of the order of loading
// tells every message.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "fuzz/support/byte_reader.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/memory_file.h"
#include "kivo/kivo.h"

namespace {

// So that the paths through the files stay few.
constexpr std::size_t kFiles = 5;
constexpr std::size_t kMostSections = 3;
constexpr std::size_t kMostIncludes = 3;

struct File {
    std::vector<std::string> sections;  // that are unknown, so that each gives its message
    std::vector<std::size_t> includes;  // kFiles for one that is not there
    std::vector<std::string> names;     // as the includes spell them
    bool is_broken = false;
    bool has_other_root = false;
};

std::vector<MemoryFile>& files() {
    static std::vector<MemoryFile> all(kFiles);
    return all;
}

// One file in one of its spellings.
std::string spelling(std::size_t file, std::size_t form) {
    if (file == kFiles) {
        return "no such file";
    }
    const std::string& path = files()[file].path();
    const std::string number = path.substr(path.rfind('/') + 1);
    switch (form) {
        case 0:
            return "/proc/self/fd//" + number;
        case 1:
            return "/dev/fd/" + number;
        default:
            return path;
    }
}

File read_file(ByteReader& bytes) {
    File file;
    const std::size_t kind = bytes.below(16);
    file.is_broken = kind == 15;
    file.has_other_root = kind == 14;
    const std::size_t sections = bytes.below(kMostSections + 1);
    for (std::size_t i = 0; i < sections; ++i) {
        file.sections.push_back("S" + std::to_string(bytes.below(8)));
    }
    const std::size_t includes = bytes.below(kMostIncludes + 1);
    for (std::size_t i = 0; i < includes; ++i) {
        file.includes.push_back(bytes.below(kFiles + 1));
        file.names.push_back(spelling(file.includes.back(), bytes.below(4)));
    }
    return file;
}

// Includes and sections stand in turn, in either form.
std::string text_of(const File& file) {
    std::string text = file.has_other_root ? "<OTHER>" : "<ROOT>";
    for (std::size_t i = 0; i < std::max(file.sections.size(), file.names.size()); ++i) {
        if (i < file.names.size()) {
            text += i % 2 == 0 ? "<INCLUDE FILE='" + file.names[i] + "'/>"
                               : "<INCLUDE><FILE> " + file.names[i] + "\n</FILE></INCLUDE>";
        }
        if (i < file.sections.size()) {
            text += "<" + file.sections[i] + "/>";
        }
    }
    return text + (file.is_broken ? "</BROKEN>" : file.has_other_root ? "</OTHER>" : "</ROOT>");
}

// What loading says, by the rules of includes alone: depth first, each file's sections before the
// files that it includes. What a parser says of a broken file is left out.
class Model {
public:
    explicit Model(const std::vector<File>& files) : files_(files) {}

    std::vector<std::string> load() {
        load(0, spelling(0, 3));
        return messages_;
    }

private:
    // Never deeper than there are files.
    void load(std::size_t number, const std::string& name) {
        if (number == kFiles) {
            messages_.push_back("XML source file " + name + " not found");
            return;
        }
        if (!chain_.insert(number).second) {
            messages_.push_back("XML source file " + name + " includes itself");
            return;
        }
        const File& file = files_[number];
        if (file.is_broken) {
            messages_.push_back("Invalid XML source file " + name);
        } else if (!file.has_other_root) {
            for (const std::string& section : file.sections) {
                messages_.push_back("Main element tag " + section +
                                    " is not a valid recognized tag");
            }
            for (std::size_t i = 0; i < file.includes.size(); ++i) {
                load(file.includes[i], file.names[i]);
            }
        }
        chain_.erase(number);
    }

    const std::vector<File>& files_;
    std::set<std::size_t> chain_;
    std::vector<std::string> messages_;
};

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ByteReader bytes(data, size);
    std::vector<File> described;
    for (MemoryFile& file : files()) {
        described.push_back(read_file(bytes));
        file.write(text_of(described.back()));
    }
    KIVO_INFO info;
    info.process_xml_file(spelling(0, 3));
    std::vector<std::string> messages;
    for (std::size_t i = 0; i < info.error_list.size(); ++i) {
        if (info.get_error_id(i) != "xml-syntax") {
            messages.push_back(info.error_list[i]);
        }
    }
    expect_same(joined(Model(described).load()), joined(messages),
                "files are loaded depth first, and none from within itself");
    return 0;
}
