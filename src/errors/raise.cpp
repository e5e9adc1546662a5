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

}  // namespace zentor
