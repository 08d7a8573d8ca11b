#include "tools/findings/waivers.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

#include "tools/description/source_text.h"
#include "tools/findings/catalogue.h"

#define TOML_EXCEPTIONS 0
#include <toml++/toml.h>

namespace {

constexpr std::string_view kFileName = "kivo.toml";
constexpr std::string_view kUnused = "unused-waiver";

// One path for all ways to write it.
std::string resolved(const std::string& path) {
    std::error_code failed;
    const std::filesystem::path whole = std::filesystem::weakly_canonical(path, failed);
    return failed ? path : whole.string();
}

std::string at(const toml::source_region& source, std::string_view what) {
    return fmt::format("line {}, column {}: {}", source.begin.line, source.begin.column, what);
}

// Reads the tables of a settings file; the first thing that is wrong ends it.
class Reader {
public:
    explicit Reader(const std::string& path)
        : path_(path), folder_(std::filesystem::path(path).parent_path()), source_(path) {}

    std::optional<std::string> read(std::vector<Waiver>& waivers) {
        const toml::parse_result parsed = toml::parse(source_.text(), path_);
        if (!parsed) {
            return at(parsed.error().source(), parsed.error().description());
        }
        for (const auto& [key, value] : parsed.table()) {
            const toml::array* const tables = value.as_array();
            if (key != "waiver" || tables == nullptr || !tables->is_array_of_tables()) {
                return at(key.source(), "only tables [[waiver]] are known here");
            }
            for (const toml::node& table : *tables) {
                waivers.emplace_back();
                if (auto failure = read_waiver(*table.as_table(), waivers.back())) {
                    return failure;
                }
            }
        }
        return std::nullopt;
    }

private:
    std::optional<std::string> read_waiver(const toml::table& table, Waiver& waiver) {
        std::string reason;
        for (const auto& [key, value] : table) {
            std::string* const field = key == "id"       ? &waiver.id
                                       : key == "file"   ? &waiver.file
                                       : key == "name"   ? &waiver.object
                                       : key == "reason" ? &reason
                                                         : nullptr;
            if (field == nullptr || !value.is_string()) {
                return at(key.source(),
                          "a waiver has texts \"id\", \"file\", \"reason\" and "
                          "perhaps \"name\"");
            }
            *field = value.as_string()->get();
        }
        if (waiver.id.empty() || waiver.file.empty() || reason.empty()) {
            return at(table.source(), "a waiver needs \"id\", \"file\" and \"reason\"");
        }
        const MessageDescription* const message = find_message(waiver.id);
        if (message == nullptr) {
            return at(table.source(), fmt::format("there is no message '{}'", waiver.id));
        }
        // Hosts are told of it whatever is written here.
        if (message->severity == Severity::kError) {
            return at(table.source(),
                      fmt::format("'{}' is an error, which cannot be waived", waiver.id));
        }
        waiver.file = resolved((folder_ / waiver.file).string());
        waiver.place = place_of(table.source());
        return std::nullopt;
    }

    Place place_of(const toml::source_region& region) const {
        const auto line = static_cast<std::int32_t>(region.begin.line);
        return source_.place(path_, source_.offset(line, 1).value_or(0));
    }

    std::string path_;
    std::filesystem::path folder_;
    SourceText source_;
};

}  // namespace

Waivers::Waivers(const std::string& path) : failure_(why_unreadable(path)) {
    if (!failure_) {
        failure_ = Reader(path).read(waivers_);
    }
}

void Waivers::apply(std::vector<Finding>& findings, const std::vector<std::string>& files) {
    std::map<std::string, std::string> known;
    for (const std::string& file : files) {
        known.emplace(file, resolved(file));
    }
    for (Waiver& waiver : waivers_) {
        waiver.is_of_checked_file |= std::any_of(known.begin(), known.end(), [&](const auto& file) {
            return file.second == waiver.file;
        });
    }
    const auto is_waived = [&](const Finding& finding) {
        const auto file = known.find(finding.place.file);
        bool is_waived = false;
        for (Waiver& waiver : waivers_) {
            if (file != known.end() && waiver.id == finding.id && waiver.file == file->second &&
                (waiver.object.empty() || waiver.object == finding.object)) {
                waiver.is_used = true;
                is_waived = true;
            }
        }
        return is_waived;
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), is_waived), findings.end());
}

std::vector<Finding> Waivers::unused() const {
    std::vector<Finding> findings;
    for (const Waiver& waiver : waivers_) {
        if (waiver.is_of_checked_file && !waiver.is_used) {
            Finding& finding = findings.emplace_back();
            finding.severity = Severity::kWarning;
            finding.id = kUnused;
            finding.text = fmt::format("nothing to waive: there is no {} here", waiver.id);
            finding.place = waiver.place;
        }
    }
    return findings;
}

Waivers* WaiverFiles::of_description(const std::string& path) {
    const std::string settings =
        !given_.empty() ? given_ : (std::filesystem::path(path).parent_path() / kFileName).string();
    const auto [found, is_new] = files_.try_emplace(settings);
    if (is_new && (!given_.empty() || std::filesystem::exists(settings))) {
        found->second.emplace(settings);
    }
    return found->second ? &*found->second : nullptr;
}

void WaiverFiles::apply(std::vector<Finding>& findings, const Description& description) {
    if (Waivers* const waivers = of_description(description.name())) {
        std::vector<std::string> names = files_of(description.info());
        std::replace(names.begin(), names.end(), description.path(), description.name());
        waivers->apply(findings, names);
    }
}

std::vector<CheckedFile> WaiverFiles::report() const {
    std::vector<CheckedFile> reported;
    for (const auto& [path, waivers] : files_) {
        if (!waivers) {
            continue;
        }
        CheckedFile file{path, waivers->failure(), waivers->unused(), 0};
        if (file.failure || !file.findings.empty()) {
            reported.push_back(std::move(file));
        }
    }
    return reported;
}
