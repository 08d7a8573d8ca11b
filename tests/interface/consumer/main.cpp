#include "kivo/kivo.h"

#include <iostream>

int main() {
    KIVO_INFO info;
    const bool is_clean = info.process_xml_file("no/such/file.xml");
    info.reset_error_message_list();
    const std::string message = info.get_next_error_message();
    std::cout << message << '\n';
    return !is_clean && message == "XML source file no/such/file.xml not found" ? 0 : 1;
}
