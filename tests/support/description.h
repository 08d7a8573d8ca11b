#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kivo/kivo.h"
#include "tests/support/temporary_folder.h"

// The messages of the error list from its start to its end, as a host reads them. Leaves the list
// reset.
inline std::vector<std::string> messages_of(KIVO_INFO& info) {
    std::vector<std::string> messages;
    info.reset_error_message_list();
    for (std::string text = info.get_next_error_message(); !text.empty();
         text = info.get_next_error_message()) {
        messages.push_back(text);
    }
    info.reset_error_message_list();
    return messages;
}

// A store of which nothing outlives the test: what its destruction leaves alone goes too.
struct LoadedStore {
    LoadedStore() = default;
    LoadedStore(const LoadedStore&) = delete;
    LoadedStore& operator=(const LoadedStore&) = delete;
    ~LoadedStore() { info.delete_detached_objects(); }

    std::vector<std::string> messages() { return messages_of(info); }

    KIVO_INFO info;
};

// A store that has loaded one description, given by what stands inside its ROOT.
struct Loaded : LoadedStore {
    explicit Loaded(std::string_view sections) { clean = load(sections); }

    // Loads a further description into the same store; true when the error list is empty.
    bool load(std::string_view sections) {
        return load_document("<ROOT>" + std::string(sections) + "</ROOT>");
    }

    // The same for a whole document, with whatever root it has.
    bool load_document(std::string_view document) {
        return info.process_xml_file(folder.write("description.xml", document));
    }

    TemporaryFolder folder;
    bool clean = false;  // what the first load returned
};
