#include "tools/commands/commands.h"

std::string joined_words(const std::vector<std::string>& words) {
    return CLI::detail::join(words, "|");
}

CLI::Validator one_of(const std::vector<std::string>& words) {
    return CLI::IsMember(words).description("").name(joined_words(words));
}
