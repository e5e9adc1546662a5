// Factories: how converters outside the library make nodes.
//
// Each makes a node for the stream `streamId` and stores its interface through `node`, with one reference counted for
// the caller. Names and texts are copied; null counts as empty. `version` is the interface version that the caller was
// built for. Codes: 2027 (`node` is null), 2029 (a version above 1), 2030 (version 0), 2014 (the stream is not open),
// 2022 (the match name is none), 2008 (a number that is not finite); *node stays as it was then.
#pragma once

#include <cstdint>

#include "model/include/nodes.h"

namespace ZT_PLUGIN {

// Also codes 1505 (no creator, or an empty one), 2003 (the document has, or had, a root).
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
