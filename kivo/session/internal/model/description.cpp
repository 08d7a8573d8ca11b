#include "kivo/session/internal/model/description.h"

#include <algorithm>

namespace kivo_session {

std::string_view Description::keep(std::string_view text) {
    constexpr std::size_t kBlock = 65536;
    if (text.empty()) {
        return {};
    }
    if (bytes_.empty() || bytes_.back().capacity() - bytes_.back().size() < text.size()) {
        bytes_.emplace_back();
        bytes_.back().reserve(std::max(kBlock, text.size()));
    }
    std::string& block = bytes_.back();
    const std::size_t begin = block.size();
    block.append(text);
    return std::string_view(block).substr(begin);
}

std::uint32_t Description::add_text(const SourceText& text) {
    texts.push_back(text);
    texts.back().text = keep(text.text);
    return static_cast<std::uint32_t>(texts.size()) - 1;
}

}  // namespace kivo_session
