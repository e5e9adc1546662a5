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

static uint32_t childCount, staticCalls, typeCalls, samplesSeen;
static double numberSeen;

static void AddPathItem(void* handle, const char*, int64_t index, uint64_t count, uint8_t last) {
    if (handle == &childCount && last == 1 && index >= 0) childCount = static_cast<uint32_t>(count);
}

static void SetNames(void* handle, const char*, uint64_t, const char*, uint64_t) {
    staticCalls += handle == &childCount;
}
static void SetNumber(void*, double value) { numberSeen = value; }
static void SetRange(void*, uint64_t, double occurringMin, double occurringMax, double, double legalMax) {
    typeCalls += occurringMin == 1 && occurringMax == 1 && legalMax == 1;
}

static void AddNumberArray(void* handle, const char* time, uint64_t timeLength, const double* values, uint64_t count) {
    const bool isFrame =
        timeLength == 11 && time[0] == '0' && time[9] == '0' && time[10] == (samplesSeen == 0 ? '1' : '2');
    if (handle == &samplesSeen && isFrame && count == 3 && values[2] == -1.5 * samplesSeen) ++samplesSeen;
}

static void Expect(int holds, const char* what) {
    if (holds) return;
    Print("failed: ");
    Print(what);
    Print("\n");
    ExitProcess(1);
}

// argv is not needed: the test puts table.csv, table.unknown and walk.bvh into the current folder.
extern "C" void hostMain() {
    static ZT_HostSuite suite = {};
    suite.addFormat = AddFormat;
    suite.reportError = ReportError;
    static const ZT_DataPathCallbacks paths = {sizeof(ZT_DataPathCallbacks), AddPathItem};
    static const ZT_StaticDataCallbacks statics = {
        sizeof(ZT_StaticDataCallbacks), SetNames, SetNumber, nullptr, nullptr, nullptr};
    static const ZT_DataTypeCallbacks types = {
        sizeof(ZT_DataTypeCallbacks), nullptr, nullptr, SetRange, nullptr, nullptr, nullptr};
    suite.dataPaths = &paths;
    suite.staticData = &statics;
    suite.dataTypes = &types;
    static const ZT_SampleCallbacks samples = {sizeof(ZT_SampleCallbacks), nullptr, AddNumberArray, nullptr};
    suite.samples = &samples;
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

    ISensorFileHandler* handler = nullptr;
    Expect(zentor->OpenFile(&handler, "table.csv", "opened.vkjson") == ZT_OK && handler != nullptr, "open");
    Expect(handler->GetRootChildrenClient(&childCount) == ZT_OK && childCount == 2, "children");
    Expect(handler->GetStaticDataInfoClient("[0][0]", &childCount) == ZT_OK, "static node");
    Expect(staticCalls == 1 && typeCalls == 1 && numberSeen == 1, "static values");
    Expect(handler->GetDynamicSampleClient("[0][0]", ZT_Time{1, 0}, nullptr) == 1, "time by value");
    Expect(zentor->CloseFile(&handler) == ZT_OK && handler == nullptr, "close");

    // The samples at frames 1 and 2 of 0 to 3, by time values in structs that go by value.
    Expect(zentor->OpenFile(&handler, "walk.bvh", nullptr) == ZT_OK, "open capture");
    Expect(handler->GetDynamicSamplesClient("[0][1]", ZT_Time{1, 25}, ZT_Time{2, 25}, &samplesSeen) == ZT_OK, "range");
    Expect(samplesSeen == 2, "samples");
    Expect(zentor->CloseFile(&handler) == ZT_OK, "close capture");

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
