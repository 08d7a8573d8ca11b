#include "kivo/session/internal/model/graph.h"

#include <algorithm>

namespace kivo_session {

Adjacency::Adjacency(std::uint32_t size, const std::vector<Edge>& edges) {
    std::vector<std::uint32_t> next(size + 1, 0);
    for (const Edge& edge : edges) {
        ++next[edge.from + 1];
    }
    for (std::uint32_t i = 0; i < size; ++i) {
        next[i + 1] += next[i];
    }
    begins_ = next;
    targets_.resize(edges.size());
    for (const Edge& edge : edges) {
        targets_[next[edge.from]++] = edge.to;
    }
    // Doubled edges go: what is used twice is still told once.
    std::uint32_t kept = 0;
    for (std::uint32_t i = 0; i < size; ++i) {
        const std::uint32_t begin = begins_[i];
        const std::uint32_t end = begins_[i + 1];
        std::sort(targets_.begin() + begin, targets_.begin() + end);
        begins_[i] = kept;
        for (std::uint32_t at = begin; at < end; ++at) {
            if (at == begin || targets_[at] != targets_[at - 1]) {
                // Never beyond "at": what is still to be read is not written over.
                targets_[kept++] = targets_[at];
            }
        }
    }
    begins_[size] = kept;
    targets_.resize(kept);
}

Components::Components(const Adjacency& graph) {
    constexpr std::uint32_t kUnseen = 0xFFFFFFFF;
    struct Visit {
        std::uint32_t node;
        std::uint32_t next;  // position of the target to look at
    };
    const std::uint32_t size = graph.size();
    std::vector<std::uint32_t> number(size, kUnseen);
    std::vector<std::uint32_t> lowest(size, 0);
    std::vector<std::uint32_t> waiting;
    std::vector<Visit> path;
    std::uint32_t count = 0;
    component_of.assign(size, kUnseen);
    const auto enter = [&](std::uint32_t node) {
        number[node] = lowest[node] = count++;
        waiting.push_back(node);
        path.push_back({node, 0});
    };
    const auto leave = [&](std::uint32_t node) {
        if (lowest[node] == number[node]) {
            const std::uint32_t component = this->size();
            std::uint32_t member = kUnseen;
            do {
                member = waiting.back();
                waiting.pop_back();
                component_of[member] = component;
                nodes.push_back(member);
            } while (member != node);
            std::sort(nodes.begin() + begins.back(), nodes.end());
            begins.push_back(static_cast<std::uint32_t>(nodes.size()));
        }
        path.pop_back();
        if (!path.empty()) {
            const std::uint32_t above = path.back().node;
            lowest[above] = std::min(lowest[above], lowest[node]);
        }
    };
    for (std::uint32_t root = 0; root < size; ++root) {
        if (number[root] == kUnseen) {
            enter(root);
        }
        while (!path.empty()) {
            Visit& visit = path.back();
            const auto targets = graph.of(visit.node);
            if (visit.next == targets.size()) {
                leave(visit.node);
                continue;
            }
            const std::uint32_t target = targets[visit.next++];
            if (number[target] == kUnseen) {
                enter(target);
            } else if (component_of[target] == kUnseen) {
                lowest[visit.node] = std::min(lowest[visit.node], number[target]);
            }
        }
    }
}

}  // namespace kivo_session
