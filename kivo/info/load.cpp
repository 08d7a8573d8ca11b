#include <set>
#include <utility>
#include <vector>

#include "kivo/info/internal/include.h"
#include "kivo/info/internal/reader.h"
#include "kivo/objects/info.h"
#include "kivo/objects/internal/loaded.h"
#include "kivo/toolkit/files.h"
#include "kivo/toolkit/records/internal/record_pool.h"
#include "kivo/toolkit/strings.h"
#include "kivo/toolkit/xml/internal/input_source.h"
#include "kivo/toolkit/xml/internal/xml_parser.h"

namespace {

// Hands the lines of a file over when it is read, and also when an exception ends the reading: what
// was read until then has its places.
class LinesKeeper {
public:
    LinesKeeper(KIVO_XML_SAX_PARSER& parser, std::vector<KIVO_LOADED::File>& files,
                std::size_t file)
        : parser_(parser), files_(files), file_(file) {}
    LinesKeeper(const LinesKeeper&) = delete;
    LinesKeeper& operator=(const LinesKeeper&) = delete;
    ~LinesKeeper() { files_[file_].lines = parser_.take_line_table(); }

private:
    KIVO_XML_SAX_PARSER& parser_;
    std::vector<KIVO_LOADED::File>& files_;
    std::size_t file_;
};

}  // namespace

// Loads one file and everything that it includes. The files being loaded form a chain that is kept
// here and not on the stack: a host may call from a thread with a small one.
class FileLoader {
public:
    explicit FileLoader(KIVO_INFO& info) : info_(info) {}

    void load(const std::string& file_name);

private:
    // A file that was read, while its includes are loaded.
    struct Link {
        FileIdentity identity;
        std::vector<KIVO_INCLUDE> includes;
        std::size_t next_include = 0;
        std::uint32_t file_number = 0;
        // Posted after those of the includes.
        std::vector<KIVO_XML_SAX_ERROR_HANDLER::Message> parser_messages;
        std::string reason;  // why the text could not be read; empty when it was
    };

    using SectionReader = void (KIVO_INFO::*)(KIVO_XML_ELEMENT&);
    struct SectionRow {
        std::string_view word;
        SectionReader reader;  // null for INCLUDE: its reader works on the list of the file at hand
    };
    // Not of unknown bound, which clang does not take as the argument of a template.
    static constexpr std::size_t kSectionCount = 15;
    static const SectionRow kSections[kSectionCount];
    // The files that one load reads, each as often as it is included. A few files that each include
    // the next one twice would be read more often than any machine can.
    static constexpr std::size_t kMostFiles = 100000;

    void read_file(const KIVO_INCLUDE& file);
    // Where a file is that does not exist as it is named; empty when it is nowhere.
    std::string found_elsewhere(const std::string& name) const;
    // False, with a message, when the file is not there or not to be had.
    bool open(KIVO_XML_FILE_INPUT_SOURCE& source, const KIVO_INCLUDE& named);
    void parse_and_read(KIVO_XML_FILE_INPUT_SOURCE& source, const KIVO_INCLUDE& named, Link& link);
    void read_sections(KIVO_XML_ELEMENT& root, Link& link);
    void read_section(const KIVO_XML_ELEMENT& root, KIVO_XML_ELEMENT& section, Link& link);
    void post_parser_messages(const Link& link);
    KIVO_MARK number_file(const std::string& path);

    KIVO_INFO& info_;
    RecordPool records_;
    std::vector<Link> chain_;
    std::set<FileIdentity> in_chain_;
    std::size_t files_read_ = 0;
    bool is_over_ = false;  // nothing more is included
};

// clang-format off
constexpr FileLoader::SectionRow FileLoader::kSections[] = {
    { "CUSTOM_VECTORS",       &KIVO_INFO::process_vector_stimulus   },
    { "FUNCTION_INFORMATION", &KIVO_INFO::process_function_info     },
    { "HIDDEN_PARAMETERS",    &KIVO_INFO::process_hidden_parameters },
    { "HTML_TEXT",            &KIVO_INFO::process_html_text         },
    { "INCLUDE",              nullptr                               },
    { "MACROS",               &KIVO_INFO::process_macros            },
    { "MESSAGES",             &KIVO_INFO::process_messages          },
    { "MSGS",                 &KIVO_INFO::process_messages          },
    { "PARAMETERS",           &KIVO_INFO::process_parameters        },
    { "PARAMETER_RULES",      &KIVO_INFO::process_parameters        },
    { "PORTS",                &KIVO_INFO::process_ports             },
    { "PORT_RULES",           &KIVO_INFO::process_ports             },
    { "RULES",                &KIVO_INFO::process_rules             },
    { "WAVE_DATA",            &KIVO_INFO::process_vector_stimulus   },
    { "WIZARD_DATA",          &KIVO_INFO::process_wizard_map        },
};
// clang-format on

