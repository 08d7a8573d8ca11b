#include <iostream>

#include "kivo/kivo.h"
#include "kivo/session/session.h"

int main(int argc, char** argv) {
    KIVO_INFO info;
    if (argc != 2 || !info.process_xml_file(argv[1])) {
        return 2;
    }
    KIVO_SESSION session(info);
    const bool is_set = session.set("DEPTH", "128") == KIVO_SET_RESULT::kDone &&
                        session.set("STORAGE", "REGISTERS") == KIVO_SET_RESULT::kDone;
    for (const KIVO_VERDICT& verdict : session.verdicts()) {
        std::cout << info.get_place(verdict.mark).line << ": " << verdict.text << '\n';
    }
    const bool is_as_expected = is_set && !session.is_legal() && session.verdicts().size() == 1;
    info.delete_detached_objects();
    return is_as_expected ? 0 : 1;
}
