// Loads every example of the description format's handbook and compares its messages with those
// that the page shows.

#include <gtest/gtest.h>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/description.h"

namespace {

struct Example {
    int line;
    std::string text;
    std::vector<std::string> messages;
};

// A blank at the end of a message is written as a visible sign on the page.
std::string with_real_blank(std::string line) {
    const std::string sign = "\u2423";
    if (line.size() >= sign.size() &&
        line.compare(line.size() - sign.size(), sign.size(), sign) == 0) {
        line.replace(line.size() - sign.size(), sign.size(), " ");
    }
    return line;
}

std::vector<Example> read_examples() {
    std::vector<Example> examples;
    std::ifstream page(KIVO_DOCS "/description-format.md");
    std::string block;
    int number = 0;
    for (std::string line; std::getline(page, line);) {
        ++number;
        if (line == "```") {
            block.clear();
        } else if (line == "```xml") {
            block = line;
            examples.push_back({number, "", {}});
        } else if (line.rfind("```", 0) == 0) {
            block = line;
        } else if (block == "```xml") {
            examples.back().text += line + "\n";
        } else if (block == "```messages") {
            examples.back().messages.push_back(with_real_blank(line));
        }
    }
    return examples;
}

std::string as_document(const std::string& text) {
    const bool is_whole = text.rfind("<ROOT>", 0) == 0 || text.rfind("<!--", 0) == 0;
    return is_whole ? text : "<ROOT>\n" + text + "</ROOT>\n";
}

std::vector<std::string> messages_of_document(const std::string& document) {
    Loaded loaded("");
    loaded.load_document(document);
    return loaded.messages();
}

TEST(DescriptionFormat, every_example_gives_exactly_the_messages_shown) {
    const std::vector<Example> examples = read_examples();
    ASSERT_GT(examples.size(), 20u);
    for (const Example& example : examples) {
        EXPECT_EQ(messages_of_document(as_document(example.text)), example.messages)
            << "example at line " << example.line;
    }
}

TEST(DescriptionFormat, the_page_shows_messages_of_every_section) {
    std::size_t messages = 0;
    for (const Example& example : read_examples()) {
        messages += example.messages.size();
    }
    EXPECT_GT(messages, 45u);
}

}  // namespace
