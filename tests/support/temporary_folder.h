#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

// A folder of its own for one test, deleted with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kivo-test-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    // The path of something in the folder; the folder itself, with a "/" at its end, for "".
    std::string path(std::string_view name) const { return (path_ / name).string(); }

    // Writes a file, replacing an earlier one of that name, and returns its path.
    std::string write(std::string_view name, std::string_view content) const {
        const std::string file_name = path(name);
        std::ofstream file(file_name, std::ios::binary);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        file.close();
        if (!file) {
            throw std::runtime_error("cannot write " + file_name);
        }
        return file_name;
    }

private:
    std::filesystem::path path_;
};
