#include "kivo/session/internal/expression/author_notes.h"

#include <gtest/gtest.h>

#include <string>

#include "kivo/session/internal/model/from_store.h"
#include "kivo/session/internal/model/model.h"
#include "tests/support/description.h"

namespace {

using namespace kivo_session;

// A description to write notes about.
struct Described : Loaded {
    Described()
        : Loaded(
              "<PARAMETERS><PARAMETER NAME='W' TYPE='INTEGER' VALUE='8'/>"
              "<PARAMETER NAME='N' TYPE='INTEGER' VALUE='8'><FORCE_RANGE MIN='0' MAX='9'/>"
              "</PARAMETER>"
              "<PARAMETER NAME='S' TYPE='STRING' VALUE='AUTO;BLOCK'/>"
              "<PARAMETER NAME='FREE' TYPE='STRING' VALUE='AUTO'/></PARAMETERS>"
              "<PORTS><PORT NAME='q' TYPE='OUTPUT'/></PORTS>"
              "<MACROS><MACRO NAME='SQ' ARGUMENTS='n' DEFINITION='n * n'/>"
              "<MACRO NAME='SAFE' ARGUMENTS='n' DEFINITION='( (n) * (n) )'/>"
              "<MACRO NAME='SUM' DEFINITION='W + 1'/></MACROS>") {
        auto description = std::make_unique<Description>();
        read_store(info, *description);
        model = std::make_unique<Model>(std::move(description));
    }

    // "id offset+length; ..."
    std::string notes(const std::string& text) const {
        Expression expression;
        parse(text, expression);
        if (expression.fault) {
            return "fault";
        }
        Resolution resolution;
        NearSearches searches;
        resolve(text, expression.nodes, *model, {}, searches, resolution);
        std::string found;
        const auto add = [&found](const std::vector<Note>& notes) {
            for (const Note& note : notes) {
                found += (found.empty() ? "" : "; ") + std::string(note_name(note.id)) + " " +
                         std::to_string(note.offset) + "+" + std::to_string(note.length);
            }
        };
        add(notes_of_syntax(text, expression.nodes));
        add(notes_of_names(text, expression.nodes, resolution, *model, searches));
        return found;
    }

    std::unique_ptr<Model> model;
};

struct Row {
    const char* text;
    const char* expected;
};

}  // namespace

TEST(AuthorNotes, are_given_where_languages_read_differently_and_nowhere_else) {
    const Described described;
    for (const Row& row : std::initializer_list<Row>{
             {"W gt 1 and N lt 3", ""},
             {"W and N || W", "mixed-and-or 8+2"},
             {"W || N and W", "mixed-and-or 2+2"},
             {"( W and N ) || W", ""},
             {"-2 ^ 2", "sign-before-power 0+1"},
             {"-(2 ^ 2)", ""},
             {"(-2) ^ 2", ""},
             {"!W == 1", "not-before-comparison 0+1"},
             {"!( W == 1 )", ""},
             {"W % 2 + 1", "sign-of-remainder 2+1"},
             {"W % 2 == 0", ""},
             {"N % 2 + 1", ""},
             {"( N + 1 ) % 2", ""},
             {"( N - 1 ) % 2", "sign-of-remainder 10+1"},
             {"W mod 2", ""},
             {"S == AUTO", "bare-word 5+4"},
             {"q == USED", "bare-word 5+4"},
             {"S == \"AUTO\"", ""},
             {"W == \"x\"", "mixed-comparison 2+2"},
             {"W == \"8\"", ""},
             {"W lt \"x\"", "mixed-comparison 2+2"},
             {"W == ON", "mixed-comparison 2+2"},
             {"\"8\" lt W", ""},
             {"S == \"x\"", "text-not-in-list 5+3"},
             {"\"auto\" != S", "text-not-in-list 0+6"},
             {"S == 8", "text-not-in-list 5+1"},
             {"S == OFF", "text-not-in-list 5+3"},
             {"FREE == \"x\"", ""},
             {"S == FREE", ""},
             {"ceil(W / 2)", "ceil-of-integer 0+4"},
             {"ceil(W / 2.0)", ""},
             {"ceil(log(W) / log(2))", ""},
             {"SQ(W + 1)", "macro-precedence 3+5"},
             {"SQ((W + 1))", ""},
             {"SQ(W)", ""},
             {"SAFE(W + 1)", ""},
             {"2 * SUM", "macro-precedence 4+3"},
             {"2 * ( SUM )", ""},
             {"SUM + 2", ""},
             {"(W lt(N))", "translator-blind 3+2"},
             {"W\tgt 1", "translator-blind 2+2"},
             {"W GT 1", ""},
             {"W<1||N>2", ""},
         }) {
        EXPECT_EQ(described.notes(row.text), row.expected) << row.text;
    }
}
