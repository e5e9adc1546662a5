// The one way to raise a ZT_Exception.
#pragma once

#include <cstdint>
#include <string>

#include "errors/error_table.h"
#include "errors/message.h"

namespace zentor {

// What a raise site states of a failure. The details are a byte offset or a system error number, -1 when there is none.
struct ZT_ErrorInfo {
    std::uint32_t code;
    const char* key;
    std::int64_t extra1 = -1;
    std::int64_t extra2 = -1;

    ZT_ErrorInfo(const ErrorEntry& entry, std::int64_t firstDetail = -1, std::int64_t secondDetail = -1)
        : code(entry.code), key(entry.key), extra1(firstDetail), extra2(secondDetail) {}
    ZT_ErrorInfo(std::uint32_t otherCode, const ErrorEntry& entry, std::int64_t firstDetail, std::int64_t secondDetail)
        : code(otherCode), key(entry.key), extra1(firstDetail), extra2(secondDetail) {}
};

// Forms the message, keeps a copy as the thread's last exception and throws the ns_sensor::ZT_Exception.
[[noreturn]] void Raise(const ZT_ErrorInfo& info, const ZT_ErrorParam& p1 = {}, const ZT_ErrorParam& p2 = {},
                        const ZT_ErrorParam& p3 = {}, const ZT_ErrorParam& p4 = {});

// A parameter that names a type, a path or a calling operation is shown in double quotes.
std::string Quoted(std::string_view name);

// A text of a document as a parameter: the beginning of it when it is long.
std::string Excerpt(std::string_view text);

}  // namespace zentor
