#include "tools/lint/rooms.h"

namespace {

// clang-format off
constexpr LintRow kForeignRoot = {
    "foreign-root", "the root of the file is {} and not ROOT: nothing of the file is read"};
// clang-format on

}  // namespace

void find_foreign_roots(Lint& lint) {
    for (const Document& document : lint.documents()) {
        const DocumentElement* const root = document.root();
        if (root != nullptr && root->tag != "ROOT") {
            Finding& finding = lint.post(kForeignRoot, *root, document.place(*root), root->tag);
            add_likely_word(finding, root->tag, {"ROOT"});
        }
    }
}
