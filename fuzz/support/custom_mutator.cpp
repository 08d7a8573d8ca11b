// What libFuzzer asks for a new input: mostly a description of another structure, sometimes one of
// other bytes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/support/description_mutator.h"

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace {

std::string mutate_bytes(const std::string& text) {
    constexpr std::size_t kRoom = 64;
    std::string mutated = text;
    mutated.resize(text.size() + kRoom);
    mutated.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(mutated.data()), text.size(),
                                    mutated.size()));
    return mutated;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t max_size, unsigned seed) {
    constexpr unsigned kOneInSoManyIsBytes = 4;
    if (seed % kOneInSoManyIsBytes != 0) {
        const std::string_view text(reinterpret_cast<const char*>(data), size);
        const auto mutated = mutate_description(text, seed / kOneInSoManyIsBytes, mutate_bytes);
        if (mutated && mutated->size() <= max_size) {
            std::copy(mutated->begin(), mutated->end(), data);
            return mutated->size();
        }
    }
    return LLVMFuzzerMutate(data, size, max_size);
}
