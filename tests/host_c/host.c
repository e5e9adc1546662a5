// A host written in C: lists the formats, converts a recording, opens it and prints one of its values. Arguments: the
// recording, the data path of a static number, the number as it is to be printed.
#include <stdio.h>
#include <string.h>

#include "zentor/zentor.h"

static char printed[64];

static void AddFormat(void* listContext, const char* extension, const char* displayName) {
    int* const count = listContext;
    ++*count;
    printf("%s  %s\n", extension, displayName);
}

static void ReportError(void* errorContext, uint32_t code, const char* message, int64_t extra1, int64_t extra2) {
    (void)errorContext, (void)extra1, (void)extra2;
    fprintf(stderr, "error %u: %s\n", (unsigned)code, message);
}

static void SetNumber(void* handle, double value) {
    char* const text = handle;
    snprintf(text, sizeof printed, "%.10g", value);
}

static ZT_Result Convert(IZentor* zentor, const char* recording) {
    IVkjsonStream* stream = NULL;
    const ZT_Result code = zentor->table->ConvertFile(zentor, &stream, recording, 1);
    if (code != ZT_OK) return code;
    char beginning = 0;
    const uint32_t count = 1;
    const uint32_t size = stream->table->Size(stream);
    const int isRead = stream->table->Read(stream, &beginning, &count) == 1 && beginning == '{' &&
                       stream->table->Remaining(stream) == size - 1;
    printf("%u bytes in %s\n", (unsigned)size, stream->table->DocumentPath(stream));
    const ZT_Result released = zentor->table->ReleaseStream(zentor, &stream);
    return isRead ? released : ZT_FILE_READ;
}

static ZT_Result ReadNumber(IZentor* zentor, const char* recording, const char* dataPath) {
    ISensorFileHandler* handler = NULL;
    ZT_Result code = zentor->table->OpenFile(zentor, &handler, recording, NULL);
    if (code != ZT_OK) return code;
    code = handler->table->GetStaticDataInfoClient(handler, dataPath, printed);
    // A time goes by value; this one is refused.
    const ZT_Time time = {1, 0};
    const ZT_Result timeCode = handler->table->GetDynamicSampleClient(handler, dataPath, time, NULL);
    if (timeCode != ZT_INVALID_POINTER) code = ZT_GENERAL;
    const ZT_Result closed = zentor->table->CloseFile(zentor, &handler);
    return code != ZT_OK ? code : closed;
}

int main(int argc, char** argv) {
    static const ZT_StaticDataCallbacks staticData = {.size = sizeof staticData, .setNumber = SetNumber};
    static const ZT_HostSuite suite = {.staticData = &staticData, .addFormat = AddFormat, .reportError = ReportError};
    if (argc != 4) return 2;
    IZentor* zentor = NULL;
    int formats = 0;
    CreateZentor_1(&zentor, NULL, NULL, "en_US", NULL, &suite, NULL);
    if (zentor == NULL) return 1;
    GetSupportedFormats_1(&formats, NULL, &suite);
    const ZT_Result converted = Convert(zentor, argv[1]);
    const ZT_Result read = ReadNumber(zentor, argv[1], argv[2]);
    DestroyZentor_1(&zentor, NULL);
    puts(printed);
    const int isRight = zentor == NULL && formats >= 4 && strcmp(printed, argv[3]) == 0;
    return converted == ZT_OK && read == ZT_OK && isRight ? 0 : 1;
}
