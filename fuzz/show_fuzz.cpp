// Prints a description as JSON, which a parser has to read back with all that the store holds.

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "fuzz/support/expect.h"
#include "fuzz/support/loaded.h"
#include "fuzz/support/store_walk.h"
#include "tools/show/parts.h"

namespace {

bool is_printable(const std::string& text) {
    for (const char letter : text) {
        if (letter != '\n' && (letter < ' ' || letter > '~')) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    LoadedInput description(data, size);
    KIVO_INFO& info = description.info();
    const std::string text = show_json(info, "input_info.xml");
    expect(is_printable(text), "JSON output is plain ASCII");
    const auto json = nlohmann::json::parse(text, nullptr, false);
    expect(!json.is_discarded(), "JSON output can be read");
    const StoreCounts counts = count_store(info);
    expect(json["object_map"].size() == counts.objects, "every object is shown");
    expect(json["fn_rule_list"].size() == counts.rules, "every rule is shown");
    expect(json["message_list"].size() == counts.messages, "every message is shown");
    expect(json["vector_map"].size() == counts.vectors, "every vector is shown");
    expect(json["error_list"].size() == info.error_list.size(), "every error is shown");
    return 0;
}
