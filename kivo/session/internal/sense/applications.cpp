#include <string>
#include <string_view>
#include <unordered_map>

#include "kivo/session/internal/sense/topics.h"

namespace kivo_session {

namespace {

class Applications {
public:
    explicit Applications(SenseRun& run) : run_(run) {}

    void run() {
        const Description& description = run_.asker.description();
        for (const Vector& vector : description.vectors) {
            pass(vector.condition, "vector " + std::string(vector.name), true, false);
        }
        for (const Stimulus& stimulus : description.stimuli) {
            pass(stimulus.condition, "command", !stimulus.shown.empty(),
                 !stimulus.otherwise.empty());
        }
        for (const WizardMap& map : description.maps) {
            pass(map.condition, "wizard map " + std::string(map.name), true, false);
        }
        for (const Piece& piece : description.pieces) {
            pass(piece.condition, "text", true, piece.has_otherwise);
        }
    }

private:
    enum class Known : std::uint8_t { kSometimes, kNeverLegal, kNever };

    Finding ask(std::uint32_t text, WantedKind kind, bool is_legal) {
        Question question;
        want(question.wanted, kind, text);
        question.is_legal = is_legal;
        return run_.asker.ask(question);
    }

    // Several commands may stand below one condition, and several texts have the same.
    Known ask_once(std::uint32_t text, WantedKind kind) {
        const std::string_view source = run_.asker.description().texts[text].text;
        auto& known = kind == WantedKind::kHolds ? holds_ : fails_;
        const auto found = known.find(source);
        if (found != known.end()) {
            return found->second;
        }
        const Known answer = ask(text, kind, false) == Finding::kNo  ? Known::kNever
                             : ask(text, kind, true) == Finding::kNo ? Known::kNeverLegal
                                                                     : Known::kSometimes;
        return known.emplace(source, answer).first->second;
    }

    void pass(std::uint32_t text, const std::string& what, bool has_then, bool has_else) {
        if (text == kNone || run_.asker.model().is_spoiled(text)) {
            return;
        }
        const Known then = has_then ? ask_once(text, WantedKind::kHolds) : Known::kSometimes;
        if (then != Known::kSometimes) {
            const bool is_dead = then == Known::kNever;
            run_.add_text(is_dead ? "dead-rule" : "dead-in-legal", text,
                          "the condition of the " + what +
                              (is_dead ? " is never true"
                                       : " is true only in configurations that are not legal"));
            return;
        }
        const Known otherwise = has_else ? ask_once(text, WantedKind::kFails) : Known::kSometimes;
        if (otherwise != Known::kSometimes) {
            run_.add_text("dead-rule", text,
                          "the condition of the " + what + " is always true" +
                              (otherwise == Known::kNever ? "" : " in legal configurations") +
                              ", so its ELSE never counts");
        }
    }

    SenseRun& run_;
    std::unordered_map<std::string_view, Known> holds_;
    std::unordered_map<std::string_view, Known> fails_;
};

void judge_message(SenseRun& run, const Message& message) {
    if (message.condition == kNone || run.asker.model().is_spoiled(message.condition)) {
        return;
    }
    const bool is_error = message.severity == Severity::kError;
    const auto is_never = [&](WantedKind kind, bool is_legal) {
        Question question;
        want(question.wanted, kind, message.condition);
        question.is_legal = is_legal;
        return run.asker.ask(question) == Finding::kNo;
    };
    const auto pass = [&](WantedKind kind, const std::string& what) {
        if (is_never(kind, false)) {
            run.add_text("unreachable-message", message.condition, what + " is never shown");
        } else if (!is_error && is_never(kind, true)) {
            run.add_text("unreachable-message", message.condition,
                         what + " is shown only in configurations that are not legal");
        }
    };
    if (!message.shown.empty()) {
        pass(WantedKind::kHolds, "this message");
    }
    if (!message.otherwise.empty()) {
        pass(WantedKind::kFails, "the ELSE of this message");
    }
}

}  // namespace

void judge_applications(SenseRun& run) {
    Applications(run).run();
}

void judge_messages(SenseRun& run) {
    for (const Message& message : run.asker.description().messages) {
        judge_message(run, message);
    }
}

}  // namespace kivo_session
