// The exported functions and the manager's life.
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

#include "conversion/plugin/plugin_host.h"
#include "conversion/plugin/services.h"
#include "entry/format_list.h"
#include "entry/zentor_impl.h"
#include "errors/dictionary/dictionary.h"
#include "errors/host_boundary.h"
#include "errors/last_exception.h"
#include "errors/locale.h"
#include "errors/message.h"
#include "errors/raise.h"
#include "model/live_objects.h"

namespace zentor {

namespace {

std::mutex managerMutex;
std::unique_ptr<ZentorImpl> manager;
std::uint64_t instanceCount = 0;
// The last release ends the manager outside the lock, which what it ends may need; nobody makes another meanwhile.
std::condition_variable managerReleased;
std::thread::id releasingThread;  // nobody: the default

bool IsReleasing() { return releasingThread != std::thread::id(); }

[[noreturn]] void RefuseManager() { Raise(kInvalidPointer, Quoted("IZentor")); }

IZentor* AcquireManager(const char* locale, const void* hostTable1, const void* hostTable2) {
    std::unique_lock lock(managerMutex);
    if (releasingThread == std::this_thread::get_id()) RefuseManager();  // a plug-in that is being ended asks
    managerReleased.wait(lock, [] { return !IsReleasing(); });
    if (!manager) {
        ForgetPlugins();  // those that were looked at without a manager
        SetLocale(locale);
        ReleaseDictionary();
        SetHostTables(hostTable1, hostTable2);
        manager = std::make_unique<ZentorImpl>();
    }
    ++instanceCount;
    return manager.get();
}

// The end of a release: locale and messages are again those of the beginning, and others may make a manager.
class ReleaseScope {
public:
    ReleaseScope() = default;
    ~ReleaseScope() {
        SetLocale(nullptr);
        ReleaseDictionary();
        const std::lock_guard lock(managerMutex);
        releasingThread = {};
        managerReleased.notify_all();
    }
    ReleaseScope(const ReleaseScope&) = delete;
    ReleaseScope& operator=(const ReleaseScope&) = delete;
};

// Nulls the host's pointer as soon as the manager is given back, whatever plug-ins say to their end.
void ReleaseManager(IZentor*& released) {
    std::unique_ptr<ZentorImpl> last;
    {
        const std::lock_guard lock(managerMutex);
        if (released == nullptr || released != manager.get()) RefuseManager();
        if (instanceCount == 1 && CallScope::IsInAny()) RefuseManager();  // a callback of one of its operations
        released = nullptr;
        if (--instanceCount != 0) return;
        last = std::move(manager);
        releasingThread = std::this_thread::get_id();
    }
    const ReleaseScope scope;
    last.reset();
    UnloadPlugins();
}

void* GetInternalOfShared(ZT_PLUGIN::ISharedObject* object) {
    auto* live = ZT_PLUGIN::FindLiveObject(object);
    return live == nullptr ? nullptr : live->GetInternal();
}

constexpr ZT_LibraryCallbacks kLibraryCallbacks{&ZT_PLUGIN::AcquireLiveObject, &ZT_PLUGIN::ReleaseLiveObject,
                                                &GetInternalOfShared};

}  // namespace

}  // namespace zentor

using namespace zentor;

void CreateZentor_1(IZentor** zentor, const void* hostTable1, const void* hostTable2, const char* locale,
                    void* errorContext, const ZT_HostSuite* suite, const ZT_LibraryCallbacks** libraryCallbacks) {
    RunAtBoundary(errorContext, [&] {
        OfferHostSuite(suite);
        if (zentor == nullptr) Raise(kInvalidPointer, Quoted("IZentor"));
        *zentor = nullptr;
        *zentor = AcquireManager(locale, hostTable1, hostTable2);
        SetErrorContext(errorContext);
        if (libraryCallbacks != nullptr) *libraryCallbacks = &kLibraryCallbacks;
    });
}

void DestroyZentor_1(IZentor** zentor, void* errorContext) {
    RunAtBoundary(errorContext, [&] {
        if (zentor == nullptr) Raise(kInvalidPointer, Quoted("IZentor"));
        ReleaseManager(*zentor);
    });
}

void GetSupportedFormats_1(void* listContext, void* errorContext, const ZT_HostSuite* suite) {
    RunAtBoundary(errorContext, [&] {
        OfferHostSuite(suite);
        const ZT_HostSuite* host = HostSuite();
        if (host == nullptr) return;
        ListFormats(*host, listContext);
        ListPlugins(listContext);
    });
}

void GetLocalizedErrorMsg_1(const char* key, const char* parameter1, const char* parameter2, const char* parameter3,
                            const char* parameter4, void* hostContext) {
    RunAtBoundary(ErrorContext(), [&] {
        const auto text = [](const char* parameter) { return ZT_ErrorParam(parameter == nullptr ? "" : parameter); };
        const std::string message = FormMessage(
            key == nullptr ? "" : key, {text(parameter1), text(parameter2), text(parameter3), text(parameter4)});
        if (const ZT_HostSuite* const host = HostSuite()) {
            CallHost(host->localizedMessage, hostContext, message.c_str(), message.size());
        }
    });
}

void GetLastException_1(void* context,
                        void (*callback)(void* context, uint32_t code, const char* message, int64_t extra1,
                                         int64_t extra2),
                        uint8_t clear) {
    static const LastException none;
    const auto held = GetLastException();  // the callback may call the library again
    const LastException& last = held == nullptr ? none : *held;
    try {
        const char* const message = last.message.empty() ? kUnknownExceptionText : last.message.c_str();
        if (callback != nullptr) callback(context, last.code, message, last.extra1, last.extra2);
        if (clear != 0) ClearLastException();
    } catch (...) {
        KeepEntry(kUnknownException);
    }
}
