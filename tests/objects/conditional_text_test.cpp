#include "kivo/objects/conditional_text.h"

#include <gtest/gtest.h>

#include "kivo/objects/rule_element.h"
#include "kivo/objects/text_obj.h"
#include "tests/support/extent.h"

TEST(ConditionalTextObject, everything_is_empty_at_first) {
    KIVO_CONDITIONAL_TEXT text;
    EXPECT_EQ(text.condition, "");
    EXPECT_EQ(text.then_text, "");
    EXPECT_EQ(text.else_text, "");
    EXPECT_EQ(text.then_sub, nullptr);
    EXPECT_EQ(text.else_sub, nullptr);
    EXPECT_EQ(text.get_next_text_element(), nullptr);
}

TEST(ConditionalTextObject, walk_gives_the_pieces_and_then_null) {
    KIVO_CONDITIONAL_TEXT first;
    KIVO_CONDITIONAL_TEXT second;
    KIVO_CONDITIONAL_TEXT sequence;
    sequence.text_elements.add_at_tail(&first);
    sequence.text_elements.add_at_tail(&second);
    for (int walk = 0; walk < 2; ++walk) {
        sequence.text_elements.reset();
        EXPECT_EQ(sequence.get_next_text_element(), &first);
        EXPECT_EQ(sequence.get_next_text_element(), &second);
        EXPECT_EQ(sequence.get_next_text_element(), nullptr);
        EXPECT_EQ(sequence.get_next_text_element(), nullptr);
    }
}

TEST(ConditionalTextObject, walk_gives_null_for_something_else) {
    KIVO_RULE_ELEMENT stranger;
    KIVO_CONDITIONAL_TEXT sequence;
    sequence.text_elements.add_at_tail(&stranger);
    EXPECT_EQ(sequence.get_next_text_element(), nullptr);
}

namespace {

// Counts its destructions.
class Piece : public KIVO_CONDITIONAL_TEXT {
public:
    explicit Piece(int& destructions) : destructions_(destructions) {}
    ~Piece() override { ++destructions_; }

private:
    int& destructions_;
};

}  // namespace

TEST(ConditionalTextObject, deletes_its_nested_sequences) {
    int destructions = 0;
    {
        KIVO_CONDITIONAL_TEXT piece;
        piece.then_sub = new Piece(destructions);
        piece.else_sub = new Piece(destructions);
        piece.else_sub->then_sub = new Piece(destructions);
    }
    EXPECT_EQ(destructions, 3);
}

TEST(ConditionalTextObject, leaves_pieces_alone_that_somebody_else_appended) {
    int destructions = 0;
    Piece piece(destructions);
    {
        KIVO_CONDITIONAL_TEXT sequence;
        sequence.text_elements.add_at_tail(&piece);
    }
    EXPECT_EQ(destructions, 0);
}

TEST(ConditionalTextObject, deletes_the_pieces_that_it_owns_and_no_others) {
    int owned = 0;
    int foreign = 0;
    Piece piece(foreign);
    {
        KIVO_CONDITIONAL_TEXT sequence;
        sequence.add_owned_piece(new Piece(owned));
        sequence.add_owned_piece(new Piece(owned));
        sequence.text_elements.add_at_tail(&piece);
        EXPECT_NE(sequence.get_next_text_element(), nullptr);
    }
    EXPECT_EQ(owned, 2);
    EXPECT_EQ(foreign, 0);
}

TEST(ConditionalTextObject, chain_of_nested_sequences_is_released_whatever_its_length) {
    constexpr int kLength = static_cast<int>(kVeryMany);
    int destructions = 0;
    on_small_stack([&] {
        KIVO_CONDITIONAL_TEXT top;
        KIVO_CONDITIONAL_TEXT* last = &top;
        for (int i = 0; i < kLength; ++i) {
            KIVO_CONDITIONAL_TEXT*& sub = i % 2 == 0 ? last->then_sub : last->else_sub;
            sub = new Piece(destructions);
            last = sub;
        }
    });
    EXPECT_EQ(destructions, kLength);
}

TEST(TextObject, everything_is_empty_at_first) {
    const KIVO_TEXT_OBJ text;
    EXPECT_EQ(text.title, "");
    EXPECT_EQ(text.header, "");
    EXPECT_EQ(text.intro, nullptr);
    EXPECT_EQ(text.end, nullptr);
}

TEST(TextObject, deletes_its_sequences) {
    int destructions = 0;
    {
        KIVO_TEXT_OBJ text;
        text.intro = new Piece(destructions);
        text.end = new Piece(destructions);
    }
    EXPECT_EQ(destructions, 2);
}
