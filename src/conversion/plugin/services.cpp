#include "conversion/plugin/services.h"

#include "errors/trace.h"
#include "model/dynamic_numbers.h"
#include "model/live_objects.h"
#include "model/node_factories.h"
#include "model/stream_state.h"
#include "util/thread_slot.h"

namespace zentor {

using namespace ZT_PLUGIN;

namespace {

constexpr ZT_NodeFactories kFactories{
    sizeof(ZT_NodeFactories), &CreateRoot,      &CreateGroup,        &CreateDynamicNumArr, &CreateDynamicNum,
    &CreateDynamicString,     &CreateStaticNum, &CreateStaticNumArr, &CreateStaticString,  &CreateStaticBool,
};

// The identifier of the converter that each thread's CheckFileFormat is about.
os::ThreadSlot& CheckedConverter() {
    static os::ThreadSlot slot(nullptr);
    return slot;
}

void TraceText(const char* text) noexcept { Trace(text == nullptr ? std::string_view() : text); }

const char* GetCheckedConverter() { return static_cast<const char*>(CheckedConverter().Get()); }

// Of a conversion under way; what a module asks of any other is answered with nothing.
const char* GetParameter(StreamContext context, const char* key) noexcept {
    const auto stream = FindStream(context);
    if (stream == nullptr || key == nullptr) return nullptr;
    const std::string_view name(key);
    const char* value = nullptr;  // of several the last
    for (const std::string& parameter : stream->parameters) {
        const std::string_view text(parameter);
        if (text.starts_with(name) && text.substr(name.size()).starts_with('=')) {
            value = parameter.c_str() + name.size() + 1;
        }
    }
    return value;
}

void AddConverterNotice(StreamContext context, const char* message, std::uint64_t count, std::int64_t offset,
                        std::int64_t line) noexcept {
    constexpr std::size_t kMost = 100;
    constexpr std::size_t kLongest = 1000;  // bytes
    try {
        const auto stream = FindStream(context);
        if (stream == nullptr || message == nullptr || stream->notices.size() >= kMost) return;
        stream->notices.push_back({std::string(message).substr(0, kLongest), count, offset, line});
    } catch (...) {
        // Without memory there is a notice less.
    }
}

void SetReason(StreamContext context, const char* message) noexcept {
    constexpr std::size_t kLongest = 2000;  // bytes
    try {
        const auto stream = FindStream(context);
        if (stream != nullptr && message != nullptr) stream->reason = std::string(message).substr(0, kLongest);
    } catch (...) {
        // Without memory the code has to do.
    }
}

IVkjsonNumberTexts_v1* NumberTextsOf(IVkjsonDynamicDataNum_v1* node) noexcept {
    return FindLive<VkjsonDynamicDataNumImpl>(node);
}

ZT_HostServices hostServices{
    sizeof(ZT_HostServices),
    &AcquireLiveObject,
    &ReleaseLiveObject,
    nullptr,
    nullptr,
    &GetCheckedConverter,
    &TraceText,
    &GetParameter,
    &AddConverterNotice,
    &SetReason,
    &NumberTextsOf,
};

}  // namespace

void SetHostTables(const void* table1, const void* table2) noexcept {
    hostServices.hostTable1 = table1;
    hostServices.hostTable2 = table2;
}

CheckedConverterScope::CheckedConverterScope(const std::string& identifier) : outer_(CheckedConverter().Get()) {
    // The module only reads it.
    CheckedConverter().Set(const_cast<char*>(identifier.c_str()));
}

CheckedConverterScope::~CheckedConverterScope() { CheckedConverter().Set(outer_); }

const ZT_PluginServices& PluginServices() noexcept {
    static constexpr ZT_PluginServices services{sizeof(ZT_PluginServices), kInterfaceVersion, &kFactories,
                                                &hostServices};
    return services;
}

}  // namespace zentor
