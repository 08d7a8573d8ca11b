#pragma once

#include <cstddef>
#include <string>

// What the dynamic linker has to do for a shared library before anybody uses it.
struct StartWork {
    std::size_t relocations = 0;
    std::size_t constructors = 0;  // without the one that the compiler puts into every library
};

StartWork read_start_work(const std::string& library);
