#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A time or period of a stimulus command.
struct CommandTime {
    std::string_view text;   // without "@" and the white space around it
    bool is_whole = false;   // whether all of the text is a number
    bool fits = true;        // into the 32 bits in which it is read
    std::int32_t value = 0;  // as the library reads it
};

enum class ItemKind { kValue, kRepeat, kCancel, kUnknownOption };

// What stands before an item.
enum class ItemStart { kOfList, kAfterComma, kAfterSemicolon, kWithoutComma };

struct CommandItem {
    std::string_view text;  // without the white space around it
    std::string_view value;
    CommandTime time;
    bool has_time = false;
    bool follows_blanks = false;
    ItemStart start = ItemStart::kOfList;

    ItemKind kind() const;
};

// A stimulus command as its author meant it: where white space of another kind, too much of it, a
// semicolon or a missing comma makes the library read it otherwise, it is read as if that was
// mended. All views are of its text.
struct StimulusCommand {
    explicit StimulusCommand(std::string_view source);
    StimulusCommand(const StimulusCommand&) = delete;
    StimulusCommand& operator=(const StimulusCommand&) = delete;

    // As long as the source, with blanks in place of all other white space.
    std::string text;
    std::string_view keyword;
    std::string_view option;  // empty when there is none
    std::string_view signal;
    std::vector<CommandItem> items;
    // The commas before which, and the last one after which, no item stands.
    std::vector<std::string_view> lonely_commas;
    std::vector<std::string_view> semicolons;

private:
    void take_list(std::string_view rest);
};

// The length of the white space character that a text begins with, in any script; 0 for another.
std::size_t blank_length(std::string_view text);

// "a tab" and so on, for a character of white space.
std::string_view name_of_blank(std::string_view blank);
