#include "fuzz/support/description_mutator.h"

#include <pugixml.hpp>
#include <random>
#include <sstream>
#include <vector>

namespace {

enum class WordKind { tag, attribute, word, text };

struct WordRow {
    WordKind kind;
    const char* word;
};

constexpr WordRow kWords[] = {
#include "words.inc"
};

class Mutation {
public:
    Mutation(pugi::xml_document& document, std::uint32_t seed, const TextMutator& mutate_text)
        : document_(document), random_(seed), mutate_text_(mutate_text) {
        collect();
    }

    void apply() {
        using Change = void (Mutation::*)(pugi::xml_node);
        static constexpr Change kChanges[] = {
            &Mutation::add_element, &Mutation::add_element,   &Mutation::double_element,
            &Mutation::move,        &Mutation::remove,        &Mutation::rename,
            &Mutation::set_value,   &Mutation::set_value,     &Mutation::remove_attribute,
            &Mutation::set_text,    &Mutation::mutate_values, &Mutation::mutate_values};
        if (!elements_.empty()) {
            (this->*kChanges[below(std::size(kChanges))])(any_element());
        } else {
            document_.append_child("ROOT");
        }
    }

private:
    void collect() {
        for (pugi::xml_node node = document_.first_child(); node;) {
            if (node.type() == pugi::node_element) {
                elements_.push_back(node);
            }
            if (node.first_child()) {
                node = node.first_child();
                continue;
            }
            while (node && !node.next_sibling()) {
                node = node.parent();
            }
            node = node.next_sibling();
        }
    }

    std::size_t below(std::size_t count) { return random_() % count; }

    pugi::xml_node any_element() { return elements_[below(elements_.size())]; }

    const char* any_word(WordKind kind) {
        const char* found = "";
        while (*found == '\0') {
            const WordRow& row = kWords[below(std::size(kWords))];
            found = row.kind == kind ? row.word : "";
        }
        return found;
    }

    // Of the dictionary, or of an attribute elsewhere: names that meet are what rules speak of.
    std::string any_value() {
        const pugi::xml_attribute elsewhere = any_element().first_attribute();
        switch (below(4)) {
            case 0:
                return any_word(WordKind::word);
            case 1:
                return any_word(WordKind::text);
            case 2:
                return mutate_text_(elsewhere.value());
            default:
                return elsewhere.value();
        }
    }

    void add_element(pugi::xml_node parent) {
        pugi::xml_node added = below(2) == 0 ? parent.append_child(any_word(WordKind::tag))
                                             : parent.prepend_child(any_word(WordKind::tag));
        const std::size_t contents = below(4);
        if (contents % 2 == 1) {
            added.append_attribute(any_word(WordKind::attribute)) = any_value().c_str();
        }
        if (contents > 1) {
            added.text() = any_value().c_str();
        }
    }

    void double_element(pugi::xml_node element) {
        element.parent().insert_copy_after(element, element);
    }

    void move(pugi::xml_node element) {
        const pugi::xml_node target = any_element();
        // A copy, since an element cannot go into itself.
        pugi::xml_node(target).append_copy(element);
        if (below(2) == 0) {
            remove(element);
        }
    }

    void remove(pugi::xml_node element) { element.parent().remove_child(element); }

    void rename(pugi::xml_node element) { element.set_name(any_word(WordKind::tag)); }

    void set_value(pugi::xml_node element) {
        const char* const name = any_word(WordKind::attribute);
        pugi::xml_attribute attribute = element.attribute(name);
        if (!attribute) {
            attribute = element.append_attribute(name);
        }
        attribute = any_value().c_str();
    }

    void remove_attribute(pugi::xml_node element) {
        element.remove_attribute(element.first_attribute());
    }

    void set_text(pugi::xml_node element) { element.text() = any_value().c_str(); }

    void mutate_values(pugi::xml_node element) {
        std::vector<pugi::xml_attribute> attributes(element.attributes_begin(),
                                                    element.attributes_end());
        const std::size_t chosen = below(attributes.size() + 1);
        if (chosen < attributes.size()) {
            attributes[chosen] = mutate_text_(attributes[chosen].value()).c_str();
        } else {
            element.text() = mutate_text_(element.text().get()).c_str();
        }
    }

    pugi::xml_document& document_;
    std::minstd_rand random_;
    const TextMutator& mutate_text_;
    std::vector<pugi::xml_node> elements_;
};

}  // namespace

std::optional<std::string> mutate_description(std::string_view text, std::uint32_t seed,
                                              const TextMutator& mutate_text) {
    pugi::xml_document document;
    // As it stands: escapes and what a parser leaves out are a part of the input.
    if (!document.load_buffer(text.data(), text.size(), pugi::parse_full | pugi::parse_fragment,
                              pugi::encoding_utf8)) {
        return std::nullopt;
    }
    Mutation(document, seed, mutate_text).apply();
    std::ostringstream out;
    document.save(out, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
    return out.str();
}
