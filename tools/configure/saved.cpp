#include "tools/configure/saved.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>

namespace {

// One that finds the members of large objects.
using Json = nlohmann::json;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// The whole file, which may be a pipe; nothing, with errno, when it cannot be read.
std::optional<std::string> content_of(const std::string& path) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr) {
        return std::nullopt;
    }
    std::string content;
    char part[65536];
    while (const std::size_t size = std::fread(part, 1, sizeof part, file.get())) {
        content.append(part, size);
    }
    return std::ferror(file.get()) != 0 ? std::nullopt : std::optional(std::move(content));
}

// The text of the file as JSON; with what is wrong with it when it is none.
Json parse(const std::string& text, std::string& problem) {
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        // The position after the end stands for an end that comes too soon.
        const std::size_t before = std::min(error.byte, text.size() + 1) - 1;
        const auto line =
            1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(before), '\n');
        problem = fmt::format("it is not JSON, as line {} shows", line);
    }
    return {};
}

std::string take_settings(const Json& settings, SavedConfiguration& saved) {
    if (!settings.is_object()) {
        return "its \"settings\" are no object";
    }
    for (const auto& [name, value] : settings.items()) {
        if (!value.is_string()) {
            return "its setting '" + name + "' is no text";
        }
        saved.settings.push_back({name, value.get<std::string>()});
    }
    return {};
}

std::string take(const Json& document, SavedConfiguration& saved) {
    if (!document.is_object()) {
        return "it is no JSON object";
    }
    const auto settings = document.find("settings");
    if (settings != document.end()) {
        if (std::string problem = take_settings(*settings, saved); !problem.empty()) {
            return problem;
        }
    }
    const auto map = document.find("map");
    if (map == document.end() || map->is_null()) {
        return {};
    }
    if (!map->is_string()) {
        return "its \"map\" is neither a text nor null";
    }
    saved.map = map->get<std::string>();
    return {};
}

}  // namespace

std::string read_saved(const std::string& path, SavedConfiguration& saved) {
    const std::optional<std::string> content = content_of(path);
    std::string problem;
    if (!content) {
        problem = std::strerror(errno);
    } else {
        const Json document = parse(*content, problem);
        problem = problem.empty() ? take(document, saved) : problem;
    }
    return problem.empty() ? problem : "cannot read '" + path + "': " + problem;
}
