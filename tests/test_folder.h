// A folder of its own for one test, gone with it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace zentor_test {

inline std::filesystem::path PathOf(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

class TestFolder {
public:
    TestFolder() : path_(std::filesystem::temp_directory_path() / ("zentor-test-" + std::to_string(Random()))) {
        std::filesystem::create_directories(path_);
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    // The UTF-8 path of something in the folder.
    std::string operator/(const std::string& name) const { return Utf8Of(path_ / PathOf(name)); }
    std::string Path() const { return Utf8Of(path_); }

    std::string Write(const std::string& name, const std::string& content) const {
        std::ofstream(path_ / PathOf(name), std::ios::binary) << content;
        return *this / name;
    }

    std::size_t FileCount() const {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path_), {}));
    }

private:
    static std::uint64_t Random() {
        std::random_device device;
        return (std::uint64_t{device()} << 32) | device();
    }

    std::filesystem::path path_;
};

// The library's temporary files.
inline std::size_t TemporaryFiles() {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
        if (Utf8Of(entry.path().filename()).starts_with("ZTT")) ++count;
    }
    return count;
}

inline std::string ReadWhole(const std::string& path) {
    std::ifstream file(PathOf(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace zentor_test
