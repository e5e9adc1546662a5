#include "errors/last_exception.h"

#include <utility>

#include "util/thread_slot.h"

namespace zentor {

namespace {

using Record = std::shared_ptr<const LastException>;

os::ThreadSlot& Slot() {
    static os::ThreadSlot slot([](void* record) { delete static_cast<Record*>(record); });
    return slot;
}

}  // namespace

std::shared_ptr<const LastException> GetLastException() noexcept {
    const auto* const record = static_cast<const Record*>(Slot().Get());
    return record == nullptr ? nullptr : *record;
}

void RestoreLastException(Record record) noexcept {
    ClearLastException();
    if (record == nullptr) return;
    try {
        auto kept = std::make_unique<Record>(std::move(record));
        if (Slot().Set(kept.get())) static_cast<void>(kept.release());
    } catch (...) {
        // The failure itself is still reported; only the record of it is missing.
    }
}

void SetLastException(LastException record) noexcept {
    try {
        RestoreLastException(std::make_shared<const LastException>(std::move(record)));
    } catch (...) {
        ClearLastException();
    }
}

void ClearLastException() noexcept {
    auto* const record = static_cast<Record*>(Slot().Get());
    if (record == nullptr) return;
    Slot().Set(nullptr);
    delete record;
}

}  // namespace zentor
