// The library as the command uses it: through its exports.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "zentor/zentor.h"

namespace zentor_cli {

// What the library reports of a failure.
struct Report {
    std::uint32_t code = 0;  // 0: the command's own failure
    std::string message;
    std::int64_t offset = -1;  // in bytes, in the document; -1: none

    // "error 32: Parsing error. (at byte 7)"
    std::string Text() const;
};

// A failure of the library: "error 25: File Format Not Supported.", or the command's own.
class LibraryFailure : public std::runtime_error {
public:
    explicit LibraryFailure(const std::string& text) : std::runtime_error(text), report_{0, text, -1} {}
    explicit LibraryFailure(const Report& report) : std::runtime_error(report.Text()), report_(report) {}

    const Report& report() const { return report_; }

private:
    Report report_;
};

struct Format {
    std::string extension;
    std::string displayName;
};

// A converter of a plug-in module.
struct PluginConverter {
    struct Signature {
        std::uint64_t offset;
        std::string bytes;
    };

    std::string identifier;
    std::string name;
    double version;
    bool isForced;
    std::vector<std::string> extensions;
    std::vector<Signature> signatures;
};

struct PluginModule {
    std::string path;
    std::string identifier;
    Report problem;  // code 0: none
    std::vector<PluginConverter> converters;
};

// What there is to convert with.
struct Converters {
    std::vector<Format> formats;
    std::string pluginFolder;
    std::vector<PluginModule> plugins;
};

// The manager, for as long as a command runs.
class Library {
public:
    explicit Library(const std::string& locale);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    IZentor& manager() { return *manager_; }

    // Throws the latest report, or the code where there is none, unless `result` is success.
    void Check(ZT_Result result) const;
    // Throws a failure of the library's own that the command has found first.
    [[noreturn]] void Fail(std::uint32_t code, const char* key);

    Converters ListConverters();

private:
    static void TakeMessage(void* library, const char* text, std::uint64_t length);
    static void TakeReport(void* library, std::uint32_t code, const char* message, std::int64_t extra1,
                           std::int64_t extra2);

    ZT_HostExtensions extensions_{};
    ZT_HostSuite suite_{};
    IZentor* manager_ = nullptr;
    Report report_;
    std::string message_;
};

// A converted document.
class Stream {
public:
    Stream(Library& library, const std::string& inputPath, bool validate);
    ~Stream() { library_.manager().ReleaseStream(&stream_); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    IVkjsonStream* operator->() { return stream_; }

private:
    Library& library_;
    IVkjsonStream* stream_ = nullptr;
};

}  // namespace zentor_cli
