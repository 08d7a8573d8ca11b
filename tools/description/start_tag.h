#pragma once

#include <string_view>

struct Attribute {
    std::string_view name;
    std::string_view value;
};

// Walks through the start tag that a text begins with. The library has read it already, so what is
// no tag here is not the text that it read (another encoding, a file that has changed).
class StartTag {
public:
    explicit StartTag(std::string_view source);

    std::string_view name() const { return name_; }
    // False at the end of the tag, after which rest() then stands.
    bool next(Attribute& attribute);
    std::string_view rest() const { return rest_; }

private:
    std::string_view name_;
    std::string_view rest_;
};

// The attribute of that name, the last of several, as the library takes it; one without a name
// when there is none.
Attribute find_attribute(std::string_view source, std::string_view name);
