#include "tools/catalogue.h"

#include <algorithm>

namespace {

// clang-format off
const std::vector<MessageDescription> kCatalogue = {
    {"unknown-section", Severity::kError,
     R"(An element directly below ROOT is no section of a description. Nothing in it is read. Section
        tags are compared exactly, in upper case: correct the tag, or remove the element.)",
     R"(<ROOT>
  <PARAMETRS>
    <PARAMETER NAME="WIDTH" TYPE="INTEGER" VALUE="8"/>
  </PARAMETRS>
</ROOT>
)"},
};
// clang-format on

}  // namespace

const std::vector<MessageDescription>& message_catalogue() {
    return kCatalogue;
}

const MessageDescription* find_message(std::string_view id) {
    const auto found = std::find_if(kCatalogue.begin(), kCatalogue.end(),
                                    [id](const MessageDescription& row) { return row.id == id; });
    return found == kCatalogue.end() ? nullptr : &*found;
}
