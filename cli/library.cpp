#include "library.h"

#include <algorithm>
#include <new>
#include <utility>

#include "document.h"
#include "wrong_usage.h"

namespace zentor_cli {

std::string Report::Text() const {
    if (code == 0) return message;
    std::string text = "error " + std::to_string(code);
    if (!message.empty()) text += ": " + message;
    if (offset >= 0) text += " (at byte " + std::to_string(offset) + ")";
    return text;
}

namespace {

PluginFolder& LastFolder(void* list) { return static_cast<Converters*>(list)->pluginFolders.back(); }
PluginModule& LastModule(void* list) { return LastFolder(list).modules.back(); }
PluginConverter& LastConverter(void* list) { return LastModule(list).converters.back(); }

constexpr ZT_PluginCallbacks kListing{
    sizeof(ZT_PluginCallbacks),
    [](void* list, const char* path) {
        static_cast<Converters*>(list)->pluginFolders.push_back({path, {}, {}});
    },
    [](void* list, const char* path, const char* identifier, std::uint32_t problemCode, const char* problem) {
        LastFolder(list).modules.push_back({path, identifier, {problemCode, problem, -1, -1}, {}, {}});
    },
    [](void* list, const char* identifier, const char* name, double version, std::uint8_t isForced) {
        LastModule(list).converters.push_back({identifier, name, version, isForced != 0, {}, {}, {}});
    },
    [](void* list, const char* extension) { LastConverter(list).extensions.emplace_back(extension); },
    [](void* list, std::uint64_t offset, const char* bytes, std::uint64_t length) {
        LastConverter(list).signatures.push_back({offset, std::string(bytes, length)});
    },
    [](void* list, const char* path, std::uint32_t problemCode, const char* problem) {
        LastFolder(list).problems.push_back({path, {problemCode, problem, -1, -1}});
    },
    nullptr,
    [](void* list, const char* name) { LastConverter(list).parameters.emplace_back(name); },
};

// Of each thread: callbacks come on the one that called. A pointer alone: objects that have to be destroyed with their
// thread are not safe with every compiler.
thread_local Listener* current = nullptr;

std::uint8_t GoOn(void*, std::uint64_t done, std::uint64_t total) {
    if (current != nullptr && current->amount != nullptr) {
        current->amount->done = done;
        current->amount->total = total;
    }
    return zentor::os::IsStopWanted() ? 0 : 1;
}

// That a table is written otherwise than the built-in converter reads it.
bool IsOfDialect(std::uint32_t kind) { return kind >= ZT_NOTICE_DELIMITER && kind <= ZT_NOTICE_DATA_AS_NAMES; }

bool HasDialectNotice() {
    return std::any_of(current->notices.begin(), current->notices.end(),
                       [](const Notice& notice) { return IsOfDialect(notice.kind); });
}

void TakeNotice(void*, std::uint32_t kind, const char* message, std::uint64_t count, std::int64_t, std::int64_t line) {
    if (current == nullptr) return;
    if (kind == ZT_NOTICE_REASON) {
        current->reason = message;
    } else {
        const char* const hint = IsOfDialect(kind) && !HasDialectNotice() ? ", --as series finds out by itself" : "";
        current->notices.push_back({kind, message + std::string(hint), count, line});
    }
}

// Extras of an input that cannot be converted are a byte offset and a line; those of other failures may be anything.
bool HasPlaceInInput(std::uint32_t code) { return code == ZT_CONVERSION || code == ZT_FRAME_TIME; }

void TakeReport(void*, std::uint32_t code, const char* message, std::int64_t extra1, std::int64_t extra2) {
    if (current == nullptr) return;
    current->report = {code, {}, extra1, HasPlaceInInput(code) && extra2 > 0 ? extra2 : -1};
    current->report.reason.swap(current->reason);
    try {
        current->report.message = message;
    } catch (const std::bad_alloc&) {
        // The code has to do; nothing may be thrown through the library.
    }
}

void TakeMessage(void* text, const char* message, std::uint64_t length) {
    static_cast<std::string*>(text)->assign(message, length);
}

// The same, with the modules loaded.
constexpr ZT_PluginCallbacks kLoading = [] {
    ZT_PluginCallbacks callbacks = kListing;
    callbacks.setLoadResult = [](void* list, std::uint32_t code, const char* message, const char* diagnosis) {
        PluginModule::LoadResult& result = LastModule(list).loaded.emplace();
        result.report = {code, message, -1, -1};
        result.diagnosis = diagnosis;
    };
    return callbacks;
}();

}  // namespace

Listener::Listener() : outer_(current) { current = this; }

Listener::~Listener() { current = outer_; }

Library::Library(const std::string& locale, bool privateCopy) {
    suite_.addFormat = [](void* list, const char* extension, const char* displayName) {
        static_cast<Converters*>(list)->formats.push_back({extension, displayName});
    };
    options_.privateCopy = privateCopy ? 1 : 0;
    extensions_.options = &options_;
    extensions_.progress = &GoOn;
    extensions_.notice = &TakeNotice;
    suite_.extensions = &extensions_;
    suite_.localizedMessage = &TakeMessage;
    suite_.reportError = &TakeReport;
    TakeResults(suite_);
    CreateZentor_1(&manager_, nullptr, nullptr, locale.c_str(), this, &suite_, nullptr);
    if (manager_ == nullptr) throw LibraryFailure(listener_.report);
}

Library::~Library() { DestroyZentor_1(&manager_, this); }

void Library::Check(ZT_Result result) const {
    if (zentor::os::IsStopWanted()) throw Stopped();
    if (result == ZT_OK) return;
    throw LibraryFailure(current != nullptr && current->report.code == result ? current->report
                                                                              : Report{result, {}, -1, -1});
}

void Library::Fail(std::uint32_t code, const char* key) { throw LibraryFailure(Report{code, Message(key), -1, -1}); }

void Library::UseConverter(const std::string& name, const std::vector<std::string>& parameters) {
    const auto isCalled = [&name](const std::string& identifier) {
        return identifier == name || identifier.substr(identifier.rfind('.') + 1) == name;
    };
    const Converters converters = ListConverters();
    bool isKnown = name.empty();
    for (const Format& format : converters.formats) {
        // A built-in converter is called as its format's first extension.
        isKnown = isKnown || (format.extension != "vkjson" && isCalled("com.orvane.sensor." + format.extension));
    }
    for (const PluginFolder& folder : converters.pluginFolders) {
        for (const PluginModule& module : folder.modules) {
            for (const PluginConverter& converter : module.converters) {
                isKnown = isKnown || isCalled(converter.identifier);
            }
        }
    }
    if (!isKnown) throw WrongUsage("there is no converter \"" + name + "\"; zentor plugins lists those of plug-ins");
    parameters_ = parameters;
    for (const std::string& parameter : parameters_) {
        const std::size_t end = parameter.find('=');
        if (end == std::string::npos || end == 0) throw WrongUsage("--set takes KEY=VALUE, not " + parameter);
        parameterTexts_.push_back(parameter.c_str());
    }
    parameterTexts_.push_back(nullptr);
    converter_ = name;
    options_.converter = converter_.empty() ? nullptr : converter_.c_str();
    options_.parameters = parameterTexts_.data();
}

std::string Library::Message(const char* key) {
    std::string message;
    GetLocalizedErrorMsg_1(key, nullptr, nullptr, nullptr, nullptr, &message);
    return message;
}

std::vector<Notice> Library::TakeNotices() {
    return current == nullptr ? std::vector<Notice>() : std::exchange(current->notices, {});
}

void Library::ShowAmount(Amount* amount) {
    if (current != nullptr) current->amount = amount;
}

Converters Library::ListConverters(bool load) {
    Converters converters;
    extensions_.plugins = load ? &kLoading : &kListing;
    listener_.report = {};  // it has no result but its report
    GetSupportedFormats_1(&converters, this, &suite_);
    Check(listener_.report.code);
    return converters;
}

Stream::Stream(Library& library, const std::string& inputPath, bool validate) : library_(library) {
    library.Take([&] { return library.manager().ConvertFile(&stream_, inputPath.c_str(), validate ? 1 : 0); });
}

}  // namespace zentor_cli