namespace {

// clang-format off
constexpr MessageText kFileNotFound = {
    MessageId::kFileNotFound,
    "XML source file {word} not found"};
// The text of a file that is not there: hosts match on it. The id tells the two apart, and so with
// the text of a file that is no XML.
constexpr MessageText kFileNotOpened = {
    MessageId::kFileNotOpened,
    kFileNotFound.text};
constexpr MessageText kIncludeCycle = {
    MessageId::kIncludeCycle,
    "XML source file {word} includes itself"};
constexpr MessageText kInvalidFile = {
    MessageId::kInvalidFile,
    "Invalid XML source file {word}"};
constexpr MessageText kFileNotRead = {
    MessageId::kFileNotRead,
    kInvalidFile.text};
constexpr MessageText kReadError = {
    MessageId::kReadError,
    "{detail}"};
constexpr MessageText kTooManyFiles = {
    MessageId::kTooManyFiles,
    "XML source file {word} not read, too many files are included"};
constexpr MessageText kNoRoot = {
    MessageId::kNoRoot,
    "Root tag in XML rules file should be ROOT"};
constexpr MessageText kUnknownSection = {
    MessageId::kUnknownSection,
    "Main element tag {word} is not a valid recognized tag"};
constexpr MessageText kParserFinding = {
    MessageId::kParserFinding,
    "{detail}"};
// clang-format on

// About a file that is not read and, when it is included, the element that names it.
KIVO_MESSAGE about_file(const MessageText& says, const KIVO_INCLUDE& file, KIVO_MARK mark) {
    return {.says = says,
            .mark = mark,
            .element = file.element,
            .attribute = file.attribute,
            .word = file.file_name};
}

}  // namespace

void FileLoader::load(const std::string& file_name) {
    read_file({file_name, {}});
    while (!chain_.empty()) {
        Link& last = chain_.back();
        if (!is_over_ && last.next_include < last.includes.size()) {
            read_file(KIVO_INCLUDE(last.includes[last.next_include++]));
            continue;
        }
        post_parser_messages(last);
        in_chain_.erase(last.identity);
        chain_.pop_back();
    }
}

KIVO_MARK FileLoader::number_file(const std::string& path) {
    std::vector<KIVO_LOADED::File>& files = info_.loaded_->files;
    files.push_back({path, {}});
    return {static_cast<std::uint32_t>(files.size()), KIVO_LOADED::kWholeFile};
}

std::string FileLoader::found_elsewhere(const std::string& name) const {
    const bool is_absolute = !name.empty() && name.front() == '/';
    for (const std::string& directory : info_.loaded_->include_directories) {
        if (!is_absolute && dro_file_exists(directory + name)) {
            return directory + name;
        }
    }
    const std::string beside_library = dro_get_library_module_path() + name;
    return dro_file_exists(beside_library) ? beside_library : std::string();
}

bool FileLoader::open(KIVO_XML_FILE_INPUT_SOURCE& source, const KIVO_INCLUDE& named) {
    source.name = named.file_name;
    if (!source.open_xml_file(source.name) && !dro_file_exists(source.name)) {
        if (const std::string found = found_elsewhere(named.file_name); !found.empty()) {
            source.name = found;
            source.open_xml_file(source.name);
        }
    }
    if (source.is_open) {
        return true;
    }
    const bool is_there = source.file->is_there();
    const std::string reason = is_there ? source.file->failure() : std::string();
    const bool is_included = named.mark.file != 0;
    KIVO_MESSAGE message = about_file(is_there ? kFileNotOpened : kFileNotFound, named,
                                      is_included ? named.mark : number_file(source.name));
    message.reason = reason;
    info_.post(message);
    return false;
}

