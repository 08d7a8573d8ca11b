// Prints how many allocations all typical stimulus calls together make: the library's, then the
// reference's. A process of its own, because counting slows every allocation.

#include <cstdio>
#include <cstdlib>
#include <new>

#include "bench/stimulus_commands.h"
#include "kivo/vectors/stimulus.h"
#include "vectors/stimulus_reference.h"

namespace {

std::size_t allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

int main() {
    const auto& calls = stimulus_calls();
    std::string signal;
    std::string value;
    std::size_t before = allocations;
    for (const StimulusCall& call : calls) {
        kivo_get_transition_at_time(call.command, call.time, signal, value);
    }
    const std::size_t ours = allocations - before;
    before = allocations;
    for (const StimulusCall& call : calls) {
        stimulus_reference::get_transition_at_time(call.command, call.time, signal, value);
    }
    std::printf("%zu %zu\n", ours, allocations - before);
    return 0;
}
