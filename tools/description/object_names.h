#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kivo/kivo.h"

// The names of the parameters or of the ports that a description declares, to find the one that
// was probably meant by another name: one that differs by one edit or in case only. A look-up
// compares few of them, however many there are.
class ObjectNames {
public:
    enum class Kind { kParameters, kPorts };

    ObjectNames(const KIVO_INFO& info, Kind kind);

    // Empty when there is none, and for names that are too short or too long to be told apart.
    std::string nearest(std::string_view name) const;

private:
    void add(const std::string& name);

    std::vector<std::string> names_;
    // Hashes of each name in lower case, whole and with one byte left out, with the name's
    // position: of two names that are one edit apart, one of these is the same.
    std::vector<std::pair<std::size_t, std::size_t>> keys_;
};
