#include "errors/converter_failure.h"

#include "errors/exception.h"
#include "errors/last_exception.h"
#include "errors/raise.h"

namespace zentor {

namespace {

// The text of a failure without a cause of the library's own: one of the writer has its own.
const ErrorEntry& EntryOf(std::uint32_t code) {
    return code == kWriterFailureSyncTime.code ? kWriterFailureSyncTime : kConverterFailure;
}

}  // namespace

void RaiseConverterFailure(std::uint32_t code, std::int64_t extra1, std::int64_t extra2) {
    const auto last = GetLastException();
    const bool isOfLibrary = last != nullptr && !last->message.empty() && code > kConvertingSideOffset;
    // The cause itself, or the failure that it has become further inside.
    const bool isSame = isOfLibrary && (last->code + kConvertingSideOffset == code || last->code == code);
    if (!isSame) Raise({code, EntryOf(code), extra1, extra2});
    const std::string message = last->message;
    SetLastException({code, message, extra1, extra2});
    throw ns_sensor::ZT_Exception(code, message, extra1, extra2);
}

}  // namespace zentor
