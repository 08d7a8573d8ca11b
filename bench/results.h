#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "comparison.h"

// The rows of the one table that a run prints.
class Results {
public:
    struct Row {
        std::string what;
        std::string ours;
        std::string against;
        std::string theirs;
        std::string ratio;
        std::string goal;
    };

    void add(Row row) { rows_.push_back(std::move(row)); }
    // Our time as a multiple of the other.
    void add_cost(const std::string& what, const std::string& against, const Comparison& measured,
                  const std::string& goal);
    // The other time as a multiple of ours.
    void add_speed(const std::string& what, const std::string& against, const Comparison& measured,
                   const std::string& goal);
    // Something that is compared with nothing.
    void add_single(const std::string& what, const std::string& ours, const std::string& goal);

    void print(std::ostream& to) const;

private:
    std::vector<Row> rows_;
};

std::string format_time(double seconds);
std::string format_size(std::size_t bytes);
std::string format_ratio(double ratio);
