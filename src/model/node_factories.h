// Factories: how converters outside the library make nodes.
//
// Each makes a node for the stream `streamId` and stores its interface through `node`, with one reference counted for
// the caller. Names and texts are copied; null counts as empty. `version` is the interface version that the caller was
// built for. Codes: ZT_NULL_RESULT (`node` is null), ZT_VERSION_TOO_NEW (a version above 1), ZT_VERSION_ZERO (version
// 0), ZT_STREAM_NOT_OPEN (the stream is not open), ZT_INVALID_NAME (the match name is none), ZT_RANGE_VALUE (a number
// that is not finite); *node stays as it was then.
#pragma once

#include <cstdint>

#include "model/include/nodes.h"

namespace ZT_PLUGIN {

// Also ZT_EMPTY_CREATOR (no creator, or an empty one), ZT_INVALID_GROUP (the document has, or had, a root).
void CreateRoot(std::uint64_t streamId, IVkjsonRoot_v1** node, const char* creator, std::uint32_t version,
                ZT_ErrorRecord* error) noexcept;
void CreateGroup(std::uint64_t streamId, IVkjsonGroup_v1** node, const char* matchName, const char* displayName,
                 std::uint32_t version, ZT_ErrorRecord* error) noexcept;
void CreateStaticNum(std::uint64_t streamId, IVkjsonStaticDataNum_v1** node, const char* matchName,
                     const char* displayName, double value, std::uint32_t version, ZT_ErrorRecord* error) noexcept;
void CreateStaticString(std::uint64_t streamId, IVkjsonStaticDataString_v1** node, const char* matchName,
                        const char* displayName, const char* value, std::uint32_t version,
                        ZT_ErrorRecord* error) noexcept;
// `value`: any other than 0 is true.
void CreateStaticBool(std::uint64_t streamId, IVkjsonStaticDataBool_v1** node, const char* matchName,
                      const char* displayName, std::uint8_t value, std::uint32_t version,
                      ZT_ErrorRecord* error) noexcept;
void CreateStaticNumArr(std::uint64_t streamId, IVkjsonStaticDataNumArr_v1** node, const char* matchName,
                        const char* displayName, std::uint32_t version, ZT_ErrorRecord* error) noexcept;

// Dynamic nodes get their names when they are initialised.
void CreateDynamicNum(std::uint64_t streamId, IVkjsonDynamicDataNum_v1** node, std::uint32_t version,
                      ZT_ErrorRecord* error) noexcept;
void CreateDynamicNumArr(std::uint64_t streamId, IVkjsonDynamicDataNumArr_v1** node, std::uint32_t version,
                         ZT_ErrorRecord* error) noexcept;
void CreateDynamicString(std::uint64_t streamId, IVkjsonDynamicDataString_v1** node, std::uint32_t version,
                         ZT_ErrorRecord* error) noexcept;

}  // namespace ZT_PLUGIN
