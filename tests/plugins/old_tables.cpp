// A module of the time when the tables of plug-ins were first declared: these are the declarations that it was built
// with. Tables may have grown at their ends since; what stands here has to stay where it is.
#include <stdint.h>

struct ErrorRecord {
    uint32_t field, code;
    int64_t extra1, extra2;
};
struct SharedObject {
    virtual void Acquire() noexcept = 0;
    virtual void Release() noexcept = 0;
};
struct Group {
    virtual void AddDynamicDataShared(SharedObject* child, ErrorRecord* error) noexcept = 0;
    virtual void AddStaticDataShared(SharedObject* child, ErrorRecord* error) noexcept = 0;
};
struct Root {
    virtual uint32_t WriteDocument(ErrorRecord* error) noexcept = 0;
    virtual void SetCreator(const char* creator, ErrorRecord* error) noexcept = 0;
    virtual Group* GetGroup() noexcept = 0;
    virtual SharedObject* GetSharedObject() noexcept = 0;
    virtual void SetDisplayName(const char* name, ErrorRecord* error) noexcept = 0;
    virtual void SetTimecodeInfo(uint8_t drop, uint32_t rate, uint32_t scale, ErrorRecord* error) noexcept = 0;
    virtual void SetUtcInfo(uint32_t precision, uint8_t isGmt, ErrorRecord* error) noexcept = 0;
};
struct DynamicNumber {
    virtual void Reserved() noexcept = 0;
    virtual uint32_t WriteSamples(ErrorRecord* error) noexcept = 0;
    virtual void SetSampleCount(uint64_t count, ErrorRecord* error) noexcept = 0;
    virtual uint64_t GetSampleCount() noexcept = 0;
    virtual SharedObject* GetSharedObject() noexcept = 0;
    virtual void DeletingDestructor(uint32_t flags) noexcept = 0;
    virtual uint32_t GetNames(const char** matchName, const char** displayName, const char** setId) noexcept = 0;
    virtual void Initialize(const char* matchName, const char* displayName, const char* setId, uint64_t count,
                            uint32_t interpolation, uint8_t hasFrequency, const char* duration,
                            ErrorRecord* error) noexcept = 0;
    virtual uint32_t AddSample(int32_t value, uint32_t scale, double number, ErrorRecord* error) noexcept = 0;
};
struct Factories {
    uint64_t size;
    void (*createRoot)(uint64_t context, Root** node, const char* creator, uint32_t version, ErrorRecord* error);
    void* createGroup;
    void* createDynamicNumArr;
    void (*createDynamicNum)(uint64_t context, DynamicNumber** node, uint32_t version, ErrorRecord* error);
};
struct HostServices {
    uint64_t size;
    void (*acquire)(SharedObject* object);
    void (*release)(SharedObject* object);
    const void *hostTable1, *hostTable2;
};
struct Services {
    uint32_t size, version;
    const Factories* factories;
    const HostServices* host;
};
struct EntryPoints {
    uint32_t size, version;
    void (*terminate)(ErrorRecord* error);
    void (*initializeSession)(const char* module, const char* converter, const char* path, uint64_t context,
                              void** session, ErrorRecord* error);
    void* reserved;
    void (*checkFileFormat)(const char* module, const char* path, uint8_t* accepted, ErrorRecord* error);
    void (*convert)(void* session, uint8_t* converted, ErrorRecord* error);
};

static const Services* given;

static void Begin(const char*, const char*, const char*, uint64_t context, void** session, ErrorRecord*) {
    *session = reinterpret_cast<void*>(context);
}

static void Convert(void* session, uint8_t* converted, ErrorRecord* error) {
    const uint64_t context = reinterpret_cast<uint64_t>(session);
    Root* root = nullptr;
    DynamicNumber* number = nullptr;
    given->factories->createRoot(context, &root, "org.test.old", 1, error);
    if (error->code != 0) return;
    root->SetUtcInfo(0, 1, error);
    given->factories->createDynamicNum(context, &number, 1, error);
    if (error->code == 0) {
        number->Initialize("n", "N", "n", 0, 1, 0, "", error);
        root->GetGroup()->AddDynamicDataShared(number->GetSharedObject(), error);
        number->AddSample(3, 2, 4.5, error);
        number->GetSharedObject()->Release();
    }
    *converted = error->code == 0 && root->WriteDocument(error) != 0;
    given->host->release(root->GetSharedObject());
}

#if defined(_WIN32)
extern "C" __declspec(dllexport)
#else
extern "C" __attribute__((visibility("default")))
#endif
    void InitializePlugin(const char*, const Services* services, EntryPoints* entryPoints, ErrorRecord*) {
    given = services;
    entryPoints->initializeSession = Begin;
    entryPoints->convert = Convert;
}
