#include "conversion/document_record.h"

#include <charconv>
#include <random>

#include "errors/exception.h"
#include "errors/raise.h"
#include "util/file_io.h"

namespace zentor {

namespace {

constexpr int kAttempts = 100;

std::string UniqueName() {
    std::random_device random;
    const std::uint64_t number = (std::uint64_t{random()} << 32) | random();
    char digits[16];
    const char* const end = std::to_chars(digits, std::end(digits), number, 16).ptr;
    return "ZTT" + std::string(static_cast<const char*>(digits), end) + ".vkjson";
}

}  // namespace

DocumentRecord::~DocumentRecord() {
    if (isTemporary) DeleteQuietly(documentPath);
}

std::shared_ptr<DocumentRecord> CreateTemporaryDocument(const std::string& folder, bool ownerOnly) {
    auto record = std::make_shared<DocumentRecord>();
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const std::string path = folder + "/" + UniqueName();
        try {
            if (!File_IO::Create(path, {.exclusive = true, .ownerOnly = ownerOnly})) continue;
        } catch (const ns_sensor::ZT_Exception&) {
            break;
        }
        record->documentPath = path;
        record->isTemporary = true;
        record->isKnownVersion2 = true;
        return record;
    }
    Raise(kTempFile, Quoted("File_IO::GetTempFile"));
}

}  // namespace zentor
