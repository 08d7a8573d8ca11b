#include <fstream>
#include <memory>
#include <vector>

#include "description_generator.h"
#include "kivo/kivo.h"
#include "peers.h"
#include "processes.h"
#include "settings.h"

namespace {

void write_file(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    require(static_cast<bool>(file.flush()), "a file cannot be written");
}

std::string write_description(const Settings& settings, const std::string& text) {
    const auto path = settings.folder / (std::to_string(text.size()) + ".xml");
    write_file(path, text);
    return path.string();
}

std::unique_ptr<KIVO_INFO> load(const std::string& path) {
    auto info = std::make_unique<KIVO_INFO>();
    require(info->process_xml_file(path), "a description has errors");
    return info;
}

// All that a load of a generated description makes and the store leaves alone.
std::vector<std::unique_ptr<KIVO_OBJ>> take_detached(KIVO_INFO& info) {
    std::vector<std::unique_ptr<KIVO_OBJ>> detached;
    info.reset_kivo_obj_map();
    while (KIVO_OBJ_INFO* object = info.get_next_kivo_obj()) {
        while (KIVO_RULE_ELEMENT* rule = object->get_next_rule_element()) {
            detached.emplace_back(rule);
        }
    }
    while (KIVO_VECTOR_OBJ* vector = info.get_next_vector_obj()) {
        while (KIVO_RULE_ELEMENT* stimulus = vector->get_next_vector_stimulus()) {
            detached.emplace_back(stimulus);
        }
        std::string port;
        while (KIVO_OBJ* format = vector->display_format_map.get_next_entry(port)) {
            detached.emplace_back(format);
        }
        detached.emplace_back(vector);
    }
    return detached;
}

// Loads and destroys the store alone; what is left goes outside the time that counts.
Work load_and_destroy_store(const std::string& path) {
    return self_timed([path] {
        const Stopwatch loading;
        std::unique_ptr<KIVO_INFO> info = load(path);
        const double load_seconds = loading.seconds();
        const auto detached = take_detached(*info);
        const Stopwatch destruction;
        info.reset();
        return load_seconds + destruction.seconds();
    });
}

Work load_and_destroy_all(const std::string& path) {
    return timed([path] { load(path)->delete_detached_objects(); });
}

// The buffer is filled again outside the time that counts: an in-place parse spoils it.
Work pugixml_work(const std::string& text) {
    auto buffer = std::make_shared<std::string>();
    return self_timed([&text, buffer] {
        buffer->assign(text);
        const Stopwatch parse;
        parse_with_pugixml(*buffer);
        return parse.seconds();
    });
}

struct Peer {
    const char* name;
    void (*parse)(const std::string& text);
};

// clang-format off
constexpr Peer kPeers[] = {
    { "expat",    parse_with_expat    },
    { "tinyxml2", parse_with_tinyxml2 },
    { "libxml2",  parse_with_libxml2  },
};
// clang-format on

void register_load_size(const Settings& settings, Results& results, std::size_t size, int rounds) {
    const auto text = std::make_shared<std::string>(generate_description(size));
    const std::string path = write_description(settings, *text);
    const std::string what = "load " + format_size(text->size());
    const double batch = settings.batch_seconds;
    register_rounds((what + ", pugixml").c_str(), rounds, [=, &results](benchmark::State& state) {
        results.add_cost(what + ", store destroyed", "pugixml",
                         compare(state, load_and_destroy_store(path), pugixml_work(*text), batch),
                         "<= 3 x");
    });
    register_rounds(
        (what + ", detached too, pugixml").c_str(), rounds, [=, &results](benchmark::State& state) {
            results.add_cost(what + ", detached objects too", "pugixml",
                             compare(state, load_and_destroy_all(path), pugixml_work(*text), batch),
                             "");
        });
    const auto visit = timed([path] { visit_with_pugixml(path); });
    register_rounds(("parse and visit " + format_size(text->size())).c_str(), rounds,
                    [=, &results](benchmark::State& state) {
                        results.add_cost(
                            "parse and visit " + format_size(text->size()) + ", no store",
                            "pugixml", compare(state, visit, pugixml_work(*text), batch), "");
                    });
    for (const Peer& peer : kPeers) {
        const auto parse = timed([text, peer] { peer.parse(*text); });
        register_rounds(
            (what + ", " + peer.name).c_str(), rounds, [=, &results](benchmark::State& state) {
                results.add_cost(what + ", detached objects too", peer.name,
                                 compare(state, load_and_destroy_all(path), parse, batch), "< 1 x");
            });
    }
}

void register_scaling(const Settings& settings, Results& results, const std::string& what,
                      const std::string& smaller, const std::string& larger) {
    const double batch = settings.batch_seconds;
    register_rounds(what.c_str(), settings.large_rounds, [=, &results](benchmark::State& state) {
        results.add_cost(
            what, "a tenth of it",
            compare(state, load_and_destroy_all(larger), load_and_destroy_all(smaller), batch),
            "<= 13 x");
    });
}

void register_load_scaling(const Settings& settings, Results& results) {
    std::string smaller;
    for (std::size_t size = settings.small_description; size <= settings.large_description;
         size *= 10) {
        const std::string text = generate_description(size);
        const std::string larger = write_description(settings, text);
        if (!smaller.empty()) {
            register_scaling(settings, results, "load " + format_size(text.size()), smaller,
                             larger);
        }
        smaller = larger;
    }
}

std::string description_with(const std::string& sections, std::size_t number) {
    const std::string n = std::to_string(number);
    return "<ROOT><PARAMETERS><PARAMETER NAME=\"P" + n +
           "\" TYPE=\"INTEGER\" VALUE=\"8\"/></PARAMETERS>" + sections + "</ROOT>\n";
}

std::string include_of(const std::string& path) {
    return "<INCLUDE FILE=\"" + path + "\"/>";
}

// A file that includes so many others, one beside the other.
std::string write_included_files(const Settings& settings, std::size_t count) {
    std::string includes;
    for (std::size_t i = 0; i < count; ++i) {
        const auto path = settings.folder / ("part_" + std::to_string(i) + ".xml");
        write_file(path, description_with("", i));
        includes += include_of(path.string());
    }
    const auto path = settings.folder / ("parts_" + std::to_string(count) + ".xml");
    write_file(path, "<ROOT>" + includes + "</ROOT>\n");
    return path.string();
}

// A file that includes another, which includes another, so many times.
std::string write_included_chain(const Settings& settings, std::size_t count) {
    std::string next;
    for (std::size_t i = 0; i <= count; ++i) {
        const auto path =
            settings.folder / ("chain_" + std::to_string(count) + "_" + std::to_string(i) + ".xml");
        write_file(path, description_with(next, i));
        next = include_of(path.string());
    }
    return (settings.folder /
            ("chain_" + std::to_string(count) + "_" + std::to_string(count) + ".xml"))
        .string();
}

void register_includes(const Settings& settings, Results& results) {
    const std::size_t count = settings.included_files;
    register_scaling(settings, results, "load " + std::to_string(count) + " included files",
                     write_included_files(settings, count / 10),
                     write_included_files(settings, count));
    register_scaling(settings, results, "load a chain of " + std::to_string(count) + " includes",
                     write_included_chain(settings, count / 10),
                     write_included_chain(settings, count));
}

void register_memory(const Settings& settings, Results& results) {
    const std::string text = generate_description(settings.large_description);
    const std::string path = write_description(settings, text);
    const std::size_t size = text.size();
    const std::string what = "peak memory, load " + format_size(size);
    register_rounds(what.c_str(), 1, [=, &results](benchmark::State& state) {
        std::size_t peak = 0;
        for (auto round : state) {
            static_cast<void>(round);
            const Stopwatch watch;
            peak = std::stoul(run_program({KIVO_BENCH_LOAD, path, "--peak"})) * 1024;
            state.SetIterationTime(watch.seconds());
        }
        results.add({what, format_size(peak), "the file's size", format_size(size),
                     format_ratio(static_cast<double>(peak) / static_cast<double>(size)) + " x",
                     "<= 5 x"});
    });
}

}  // namespace

void register_loading(const Settings& settings, Results& results) {
    register_load_size(settings, results, settings.small_description, settings.rounds);
    register_load_size(settings, results, settings.large_description, settings.large_rounds);
    register_load_scaling(settings, results);
    register_includes(settings, results);
    register_memory(settings, results);
}
