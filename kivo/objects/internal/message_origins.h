#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "kivo/objects/internal/message.h"
#include "kivo/objects/message_facts.h"

// Where the messages of a list came from and what they are about. The list is the host's too, which
// may do to it what it likes, so each origin remembers its text and is looked for by it; what
// belongs to no origin is the host's. Looking costs little when the list is as it was; after a
// change of its length or order the first call goes through all of it.
class MessageOrigins {
public:
    using Texts = std::vector<std::string>;

    struct Origin {
        MessageId id = MessageId::kHostMessage;
        KIVO_MARK mark;
        KIVO_MARK related;
        KnownWords known;
        std::size_t text_hash = 0;
        // The words stand one after another: element, attribute, word, object, reason.
        std::size_t words = 0;
        std::size_t element_size = 0;
        std::size_t attribute_size = 0;
        std::size_t word_size = 0;
        std::size_t object_size = 0;
        std::size_t reason_size = 0;
    };

    // For a message that is about to be appended to the list with that text.
    void add(const Texts& list, const KIVO_MESSAGE& message, std::string_view text);

    // The origin of message number "index", one of the host's for a number beyond the list. Stays
    // valid until the next call.
    const Origin& find(const Texts& list, std::size_t index);

    KIVO_MESSAGE_FACTS facts(const Origin& origin) const;

private:
    void align(const Texts& list);
    bool has_text(std::size_t text_hash);
    void append(Origin origin, std::string_view words);

    std::vector<Origin> origins_;  // of the messages as the list was when it was last looked at
    std::string words_;            // of all origins: one by one they would take several times that
    std::unordered_set<std::size_t> text_hashes_;  // of all origins, or empty until asked for
};
