#include "files/document_record.h"

#include <charconv>
#include <random>
#include <string_view>

#include "errors/exception.h"
#include "errors/raise.h"
#include "files/file_io.h"
#include "format/words.h"

namespace zentor {

namespace {

constexpr int kAttempts = 100;

std::string UniqueName() {
    std::random_device random;
    const std::uint64_t number = (std::uint64_t{random()} << 32) | random();
    char digits[16];
    const char* const end = std::to_chars(digits, std::end(digits), number, 16).ptr;
    return "ZTT" + std::string(static_cast<const char*>(digits), end) + "." + std::string(words::kExtension);
}

std::string PathIn(const std::string& folder, const std::string& name) {
    const std::string_view separators = os::kPathSeparators;
    const bool isSeparated = !folder.empty() && separators.find(folder.back()) != std::string_view::npos;
    return isSeparated ? folder + name : folder + separators.back() + name;
}

}  // namespace

DocumentRecord::~DocumentRecord() {
    if (isTemporary) DeleteQuietly(documentPath);
}

std::shared_ptr<DocumentRecord> CreateTemporaryDocument(const std::string& folder) {
    auto record = std::make_shared<DocumentRecord>();
    record->isKnownVersion2 = true;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        record->documentPath = PathIn(folder, UniqueName());
        try {
            record->isTemporary = File_IO::Create(record->documentPath, {.exclusive = true, .ownerOnly = true});
        } catch (const ns_sensor::ZT_Exception&) {
            break;
        }
        if (record->isTemporary) return record;
    }
    Raise(kTempFile, Quoted("File_IO::GetTempFile"));
}

}  // namespace zentor
