// Files of this process in the folder for temporary files.
#pragma once

#include <unistd.h>

#include <string>
#include <string_view>

#include "document.h"
#include "files/file_io.h"

namespace zentor_fuzz {

inline std::string PathFor(const char* name) {
    return zentor::File_IO::TempFolder() + "/zentor-fuzz-" + std::to_string(getpid()) + name;
}

inline std::string ReadFile(const std::string& path) {
    const zentor::FileCloser file(zentor::File_IO::Open(path, true, zentor::Access::kRead));
    std::string bytes(zentor::File_IO::Length(file.get()), '\0');
    Require(zentor::File_IO::Read(file.get(), bytes.data(), bytes.size()) == bytes.size());
    return bytes;
}

inline void WriteFile(const std::string& path, std::string_view bytes) {
    zentor::File_IO::Create(path);
    const zentor::FileCloser file(zentor::File_IO::Open(path, true, zentor::Access::kReadWrite));
    if (!bytes.empty()) zentor::File_IO::Write(file.get(), bytes.data(), bytes.size());
}

// A fault of an input has its place.
inline void RequireRefusal(const auto& failure, std::uint32_t expectedCode, std::string_view input) {
    Require(failure.code() == expectedCode);
    Require(failure.extra1() >= 0 && static_cast<std::size_t>(failure.extra1()) <= input.size());
    Require(failure.extra2() >= 1 && static_cast<std::size_t>(failure.extra2()) <= input.size() + 1);
}

}  // namespace zentor_fuzz
