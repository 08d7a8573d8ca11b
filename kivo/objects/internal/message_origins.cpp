#include "kivo/objects/internal/message_origins.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace {

constexpr std::size_t kNone = ~std::size_t{0};

std::size_t hash_of(std::string_view text) {
    return std::hash<std::string_view>()(text);
}

// Finds for each entry of a changed list the one that it was before the change, comparing hashes:
// first those that are there once before and once after, then the neighbours of what was found
// (the ends of both lists being such neighbours), then the rest in order.
class Alignment {
public:
    Alignment(std::vector<std::size_t> before, std::vector<std::size_t> after)
        : before_(std::move(before)),
          after_(std::move(after)),
          is_taken_(before_.size(), false),
          partners_(after_.size(), kNone) {
        pair_equal(/*only_single=*/true);
        pair_onwards();
        pair_backwards();
        pair_equal(/*only_single=*/false);
    }

    // For each entry after the change its number before it, or kNone.
    const std::vector<std::size_t>& partners() const { return partners_; }

private:
    struct Entry {
        std::size_t hash;
        std::size_t number;
        bool operator<(const Entry& other) const {
            return hash != other.hash ? hash < other.hash : number < other.number;
        }
    };
    using Entries = std::vector<Entry>;

    void pair(std::size_t before, std::size_t after) {
        const bool fits = before < before_.size() && !is_taken_[before] &&
                          partners_[after] == kNone && before_[before] == after_[after];
        if (fits) {
            partners_[after] = before;
            is_taken_[before] = true;
        }
    }

    static Entries::const_iterator end_of_run(Entries::const_iterator first,
                                              Entries::const_iterator last) {
        return std::find_if(first, last,
                            [first](const Entry& entry) { return entry.hash != first->hash; });
    }

    void pair_equal(bool only_single) {
        const Entries before =
            open_entries(before_, [this](std::size_t i) { return is_taken_[i]; });
        const Entries after =
            open_entries(after_, [this](std::size_t i) { return partners_[i] != kNone; });
        auto from = before.begin();
        for (auto to = after.begin(); to != after.end();) {
            const auto to_end = end_of_run(to, after.end());
            while (from != before.end() && from->hash < to->hash) {
                ++from;
            }
            if (from == before.end()) {
                return;
            }
            const auto from_end = end_of_run(from, before.end());
            const bool is_single = from_end - from == 1 && to_end - to == 1;
            for (; (is_single || !only_single) && to != to_end && from != from_end; ++to, ++from) {
                pair(from->number, to->number);
            }
            to = to_end;
        }
    }

    template <class IsPaired>
    static Entries open_entries(const std::vector<std::size_t>& hashes, const IsPaired& is_paired) {
        Entries entries;
        for (std::size_t i = 0; i < hashes.size(); ++i) {
            if (!is_paired(i)) {
                entries.push_back({hashes[i], i});
            }
        }
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    void pair_onwards() {
        std::size_t next = 0;
        for (std::size_t i = 0; i < after_.size(); ++i) {
            if (next != kNone) {
                pair(next, i);
            }
            next = partners_[i] == kNone ? kNone : partners_[i] + 1;
        }
    }

    void pair_backwards() {
        std::size_t end = before_.size();  // the number before it is the next; 0: there is none
        for (std::size_t i = after_.size(); i-- > 0;) {
            if (end > 0) {
                pair(end - 1, i);
            }
            end = partners_[i] == kNone ? 0 : partners_[i];
        }
    }

    std::vector<std::size_t> before_;
    std::vector<std::size_t> after_;
    std::vector<bool> is_taken_;  // by number before the change
    std::vector<std::size_t> partners_;
};

}  // namespace

void MessageOrigins::add(const Texts& list, const KIVO_MESSAGE& message, std::string_view text) {
    if (list.size() != origins_.size()) {
        align(list);
    }
    Origin origin;
    origin.id = message.says.id;
    origin.mark = message.mark;
    origin.related = message.related;
    origin.known = message.known;
    origin.text_hash = hash_of(text);
    origin.words = words_.size();
    origin.element_size = message.element.size();
    origin.attribute_size = message.attribute.size();
    origin.word_size = message.word.size();
    origin.object_size = message.object.size();
    origin.reason_size = message.reason.size();
    for (const std::string_view word :
         {message.element, message.attribute, message.word, message.object, message.reason}) {
        words_ += word;
    }
    origins_.push_back(origin);
    if (!text_hashes_.empty()) {
        text_hashes_.insert(origin.text_hash);
    }
}

const MessageOrigins::Origin& MessageOrigins::find(const Texts& list, std::size_t index) {
    static constexpr Origin kHosts;
    if (index >= list.size()) {
        return kHosts;
    }
    const std::size_t hash = hash_of(list[index]);
    const bool has_changed =
        list.size() != origins_.size() || (origins_[index].text_hash != hash && has_text(hash));
    if (has_changed) {
        align(list);
    }
    return origins_[index].text_hash == hash ? origins_[index] : kHosts;
}

KIVO_MESSAGE_FACTS MessageOrigins::facts(const Origin& origin) const {
    std::size_t at = origin.words;
    const auto next = [&](std::size_t size) {
        at += size;
        return words_.substr(at - size, size);
    };
    KIVO_MESSAGE_FACTS facts;
    facts.element = next(origin.element_size);
    facts.attribute = next(origin.attribute_size);
    facts.word = next(origin.word_size);
    facts.object = next(origin.object_size);
    facts.reason = next(origin.reason_size);
    if (origin.known.gather != nullptr) {
        origin.known.gather(origin.known.part, facts.known_words);
    }
    facts.related = origin.related;
    return facts;
}

bool MessageOrigins::has_text(std::size_t text_hash) {
    if (text_hashes_.empty()) {
        for (const Origin& origin : origins_) {
            text_hashes_.insert(origin.text_hash);
        }
    }
    return text_hashes_.count(text_hash) != 0;
}

void MessageOrigins::append(Origin origin, std::string_view words) {
    origin.words = words_.size();
    words_ += words;
    origins_.push_back(origin);
}

void MessageOrigins::align(const Texts& list) {
    std::vector<std::size_t> before;
    std::vector<std::size_t> after;
    before.reserve(origins_.size());
    after.reserve(list.size());
    for (const Origin& origin : origins_) {
        before.push_back(origin.text_hash);
    }
    for (const std::string& text : list) {
        after.push_back(hash_of(text));
    }
    const Alignment alignment(std::move(before), after);
    MessageOrigins aligned;
    aligned.origins_.reserve(list.size());
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::size_t partner = alignment.partners()[i];
        Origin origin = partner == kNone ? Origin() : origins_[partner];
        origin.text_hash = after[i];
        const std::size_t size = origin.element_size + origin.attribute_size + origin.word_size +
                                 origin.object_size + origin.reason_size;
        aligned.append(origin, std::string_view(words_).substr(origin.words, size));
    }
    *this = std::move(aligned);
}
