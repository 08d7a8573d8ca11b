#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// Changes a text in some way of its own.
using TextMutator = std::function<std::string(const std::string&)>;

// Changes a description as the tree that it is: elements are made, moved, doubled, renamed and
// removed, attributes and texts set, with the words of the dictionary, with what stands elsewhere
// in the description or with what "mutate_text" makes of it. Nothing when the text is no XML.
std::optional<std::string> mutate_description(std::string_view text, std::uint32_t seed,
                                              const TextMutator& mutate_text);
