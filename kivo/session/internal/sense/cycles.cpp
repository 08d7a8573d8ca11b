#include <algorithm>
#include <string>
#include <unordered_map>

#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

constexpr std::size_t kMostMaps = 16;   // whose rules are looked at in one circle
constexpr std::size_t kMostNames = 12;  // that are told of one circle

using Edges = std::vector<CycleEdge>;

class Cycles {
public:
    explicit Cycles(SenseRun& run) : run_(run), model_(run.asker.model()) {}

    void run() {
        const Edges& edges = model_.cycle_edges;
        for (std::size_t begin = 0; begin < edges.size();) {
            const std::uint32_t component = component_of(edges[begin]);
            std::size_t end = begin;
            while (end < edges.size() && component_of(edges[end]) == component) {
                ++end;
            }
            pass({edges.begin() + static_cast<std::ptrdiff_t>(begin),
                  edges.begin() + static_cast<std::ptrdiff_t>(end)});
            begin = end;
        }
    }

private:
    std::uint32_t component_of(const CycleEdge& edge) const {
        return model_.components.component_of[edge.from];
    }

    // Without a map, else with the first map whose rules close a circle.
    void pass(const Edges& edges) {
        if (pass_map(edges, kNone)) {
            return;
        }
        std::vector<std::uint32_t> maps;
        for (const CycleEdge& edge : edges) {
            if (edge.when < CycleEdge::kWithoutPreset) {
                maps.push_back(edge.when);
            }
        }
        std::sort(maps.begin(), maps.end());
        maps.erase(std::unique(maps.begin(), maps.end()), maps.end());
        for (std::size_t i = 0; i < std::min(maps.size(), kMostMaps); ++i) {
            if (pass_map(edges, maps[i])) {
                return;
            }
        }
        if (maps.size() > kMostMaps) {
            run_.asker.count_undecided();
        }
    }

    static bool applies(const CycleEdge& edge, std::uint32_t map) {
        return edge.when == CycleEdge::kAlways || edge.when == map ||
               (edge.when == CycleEdge::kWithoutPreset && map == kNone);
    }

    bool pass_map(const Edges& edges, std::uint32_t map) {
        std::unordered_map<std::uint32_t, std::uint32_t> number_of;
        std::vector<std::uint32_t> nodes;
        const auto number = [&](std::uint32_t node) {
            const auto [entry, is_new] =
                number_of.emplace(node, static_cast<std::uint32_t>(nodes.size()));
            if (is_new) {
                nodes.push_back(node);
            }
            return entry->second;
        };
        std::vector<Edge> inside;
        for (const CycleEdge& edge : edges) {
            if (applies(edge, map)) {
                const std::uint32_t from = number(edge.from);
                inside.push_back({from, number(edge.to)});
            }
        }
        const Adjacency graph(static_cast<std::uint32_t>(nodes.size()), inside);
        const Components circles(graph);
        bool has_found = false;
        for (std::uint32_t circle = 0; circle < circles.size(); ++circle) {
            const auto members = circles.members(circle);
            const auto inputs = graph.of(members[0]);
            const bool is_circle = members.size() > 1 || std::find(inputs.begin(), inputs.end(),
                                                                   members[0]) != inputs.end();
            // Macros that use one another are a fault of their texts.
            const bool is_told =
                std::all_of(members.begin(), members.end(), [&](std::uint32_t member) {
                    const std::uint32_t object = object_of(nodes[member]);
                    return run_.asker.description().objects[object].kind == ObjectKind::kMacro;
                });
            if (is_circle && !is_told) {
                has_found = true;
                tell(path_in(graph, circles, circle, nodes), map);
            }
        }
        return has_found;
    }

    // The shortest way from the member that is declared first back to it.
    std::vector<std::uint32_t> path_in(const Adjacency& graph, const Components& circles,
                                       std::uint32_t circle,
                                       const std::vector<std::uint32_t>& nodes) const {
        const auto members = circles.members(circle);
        const std::uint32_t start = *std::min_element(
            members.begin(), members.end(), [&](std::uint32_t left, std::uint32_t right) {
                return object_of(nodes[left]) != object_of(nodes[right])
                           ? object_of(nodes[left]) < object_of(nodes[right])
                           : nodes[left] < nodes[right];
            });
        std::unordered_map<std::uint32_t, std::uint32_t> came_from;
        std::vector<std::uint32_t> waiting{start};
        for (std::size_t i = 0; i < waiting.size() && came_from.count(start) == 0; ++i) {
            for (const std::uint32_t next : graph.of(waiting[i])) {
                if (circles.component_of[next] == circle && came_from.count(next) == 0) {
                    came_from.emplace(next, waiting[i]);
                    waiting.push_back(next);
                }
            }
        }
        std::vector<std::uint32_t> path{object_of(nodes[start])};
        for (std::uint32_t at = came_from[start]; at != start; at = came_from[at]) {
            path.push_back(object_of(nodes[at]));
        }
        path.push_back(object_of(nodes[start]));
        std::reverse(path.begin(), path.end());
        path.erase(std::unique(path.begin(), path.end()), path.end());
        return path;
    }

    std::uint32_t object_of(std::uint32_t node) const { return node % model_.object_count(); }

    void tell(const std::vector<std::uint32_t>& path, std::uint32_t map) {
        std::string names;
        for (std::size_t i = 0; i < path.size(); ++i) {
            if (i == kMostNames && i + 1 < path.size()) {
                names += ", ...";
                i = path.size() - 1;
            }
            names += (i == 0 ? "" : ", ") + run_.name_of(path[i]);
        }
        const Description& description = run_.asker.description();
        KIVO_SENSE_FINDING& finding = run_.add_object(
            "force-cycle", path.front(),
            (path.size() < 3 ? "the value of " + run_.name_of(path.front()) + " depends on itself"
                             : "values depend on one another in a circle: " + names) +
                (map == kNone
                     ? std::string()
                     : ", with the wizard map " + std::string(description.maps[map].name)));
        for (std::size_t i = 1; i + 1 < path.size() && i < kMostNames; ++i) {
            finding.notes.push_back(
                {run_.name_of(path[i]) + " is part of it", description.objects[path[i]].mark});
        }
    }

    SenseRun& run_;
    const Model& model_;
};

}  // namespace

void judge_cycles(SenseRun& run) {
    Cycles(run).run();
}

}  // namespace kivo_session
