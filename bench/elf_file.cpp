#include "elf_file.h"

#include <elf.h>
#include <cstring>
#include <fstream>
#include <iterator>

#include "comparison.h"

StartWork read_start_work(const std::string& library) {
    std::ifstream file(library, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    Elf64_Ehdr header;
    require(bytes.size() > sizeof header && bytes.compare(0, SELFMAG, ELFMAG) == 0,
            "the library is no ELF file");
    std::memcpy(&header, bytes.data(), sizeof header);
    StartWork work;
    for (std::size_t i = 0; i < header.e_shnum; ++i) {
        Elf64_Shdr section;
        const std::size_t at = header.e_shoff + i * header.e_shentsize;
        require(at + sizeof section <= bytes.size(), "the library is cut off");
        std::memcpy(&section, bytes.data() + at, sizeof section);
        if (section.sh_type == SHT_RELA) {
            work.relocations += section.sh_size / section.sh_entsize;
        } else if (section.sh_type == SHT_INIT_ARRAY) {
            work.constructors += section.sh_size / sizeof(Elf64_Addr);
        }
    }
    require(work.constructors > 0, "the library has no initialisation at all");
    --work.constructors;
    return work;
}
