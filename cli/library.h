// The library as the command uses it: through its exports.
#pragma once

#include <atomic>
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
    std::int64_t offset = -1;  // in bytes; -1: none
    std::int64_t line = -1;    // of the input, from 1 on; -1: none
    std::string reason = {};   // of a plug-in that refuses the input, in its own words

    // "error 32: Parsing error. (at byte 7)", or the message alone of a failure of the command's own
    std::string Text() const;
};

// A failure of the library: "error 25: File Format Not Supported.", or the command's own.
class LibraryFailure : public std::runtime_error {
public:
    explicit LibraryFailure(const std::string& text) : std::runtime_error(text), report_{0, text, -1, -1} {}
    explicit LibraryFailure(const Report& report) : std::runtime_error(report.Text()), report_(report) {}

    const Report& report() const { return report_; }

private:
    Report report_;
};

// The user has ended the command, and the library has cleaned up.
struct Stopped {};
// Nobody reads the results any more.
struct OutputClosed {};

// What a conversion has changed or left out.
struct Notice {
    std::uint32_t kind;
    std::string message;
    std::uint64_t count;
    std::int64_t line;  // the first; -1: not known
};

// How far the library is with what it does for one thread.
struct Amount {
    std::atomic<std::uint64_t> done{0};
    std::atomic<std::uint64_t> total{0};  // 0: not known
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
    std::vector<std::string> parameters;
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

// Takes what the library tells the thread that made it, as long as it lives. Threads without one hear nothing.
class Listener {
public:
    Listener();
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    Report report;  // the latest
    std::vector<Notice> notices;
    std::string reason;        // of the failure that comes next
    Amount* amount = nullptr;  // null: nobody wants to know

private:
    Listener* outer_;
};

// The manager, for as long as a command runs.
class Library {
public:
    Library(const std::string& locale, bool privateCopy);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    IZentor& manager() { return *manager_; }

    // Throws the thread's latest report, or the code where there is none, unless `result` is success.
    void Check(ZT_Result result) const;
    // The notices of what the thread has converted since the last call.
    static std::vector<Notice> TakeNotices();
    // From now on says how far the thread's work is; null: no more.
    static void ShowAmount(Amount* amount);
    // Throws a failure of the library's own that the command has found first.
    [[noreturn]] void Fail(std::uint32_t code, const char* key);
    // The library's text of a key.
    std::string Message(const char* key);

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
    // Has every input converted by one converter. Throws WrongUsage when there is none of that name, or a parameter has
    // another form.
    void UseConverter(const std::string& name, const std::vector<std::string>& parameters);

    // `load`: whether each module that can be used is loaded, too.
    Converters ListConverters(bool load = false);

private:
    Listener listener_;
    ZT_HostOptions options_{};
    std::string converter_;
    std::vector<std::string> parameters_;
    std::vector<const char*> parameterTexts_;
    ZT_HostExtensions extensions_{};
    ZT_HostSuite suite_{};
    IZentor* manager_ = nullptr;
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
