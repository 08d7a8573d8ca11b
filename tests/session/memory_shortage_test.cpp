#include "tests/support/memory_shortage.h"

#include <gtest/gtest.h>

#include <new>

#include "kivo/session/sense.h"
#include "tests/session/asked.h"
#include "tests/session/fixture.h"

namespace {

// The long runs refuse every single piece of memory; the daily one takes samples.
#if defined(KIVO_STRESS) || defined(__SANITIZE_ADDRESS__)
constexpr std::size_t kStep = 1;
#else
constexpr std::size_t kStep = 13;
#endif

std::string description() {
    return in("PARAMETERS",
              integer("A", "VALUE='1'",
                      "<FORCE_VALUE V='B + 1' IF='B gt 3'/><FORCE_RANGE MAX='7'/>") +
                  integer("B", "VALUE='1'", "<FORCE_VALUE V='A' IF='A gt 5'/>") + integer("U", "") +
                  "<PARAMETER NAME='a text of some length' TYPE='STRING' VALUE='one;two'/>") +
           in("PORTS",
              "<PORT NAME='a port with a long name' TYPE='INPUT' WIDTH='A'>"
              "<STATE V='CONSTANT' IF='B == 2'/><FORCE_VALUE V='U' IF='U gt 1'/></PORT>") +
           in("MACROS", "<MACRO NAME='M' ARGUMENTS='x' DEFINITION='x / U + A'/>") +
           in("RULES", "<RULE>M(B) gt 1</RULE><RULE>A +</RULE><RULE>NOBODY</RULE>") +
           in("WIZARD_DATA", "<WIZARD_MAP NAME='m'>" + integer("A", "VALUE='4'") + "</WIZARD_MAP>");
}

// Counted alone: what is asked must not depend on how fast it is answered.
constexpr KIVO_EFFORT kLittle = {40, 4, 1000000};
constexpr std::size_t kMost = 100;

void change(KIVO_SESSION& session) {
    session.set("A", "9");
    session.set_all({{"B", "4"}, {"a text of some length", "something that it has never been"}});
    session.select_map("m");
    session.set("a port with a long name", "CONSTANT:5");
}

// All that a host can do with a session but for the questions, whatever comes of it.
void use(KIVO_INFO& store) {
    KIVO_SESSION session(store);
    change(session);
    KIVO_SESSION other = session.fork();
    other.unset("B");
    other.set("U", "2");
    static_cast<void>(everything(other, store));
    session.evaluate("M(1) == \"a text of its own\" or U");
    session.holds("U gt 1 / 0");
    session.nearest_name("a text of some lenght");
    session.take_changes();
    kivo_judge_sense(session, {2000, 20, 2000});
    kivo_store_results(session, store);
    session = std::move(other);
}

// What a use needs to be refused nothing any more, in pieces.
template <class Use>
std::size_t refuse_all(Refusal refusal, Use use) {
    for (std::size_t pieces = 0;; pieces += kStep) {
        const std::ptrdiff_t before = living_pieces();
        bool came = false;
        {
            MemoryShortage shortage(pieces, refusal);
            try {
                use();
            } catch (const std::bad_alloc&) {
            }
            came = shortage.came();
        }
        EXPECT_EQ(living_pieces(), before) << pieces;
        if (!came) {
            return pieces;
        }
    }
}

}  // namespace

TEST(SessionMemoryShortage, leaves_nothing_behind_whichever_piece_is_refused) {
    Loaded store(description());
    const auto use_it = [&store] { use(store.info); };
    use_it();
    EXPECT_GT(refuse_all(Refusal::kOnce, use_it), 200u);
    EXPECT_GT(refuse_all(Refusal::kFromThenOn, use_it), 200u);
}

TEST(SessionMemoryShortage, questions_leave_nothing_behind_whichever_piece_is_refused) {
    Loaded store(description());
    const auto ask = [&store] {
        KIVO_SESSION session(store.info);
        change(session);
        static_cast<void>(answers(session, store.info, kLittle, kMost));
    };
    ask();
    EXPECT_GT(refuse_all(Refusal::kOnce, ask), 2000u);
    EXPECT_GT(refuse_all(Refusal::kFromThenOn, ask), 2000u);
}

// A host that catches may ask again.
TEST(SessionMemoryShortage, a_question_that_was_refused_memory_can_be_asked_again) {
    Loaded store(description());
    KIVO_SESSION asked(store.info);
    change(asked);
    const std::string before = everything(asked, store.info);
    const std::string expected = answers(asked, store.info, kLittle, kMost);
    bool came = true;
    for (std::size_t pieces = 0; came; pieces += kStep * 3) {
        const KIVO_SESSION session = asked.fork();
        {
            MemoryShortage shortage(pieces);
            try {
                static_cast<void>(answers(session, store.info, kLittle, kMost));
            } catch (const std::bad_alloc&) {
            }
            came = shortage.came();
        }
        ASSERT_EQ(everything(session, store.info), before) << pieces;
        ASSERT_EQ(answers(session, store.info, kLittle, kMost), expected) << pieces;
    }
}

// A host that catches may go on with what it has: a fork that was made before is as it was.
TEST(SessionMemoryShortage, a_fork_is_not_touched_by_what_befalls_the_other) {
    Loaded store(description());
    const KIVO_SESSION kept(store.info);
    const std::string before = everything(kept, store.info);
    for (std::size_t pieces = 0; pieces < 60; ++pieces) {
        KIVO_SESSION other = kept.fork();
        {
            MemoryShortage shortage(pieces);
            try {
                other.set_all(
                    {{"A", "9"}, {"B", "4"}, {"a text of some length", "another, longer one"}});
                other.select_map("m");
            } catch (const std::bad_alloc&) {
            }
        }
        ASSERT_EQ(everything(kept, store.info), before);
    }
}
