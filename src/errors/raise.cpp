#include "errors/raise.h"

#include "errors/exception.h"
#include "errors/last_exception.h"

namespace zentor {

void Raise(const ZT_ErrorInfo& info, const ZT_ErrorParam& p1, const ZT_ErrorParam& p2, const ZT_ErrorParam& p3,
           const ZT_ErrorParam& p4) {
    const std::string message = FormMessage(info.key, {p1, p2, p3, p4});
    SetLastException({info.code, message, info.extra1, info.extra2});
    throw ns_sensor::ZT_Exception(info.code, message, info.extra1, info.extra2);
}

std::string Quoted(std::string_view name) {
    std::string quoted = "\"";
    quoted += name;
    quoted += '"';
    return quoted;
}

std::string Excerpt(std::string_view text) {
    constexpr std::size_t kLongest = 1024;
    if (text.size() <= kLongest) return std::string(text);
    std::size_t end = kLongest;
    while ((static_cast<unsigned char>(text[end]) & 0xC0) == 0x80 && end > kLongest - 3) --end;  // whole characters
    return std::string(text.substr(0, end)) + "...";
}

}  // namespace zentor
