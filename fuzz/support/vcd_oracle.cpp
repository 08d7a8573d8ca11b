#include "fuzz/support/vcd_oracle.h"

#include <cstdint>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "fuzz/support/expect.h"

namespace {

class DumpReader {
public:
    explicit DumpReader(std::string_view dump) : words_(std::string(dump)) {}

    void run() {
        read_header();
        std::string word;
        while (words_ >> word) {
            read_change(word);
        }
        expect(has_time_, "a dump has a time");
        expect(at_start_.size() == widths_.size(), "every signal has a value at the start");
    }

private:
    void skip_section() {
        std::string word;
        while (words_ >> word && word != "$end") {
        }
        expect(word == "$end", "a section is closed");
    }

    void read_header() {
        std::string word;
        while (words_ >> word && word != "$enddefinitions") {
            expect(word == "$version" || word == "$comment" || word == "$timescale" ||
                       word == "$scope" || word == "$var" || word == "$upscope",
                   "a header holds its sections alone", word);
            if (word == "$var") {
                read_variable();
            }
            skip_section();
        }
        skip_section();
    }

    void read_variable() {
        std::string type;
        std::size_t width = 0;
        std::string code;
        std::string name;
        words_ >> type >> width >> code >> name;
        expect(type == "wire" && width > 0, "a signal is a wire with bits", name);
        expect(widths_.emplace(code, width).second, "a code stands for one signal", code);
        expect(names_.insert(name).second, "a name stands for one signal", name);
    }

    void read_change(const std::string& word) {
        if (word.front() == '#') {
            const std::int64_t time = std::stoll(word.substr(1));
            expect(time >= 0 && (!has_time_ || time > time_), "times ascend from 0", word);
            time_ = time;
            has_time_ = true;
            return;
        }
        if (word == "$dumpvars" || word == "$end") {
            is_start_ = word == "$dumpvars";
            return;
        }
        std::string bits = word.substr(0, 1);
        std::string code = word.substr(1);
        if (bits == "b") {
            bits = code;
            words_ >> code;
        }
        expect(widths_.count(code) == 1 && widths_[code] == bits.size(),
               "a value is as wide as its signal", word + " " + code);
        expect(bits.find_first_not_of("01xz") == std::string::npos, "a value is of bits", word);
        expect(has_time_, "a value has a time", word);
        if (is_start_) {
            expect(at_start_.insert(code).second, "a signal has one value at the start", code);
        }
    }

    std::istringstream words_;
    std::map<std::string, std::size_t> widths_;
    std::set<std::string> names_;
    std::set<std::string> at_start_;
    std::int64_t time_ = 0;
    bool has_time_ = false;
    bool is_start_ = false;
};

}  // namespace

void expect_dump(std::string_view dump) {
    DumpReader(dump).run();
}
