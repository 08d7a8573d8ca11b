// Runs a driver over the files named on the command line, and over those in the folders named
// there.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> files_of(int count, char** names) {
    std::vector<std::filesystem::path> files;
    for (int i = 0; i < count; ++i) {
        if (!std::filesystem::is_directory(names[i])) {
            files.emplace_back(names[i]);
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(names[i])) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path());
            }
        }
    }
    return files;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::filesystem::path> files = files_of(argc - 1, argv + 1);
    if (files.empty()) {
        std::cerr << "usage: " << argv[0] << " FILE|FOLDER...\n";
        return 2;
    }
    for (const std::filesystem::path& path : files) {
        std::ifstream file(path, std::ios::binary);
        if (!file) {
            std::cerr << path << ": cannot be read\n";
            return 3;
        }
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    std::cout << files.size() << " inputs replayed\n";
    return 0;
}
