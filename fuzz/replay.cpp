// Runs a driver over the files named on the command line.

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " FILE...\n";
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        if (!file) {
            std::cerr << argv[i] << ": cannot be read\n";
            return 3;
        }
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::cout << argc - 1 << " inputs replayed\n";
    return 0;
}
