// Reads paths of files from its standard input, one a line, and prints those of them that a strict
// parser refuses. Entities that a document declares itself are expanded, other files are not
// fetched; that the parser does not know an encoding says nothing of the document.
#include <expat.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <type_traits>

namespace {

bool is_refused(const std::string& text) {
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, decltype(&XML_ParserFree)> parser(
        XML_ParserCreate(nullptr), XML_ParserFree);
    return XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), 1) !=
               XML_STATUS_OK &&
           XML_GetErrorCode(parser.get()) != XML_ERROR_UNKNOWN_ENCODING;
}

}  // namespace

int main() {
    std::string path;
    while (std::getline(std::cin, path)) {
        std::ifstream file(path, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)),
                               std::istreambuf_iterator<char>());
        if (!file) {
            std::cerr << "cannot read " << path << '\n';
            return 1;
        }
        if (is_refused(text)) {
            std::cout << path << '\n';
        }
    }
}
