// A host of the other C++ compiler family: built by clang for the MSVC ABI, without any C++ runtime, it drives the DLL.
#include <stdint.h>

#include "zentor/zentor.h"

extern "C" {
__declspec(dllimport) void* __stdcall GetStdHandle(uint32_t which);
__declspec(dllimport) int __stdcall WriteFile(void* file, const void* bytes, uint32_t count, uint32_t* done, void*);
__declspec(dllimport) void __stdcall ExitProcess(uint32_t status);
int _fltused = 0;  // the linker asks for it wherever a double occurs
}

static uint32_t formatCount, reportedCode, lastCode;
static int messagesMatch = 1;

static void Print(const char* text) {
    uint32_t length = 0;
    while (text[length] != 0) ++length;
    WriteFile(GetStdHandle(static_cast<uint32_t>(-11)), text, length, &length, nullptr);
}

static bool Same(const char* a, const char* b) {
    while (*a != 0 && *a == *b) ++a, ++b;
    return *a == *b;
}

static void AddFormat(void* context, const char* extension, const char*) {
    if (context == &formatCount && extension[0] != 0) ++formatCount;
}

static void ReportError(void*, uint32_t code, const char* message, int64_t extra1, int64_t extra2) {
    reportedCode = code;
    messagesMatch = Same(message, "File Format Not Supported.") && extra1 == -1 && extra2 == -1;
}

static void Expect(int holds, const char* what) {
    if (holds) return;
    Print("failed: ");
    Print(what);
    Print("\n");
    ExitProcess(1);
}

// argv is not needed: the test puts table.csv and table.unknown into the current folder.
extern "C" void hostMain() {
    static ZT_HostSuite suite = {};
    suite.addFormat = AddFormat;
    suite.reportError = ReportError;
    IZentor* zentor = nullptr;
    CreateZentor_1(&zentor, nullptr, nullptr, "en_US", nullptr, &suite, nullptr);
    Expect(zentor != nullptr, "create");
    GetSupportedFormats_1(&formatCount, nullptr, &suite);
    Expect(formatCount > 3, "formats");

    IVkjsonStream* stream = nullptr;
    Expect(zentor->ConvertFile(&stream, "table.csv", 0) == ZT_OK && stream != nullptr, "convert");
    static char text[8192];
    const uint32_t room = sizeof text;
    const uint32_t size = stream->Size();
    Expect(size > 300 && stream->Read(text, &room) == size && stream->Remaining() == 0, "read");
    Expect(text[0] == '{' && text[size - 1] == '}', "content");
    Expect(stream->SaveTo("saved.vkjson") == ZT_OK && stream->Rewind() == ZT_OK, "save");
    Expect(zentor->ReleaseStream(&stream) == ZT_OK && stream == nullptr, "release");

    Expect(zentor->ConvertFile(&stream, "table.unknown", 0) == 25 && stream == nullptr, "refuse");
    Expect(reportedCode == 25 && messagesMatch, "report");
    GetLastException_1(
        &lastCode, [](void* to, uint32_t code, const char*, int64_t, int64_t) { *static_cast<uint32_t*>(to) = code; },
        1);
    Expect(lastCode == 25, "last exception");
    DestroyZentor_1(&zentor, nullptr);
    Expect(zentor == nullptr, "destroy");
    Print("ok\n");
    ExitProcess(0);
}
