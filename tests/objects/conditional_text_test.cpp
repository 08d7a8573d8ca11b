#include "kivo/objects/conditional_text.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>

#include "kivo/objects/rule_element.h"
#include "kivo/objects/text_obj.h"
#include "tests/support/extent.h"
#include "tests/support/memory_shortage.h"

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

TEST(ConditionalTextObject, pieces_go_with_their_sequence_whatever_its_list_holds_by_then) {
    int destructions = 0;
    {
        KIVO_CONDITIONAL_TEXT emptied;
        emptied.add_owned_piece(new Piece(destructions));
        emptied.add_owned_piece(new Piece(destructions));
        emptied.text_elements = KIVO_OBJ_LIST();
    }
    EXPECT_EQ(destructions, 2);
    Piece foreign(destructions);
    {
        KIVO_CONDITIONAL_TEXT edited;
        auto* const first = new Piece(destructions);
        auto* const second = new Piece(destructions);
        edited.add_owned_piece(first);
        edited.add_owned_piece(second);
        edited.text_elements = KIVO_OBJ_LIST();
        edited.text_elements.add_at_tail(&foreign);
        edited.text_elements.add_at_tail(second);
        delete first;
    }
    EXPECT_EQ(destructions, 4);
}

TEST(ConditionalTextObject, text_that_is_met_twice_is_deleted_once) {
    int destructions = 0;
    {
        KIVO_CONDITIONAL_TEXT sequence;
        auto* const shared = new Piece(destructions);
        auto* const piece = new Piece(destructions);
        sequence.add_owned_piece(shared);
        sequence.add_owned_piece(piece);
        sequence.add_owned_piece(shared);
        piece->then_sub = shared;
        piece->else_sub = shared;
        shared->then_sub = piece;
        shared->else_sub = &sequence;
        sequence.then_sub = &sequence;
    }
    EXPECT_EQ(destructions, 2);
}

TEST(ConditionalTextObject, piece_of_two_sequences_is_the_later_ones) {
    int destructions = 0;
    {
        KIVO_CONDITIONAL_TEXT later;
        {
            KIVO_CONDITIONAL_TEXT earlier;
            auto* const piece = new Piece(destructions);
            earlier.add_owned_piece(piece);
            later.add_owned_piece(piece);
        }
        EXPECT_EQ(destructions, 0);
        EXPECT_NE(later.get_next_text_element(), nullptr);
    }
    EXPECT_EQ(destructions, 1);
}

TEST(ConditionalTextObject, piece_for_which_there_is_no_room_stays_the_callers) {
    int destructions = 0;
    {
        KIVO_CONDITIONAL_TEXT sequence;
        sequence.add_owned_piece(new Piece(destructions));
        sequence.add_owned_piece(new Piece(destructions));
        const auto piece = std::make_unique<Piece>(destructions);
        const MemoryShortage shortage(0);
        EXPECT_THROW(sequence.add_owned_piece(piece.get()), std::bad_alloc);
    }
    EXPECT_EQ(destructions, 3);
}

TEST(TextObject, everything_is_empty_at_first) {
    const KIVO_TEXT_OBJ text;
    EXPECT_EQ(text.title, "");
    EXPECT_EQ(text.header, "");
    EXPECT_EQ(text.intro, nullptr);
    EXPECT_EQ(text.end, nullptr);
}

TEST(TextObject, deletes_a_sequence_once_that_is_both_introduction_and_end) {
    int destructions = 0;
    {
        KIVO_TEXT_OBJ text;
        text.intro = new Piece(destructions);
        text.end = text.intro;
    }
    EXPECT_EQ(destructions, 1);
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
