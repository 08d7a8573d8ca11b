// Makes the page of a description, which a strict parser has to accept whatever texts stand in it.

#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/support/expect.h"
#include "fuzz/support/loaded.h"
#include "fuzz/support/xml_oracle.h"
#include "tools/doc/page.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    LoadedInput description(data, size);
    const std::string page = make_page(description.info(), "input_info.xml", {});
    const std::string refusal = xml_refusal(page);
    expect(refusal.empty(), "a page is well-formed XML", refusal);
    expect_same(page, make_page(description.info(), "input_info.xml", {}),
                "the same description gives the same page");
    return 0;
}
