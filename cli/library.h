// The library as the command uses it: through its exports.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "util/console.h"
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

// The user has ended the command, and the library has cleaned up.
struct Stopped {};

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
    // What came of loading it.
    struct LoadResult {
        Report report;          // code 0: it can be used
        std::string diagnosis;  // for its author
    };

    std::string path;
    std::string identifier;
    Report problem;  // code 0: none
    std::vector<PluginConverter> converters;
    std::optional<LoadResult> loaded;  // none: that has not been tried
};

// A folder where modules are looked for.
struct PluginFolder {
    // A folder in it, or itself, that could not be looked into.
    struct Problem {
        std::string path;
        Report report;
    };

    std::string path;
    std::vector<Problem> problems;
    std::vector<PluginModule> modules;
};

// What there is to convert with.
struct Converters {
    std::vector<Format> formats;
    std::vector<PluginFolder> pluginFolders;  // the last one is that beside the library
};

// The manager, for as long as a command runs.
class Library {
public:
    Library(const std::string& locale, bool privateCopy);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    IZentor& manager() { return *manager_; }

    // Throws the latest report, or the code where there is none, unless `result` is success.
    void Check(ZT_Result result) const;
    // Throws a failure of the library's own that the command has found first.
    [[noreturn]] void Fail(std::uint32_t code, const char* key);

    // Lets the library work at `call` while the command writes nothing. An input that cannot be opened makes it say so
    // on standard output, where results belong; the failure is reported, too.
    template <class Call>
    void Take(Call&& call) {
        ZT_Result result = ZT_OK;
        {
            const zentor::os::OutputAside aside;
            result = call();
        }
        Check(result);
    }

    // How the library works from now on.
    ZT_HostOptions& options() { return options_; }

    // `load`: whether each module that can be used is loaded, too.
    Converters ListConverters(bool load = false);

private:
    static std::uint8_t GoOn(void*, std::uint64_t, std::uint64_t) { return zentor::os::IsStopWanted() ? 0 : 1; }
    static void TakeMessage(void* library, const char* text, std::uint64_t length);
    static void TakeReport(void* library, std::uint32_t code, const char* message, std::int64_t extra1,
                           std::int64_t extra2);

    ZT_HostOptions options_{};
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
