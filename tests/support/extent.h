#pragma once

#include <pthread.h>

#include <cstddef>
#include <functional>
#include <stdexcept>

// How many and how deep "whatever the size of the input" is. What depth can break breaks on a small
// stack at once; the optimised stress run goes all the way.
#if defined(KIVO_STRESS)
constexpr std::size_t kVeryMany = 1000000;
#else
constexpr std::size_t kVeryMany = 20000;
#endif

// Does the work on a thread whose stack would not hold even the smallest frame for each of
// kVeryMany levels.
inline void on_small_stack(const std::function<void()>& work) {
    constexpr std::size_t kStackSize = 256 * 1024;
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackSize);
    const auto run = [](void* argument) -> void* {
        (*static_cast<const std::function<void()>*>(argument))();
        return nullptr;
    };
    pthread_t thread = {};
    const int error =
        pthread_create(&thread, &attributes, run, const_cast<std::function<void()>*>(&work));
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        throw std::runtime_error("no thread with a small stack");
    }
    pthread_join(thread, nullptr);
}
