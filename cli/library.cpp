#include "library.h"

#include "document.h"

namespace zentor_cli {

std::string Report::Text() const {
    std::string text = "error " + std::to_string(code);
    if (!message.empty()) text += ": " + message;
    if (offset >= 0) text += " (at byte " + std::to_string(offset) + ")";
    return text;
}

Library::Library(const std::string& locale) {
    suite_.addFormat = &AddFormat;
    suite_.localizedMessage = &TakeMessage;
    suite_.reportError = &TakeReport;
    TakeResults(suite_);
    CreateZentor_1(&manager_, nullptr, nullptr, locale.c_str(), this, &suite_, nullptr);
    if (manager_ == nullptr) throw LibraryFailure(report_);
}

Library::~Library() { DestroyZentor_1(&manager_, this); }

void Library::TakeReport(void* library, std::uint32_t code, const char* message, std::int64_t extra1, std::int64_t) {
    static_cast<Library*>(library)->report_ = {code, message, extra1};
}

void Library::TakeMessage(void* library, const char* text, std::uint64_t length) {
    static_cast<Library*>(library)->message_.assign(text, length);
}

void Library::AddFormat(void* list, const char* extension, const char* displayName) {
    static_cast<std::vector<Format>*>(list)->push_back({extension, displayName});
}

void Library::Check(ZT_Result result) const {
    if (result == ZT_OK) return;
    throw LibraryFailure(report_.code == result ? report_ : Report{result, {}, -1});
}

void Library::Fail(std::uint32_t code, const char* key) {
    GetLocalizedErrorMsg_1(key, nullptr, nullptr, nullptr, nullptr, this);
    throw LibraryFailure(Report{code, message_, -1});
}

std::vector<Format> Library::Formats() {
    std::vector<Format> formats;
    GetSupportedFormats_1(&formats, this, &suite_);
    return formats;
}

Stream::Stream(Library& library, const std::string& inputPath, bool validate) : library_(library) {
    library.Check(library.manager().ConvertFile(&stream_, inputPath.c_str(), validate ? 1 : 0));
}

}  // namespace zentor_cli
