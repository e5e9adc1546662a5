// The exported functions and the manager's life.
#include <memory>
#include <mutex>

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

IZentor* AcquireManager(const char* locale, const void* hostTable1, const void* hostTable2) {
    const std::lock_guard lock(managerMutex);
    if (!manager) {
        UnloadPlugins();  // those that were looked at without a manager
        SetLocale(locale);
        ReleaseDictionary();
        SetHostTables(hostTable1, hostTable2);
        manager = std::make_unique<ZentorImpl>();
    }
    ++instanceCount;
    return manager.get();
}

// Nulls the host's pointer as soon as the manager is given back, whatever plug-ins say to their end.
void ReleaseManager(IZentor*& released) {
    std::unique_ptr<ZentorImpl> last;
    {
        const std::lock_guard lock(managerMutex);
        if (released == nullptr || released != manager.get()) Raise(kInvalidPointer, Quoted("IZentor"));
        released = nullptr;
        if (--instanceCount == 0) last = std::move(manager);
    }
    if (!last) return;
    last.reset();  // outside the lock: it closes and deletes files
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
        ListPlugins(*host, listContext);
    });
}

void GetLocalizedErrorMsg_1(const char* key, const char* parameter1, const char* parameter2, const char* parameter3,
                            const char* parameter4, void* hostContext) {
    RunAtBoundary(ErrorContext(), [&] {
        const auto text = [](const char* parameter) { return ZT_ErrorParam(parameter == nullptr ? "" : parameter); };
        const std::string message = FormMessage(
            key == nullptr ? "" : key, {text(parameter1), text(parameter2), text(parameter3), text(parameter4)});
        const ZT_HostSuite* host = HostSuite();
        if (host == nullptr || host->localizedMessage == nullptr) return;
        host->localizedMessage(hostContext, message.c_str(), message.size());
    });
}

void GetLastException_1(void* context,
                        void (*callback)(void* context, uint32_t code, const char* message, int64_t extra1,
                                         int64_t extra2),
                        uint8_t clear) {
    const auto last = GetLastException();  // held: the callback may call the library again
    if (callback != nullptr) {
        if (last == nullptr) {
            callback(context, 0, kUnknownExceptionText, 0, 0);
        } else {
            const char* message = last->message.empty() ? kUnknownExceptionText : last->message.c_str();
            callback(context, last->code, message, last->extra1, last->extra2);
        }
    }
    if (clear != 0) ClearLastException();
}
