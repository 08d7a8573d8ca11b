#include "kivo/session/internal/sense/asker.h"

#include <algorithm>

#include "kivo/session/internal/sense/inputs.h"

namespace kivo_session {

namespace {

constexpr std::uint64_t kFewestQuestions = 64;  // that the effort suffices for
constexpr std::uint64_t kShares = 8;            // of what is left, for one question
constexpr std::size_t kMostMaps = 16;           // that one question is asked of
constexpr std::size_t kMostSpaces = 4;          // that are kept

}  // namespace

Asker::Asker(std::shared_ptr<const Model> model, const KIVO_EFFORT& effort)
    : model_(std::move(model)),
      mentions_(*model_),
      effort_(effort),
      evaluations_(effort.evaluations),
      expected_(2 * model_->description->elements.size() + 2 * model_->leaves.size() +
                model_->description->items.size()),
      end_(std::chrono::steady_clock::now() + std::chrono::milliseconds(effort.milliseconds)),
      touched_by_(model_->object_count()) {
    const auto touch = [this](std::uint32_t object, std::uint32_t map) {
        std::vector<std::uint32_t>& maps = touched_by_[object];
        if (maps.empty() || maps.back() != map) {
            maps.push_back(map);
            touching_.push_back(map);
        }
    };
    for (std::uint32_t map = 0; map < description().maps.size(); ++map) {
        const Range presets = description().maps[map].presets;
        for (std::uint32_t i = presets.begin; i < presets.end; ++i) {
            const Preset& preset = description().presets[i];
            if (!model_->is_setting(preset.object)) {
                touch(preset.object, map);
            }
        }
    }
    for (const Element& element : description().elements) {
        if (element.map != kNone) {
            touch(element.object, element.map);
        }
    }
    std::sort(touching_.begin(), touching_.end());
    touching_.erase(std::unique(touching_.begin(), touching_.end()), touching_.end());
}

Space& Asker::space(std::uint32_t map) {
    const auto known = std::find_if(spaces_.begin(), spaces_.end(),
                                    [map](const Made& made) { return made.map == map; });
    if (known != spaces_.end()) {
        std::rotate(known, known + 1, spaces_.end());
        return *spaces_.back().space;
    }
    const std::uint64_t cost = model_->object_count() + model_->leaves.size();
    evaluations_ -= std::min(cost, evaluations_);
    spaces_.push_back({map, std::make_unique<Space>(model_, map, mentions_)});
    if (spaces_.size() > kMostSpaces) {
        // That without a map is asked most.
        spaces_.erase(spaces_.begin() + (spaces_.front().map == kNone ? 1 : 0));
    }
    return *spaces_.back().space;
}

KIVO_EFFORT Asker::rest() const {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                          end_ - std::chrono::steady_clock::now())
                          .count();
    KIVO_EFFORT effort = effort_;
    const std::uint64_t share = kShares * evaluations_ / std::max<std::uint64_t>(expected_, 1) + 1;
    effort.evaluations = static_cast<std::uint32_t>(
        std::min({effort.evaluations / kFewestQuestions + 1, share, evaluations_}));
    effort.milliseconds = static_cast<std::uint32_t>(std::max<std::int64_t>(left, 0));
    return effort;
}

Answer Asker::ask_space(const Question& question, std::uint32_t map) {
    Space& asked = space(map);
    expected_ -= expected_ > 0 ? 1 : 0;
    const KIVO_EFFORT effort = rest();
    if (effort.evaluations == 0 || effort.milliseconds == 0) {
        return {};
    }
    Budget budget(effort);
    Answer answer = asked.ask(question, budget);
    // What is set up for a question costs as well.
    const std::uint64_t used =
        effort.evaluations - budget.evaluations() + 16 + model_->object_count() / 32;
    evaluations_ -= std::min(used, evaluations_);
    return answer;
}

std::vector<std::uint32_t> Asker::maps_of(const Question& question) {
    if (question.is_legal) {
        return touching_;
    }
    const Inputs inputs = inputs_of(start(), question.wanted);
    const Cone below = cone_below(*model_, inputs.nodes, inputs.leaves);
    std::vector<std::uint32_t> maps;
    for (const std::uint32_t node : below.nodes) {
        const auto& more = touched_by_[node % model_->object_count()];
        maps.insert(maps.end(), more.begin(), more.end());
    }
    std::sort(maps.begin(), maps.end());
    maps.erase(std::unique(maps.begin(), maps.end()), maps.end());
    return maps;
}

Finding Asker::ask(const Question& question, std::uint32_t map) {
    const Answer answer = ask_space(question, map);
    Finding finding = answer.finding;
    if (finding != Finding::kYes && answer.is_judgeable && map == kNone) {
        const std::vector<std::uint32_t> maps = maps_of(question);
        for (std::size_t i = 0; i < maps.size() && finding != Finding::kYes; ++i) {
            const Finding with =
                i < kMostMaps ? ask_space(question, maps[i]).finding : Finding::kUnknown;
            finding = with == Finding::kNo ? finding : with;
        }
    }
    undecided_ += finding == Finding::kUnknown && answer.is_judgeable ? 1 : 0;
    return finding;
}

bool Asker::is_never(const Question& question, std::uint32_t map) {
    const std::size_t before = undecided_;
    const Finding finding = ask(question, map);
    undecided_ = before;
    return finding == Finding::kNo;
}

Engine* Asker::find(const Question& question) {
    Answer answer = ask_space(question, kNone);
    if (answer.finding != Finding::kYes) {
        undecided_ += answer.finding == Finding::kUnknown && answer.is_judgeable ? 1 : 0;
        return nullptr;
    }
    found_ = std::move(answer.with);
    return space(kNone).with(found_);
}

}  // namespace kivo_session