void FileLoader::read_file(const KIVO_INCLUDE& named) {
    KIVO_FILE file;
    KIVO_XML_FILE_INPUT_SOURCE source(&file);
    if (!open(source, named)) {
        return;
    }
    Link link;
    link.identity = file.identity();
    if (!in_chain_.insert(link.identity).second) {
        info_.post(about_file(kIncludeCycle, named, named.mark));
        return;
    }
    if (files_read_ == kMostFiles) {
        is_over_ = true;
        info_.post(about_file(kTooManyFiles, named, named.mark));
        return;
    }
    ++files_read_;
    parse_and_read(source, named, link);
    chain_.push_back(std::move(link));
}

void FileLoader::parse_and_read(KIVO_XML_FILE_INPUT_SOURCE& source, const KIVO_INCLUDE& named,
                                Link& link) {
    const KIVO_MARK whole_file = number_file(source.name);
    source.file_number = whole_file.file;
    KIVO_XML_SAX_PARSER parser;
    const LinesKeeper lines(parser, info_.loaded_->files, whole_file.file - 1);
    parser.walk_once();
    const bool parsed = parser.parse(source);
    // A chain of includes must not hold a descriptor for each of its files.
    source.close_xml_file();
    if (!parser.has_text()) {
        link.reason = source.file->failure();
        info_.post({.says = kFileNotRead,
                    .mark = whole_file,
                    .word = named.file_name,
                    .reason = link.reason});
    } else if (!parsed) {
        info_.post({.says = kInvalidFile, .mark = whole_file, .word = named.file_name});
    } else if (parser.root_element() == nullptr) {
        info_.post({.says = kNoRoot, .mark = whole_file});
    } else if (parser.root_element()->tag_name() == "ROOT") {
        read_sections(*parser.root_element(), link);
    }
    parser.end_walk();
    link.file_number = whole_file.file;
    link.parser_messages = parser.error_handler().messages();
}

void FileLoader::post_parser_messages(const Link& link) {
    const auto mark_of = [&link](std::size_t offset) -> KIVO_MARK {
        return {link.file_number, kivo_mark_offset(offset)};
    };
    for (const auto& message : link.parser_messages) {
        info_.post({.says = link.reason.empty() ? kParserFinding : kReadError,
                    .mark = mark_of(message.offset),
                    .attribute = message.attribute,
                    .word = message.attribute,
                    .reason = link.reason,
                    .detail = message.text,
                    .related = message.first ? mark_of(*message.first) : KIVO_MARK()});
    }
}

void FileLoader::read_sections(KIVO_XML_ELEMENT& root, Link& link) {
    for (KIVO_XML_ELEMENT& section : root.sub_elements()) {
        read_section(root, section, link);
    }
}

void FileLoader::read_section(const KIVO_XML_ELEMENT& root, KIVO_XML_ELEMENT& section, Link& link) {
    static_assert(!kSections[kSectionCount - 1].word.empty());
    const SectionRow* const row = find_row(kSections, section.tag_name());
    if (row == nullptr) {
        info_.post(unknown_sub_tag(kUnknownSection, root, section, kWordsOf<kSections>));
    } else if (row->reader == nullptr) {
        info_.process_include_info(section, link.includes);
    } else {
        (info_.*row->reader)(section);
    }
}

bool KIVO_INFO::set_function_name(const std::string& name, const std::string& directory) {
    function_name = name;
    std::string path = directory.empty() ? dro_get_library_module_path() : directory;
    if (!directory.empty() && path.back() != '/' && path.back() != '\\') {
        path += '/';
    }
    return process_xml_file(path + to_lower_case(name) + "_info.xml");
}

void KIVO_INFO::set_include_directories(const std::vector<std::string>& directories) {
    std::vector<std::string> kept;
    for (const std::string& directory : directories) {
        if (!directory.empty()) {
            kept.push_back(directory.back() == '/' ? directory : directory + '/');
        }
    }
    loaded_->include_directories = std::move(kept);
}

bool KIVO_INFO::process_xml_file(const std::string& file_name) {
    loaded_->generic_copies = 0;
    loaded_->full_maps.clear();
    FileLoader(*this).load(file_name);
    return error_list.empty();
}
