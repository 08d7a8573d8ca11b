#pragma once

#include <map>
#include <string>
#include <string_view>

// What a page can link to by its name: parameters, ports, hidden parameters, macros, waveforms.
class PageNames {
public:
    // Makes the id of something of that kind ("port") and remembers it; of two things of one name
    // texts mean the first.
    std::string add(std::string_view kind, const std::string& name);

    // The id of what has the name; null when nothing has.
    const std::string* find(std::string_view name) const;

private:
    std::map<std::string, std::string, std::less<>> ids_;
    std::size_t unwritable_ = 0;
};

// Bytes at the front of a text that may be a name, 0 when none is there.
std::size_t length_of_name(std::string_view text);

// Whether a name stands out in prose: "DEPTH" and "used_words" do, "write" may be the verb.
bool stands_out(std::string_view name);
