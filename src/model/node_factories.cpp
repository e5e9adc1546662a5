#include "model/node_factories.h"

#include "model/client_boundary.h"
#include "model/dynamic_numbers.h"
#include "model/dynamic_string.h"
#include "model/root.h"

namespace ZT_PLUGIN {

namespace {

constexpr std::uint32_t kNewestVersion = 1;

// The steps that all factories share; `make` returns the new implementation object.
template <class Interface, class Make>
void CreateNode(Interface** node, std::uint32_t version, ZT_ErrorRecord* error, Make&& make) noexcept {
    RunForClient(error, [&] {
        if (node == nullptr) throw ZT_PluginException(ZT_NULL_RESULT);
        if (version > kNewestVersion) throw ZT_PluginException(ZT_VERSION_TOO_NEW);
        if (version == 0) throw ZT_PluginException(ZT_VERSION_ZERO);
        auto* object = make();
        object->AddClientReference();
        *node = object;
    });
}

}  // namespace

void CreateRoot(std::uint64_t streamId, IVkjsonRoot_v1** node, const char* creator, std::uint32_t version,
                ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] {
        if (TextOrEmpty(creator).empty()) throw ZT_PluginException(ZT_EMPTY_CREATOR);
        return new VkjsonRootImpl(streamId, creator);
    });
}

void CreateGroup(std::uint64_t streamId, IVkjsonGroup_v1** node, const char* matchName, const char* displayName,
                 std::uint32_t version, ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error,
               [&] { return new VkjsonGroupImpl(streamId, TextOrEmpty(matchName), TextOrEmpty(displayName)); });
}

void CreateStaticNum(std::uint64_t streamId, IVkjsonStaticDataNum_v1** node, const char* matchName,
                     const char* displayName, double value, std::uint32_t version, ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] {
        return new VkjsonStaticDataNumImpl(streamId, TextOrEmpty(matchName), TextOrEmpty(displayName), value);
    });
}

void CreateStaticString(std::uint64_t streamId, IVkjsonStaticDataString_v1** node, const char* matchName,
                        const char* displayName, const char* value, std::uint32_t version,
                        ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] {
        return new VkjsonStaticDataStringImpl(streamId, TextOrEmpty(matchName), TextOrEmpty(displayName),
                                              TextOrEmpty(value));
    });
}

void CreateStaticBool(std::uint64_t streamId, IVkjsonStaticDataBool_v1** node, const char* matchName,
                      const char* displayName, std::uint8_t value, std::uint32_t version,
                      ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] {
        return new VkjsonStaticDataBoolImpl(streamId, TextOrEmpty(matchName), TextOrEmpty(displayName), value != 0);
    });
}

void CreateStaticNumArr(std::uint64_t streamId, IVkjsonStaticDataNumArr_v1** node, const char* matchName,
                        const char* displayName, std::uint32_t version, ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] {
        return new VkjsonStaticDataNumArrImpl(streamId, TextOrEmpty(matchName), TextOrEmpty(displayName));
    });
}

void CreateDynamicNum(std::uint64_t streamId, IVkjsonDynamicDataNum_v1** node, std::uint32_t version,
                      ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] { return new VkjsonDynamicDataNumImpl(streamId); });
}

void CreateDynamicNumArr(std::uint64_t streamId, IVkjsonDynamicDataNumArr_v1** node, std::uint32_t version,
                         ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] { return new VkjsonDynamicDataNumArrImpl(streamId); });
}

void CreateDynamicString(std::uint64_t streamId, IVkjsonDynamicDataString_v1** node, std::uint32_t version,
                         ZT_ErrorRecord* error) noexcept {
    CreateNode(node, version, error, [&] { return new VkjsonDynamicDataStringImpl(streamId); });
}

}  // namespace ZT_PLUGIN
