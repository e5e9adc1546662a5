// A plug-in that does what a plug-in must not do, and one that does everything right: by the identifier of its module
// when it is initialised, and by the name of its input afterwards ("convert_fails.hostile"). Written against the plain
// tables, without any runtime, so that it can be built for the other C++ compiler family, too.
#include <zentor/plugin/plugin.h>

using namespace ZT_PLUGIN;

#if defined(__cpp_exceptions)
#define THROW throw 1
#else
#define THROW return Fail(error, 1023)  // nothing to throw with
#endif

namespace {

const ZT_PluginServices* services;

bool Same(const char* a, const char* b) {
    while (*a != 0 && *a == *b) ++a, ++b;
    return *a == *b;
}

// The last part of a text after "/", "\" or ":".
const char* LastPart(const char* text) {
    const char* part = text;
    for (; *text != 0; ++text) {
        if (*text == '/' || *text == '\\' || *text == ':') part = text + 1;
    }
    return part;
}

// Whether an input is named after a behaviour.
bool IsNamed(const char* path, const char* name) {
    const char* stem = LastPart(path);
    while (*name != 0 && *stem == *name) ++stem, ++name;
    return *name == 0 && *stem == '.';
}

// One conversion. There is no memory to have but these.
struct Session {
    bool isTaken;
    char name[64];  // of the input
    StreamContext stream;

    bool Is(const char* behaviour) const { return IsNamed(name, behaviour); }
};
constexpr int kSessions = 16;
Session sessions[kSessions];

Session* TakeSession(const char* path, StreamContext stream) {
    for (Session& session : sessions) {
        if (__atomic_exchange_n(&session.isTaken, true, __ATOMIC_ACQUIRE)) continue;
        const char* part = LastPart(path);
        char* end = session.name;
        while (*part != 0 && end != session.name + sizeof session.name - 1) *end++ = *part++;
        *end = 0;
        session.stream = stream;
        return &session;
    }
    return nullptr;
}

class SessionEnd {
public:
    explicit SessionEnd(Session* session) : session_(session) {}
    ~SessionEnd() { __atomic_store_n(&session_->isTaken, false, __ATOMIC_RELEASE); }
    SessionEnd(const SessionEnd&) = delete;
    SessionEnd& operator=(const SessionEnd&) = delete;

private:
    Session* session_;
};

void Fail(ZT_ErrorRecord* error, uint32_t code, int64_t extra1 = -1, int64_t extra2 = -1) {
    *error = {0, code, extra1, extra2};
}

// A dynamic number with its names.
IVkjsonDynamicDataNum_v1* MakeTrack(const Session& session, const char* name, ZT_ErrorRecord* error) {
    IVkjsonDynamicDataNum_v1* track = nullptr;
    services->factories->createDynamicNum(session.stream, &track, kInterfaceVersion, error);
    if (track != nullptr) track->Initialize(name, "Track", name, 0, 1, 0, nullptr, error);
    return track;
}

// The document that everything else departs from.
bool Build(const Session& session, IVkjsonRoot_v1*& root, ZT_ErrorRecord* error) {
    const ZT_NodeFactories& make = *services->factories;
    make.createRoot(session.stream, &root, "org.test.hostile", kInterfaceVersion, error);
    if (root == nullptr) return false;
    IVkjsonGroup_v1* group = nullptr;
    make.createGroup(session.stream, &group, "g", "Group", kInterfaceVersion, error);
    if (group == nullptr) return false;
    root->GetGroup()->AddGroup(group, error);
    IVkjsonStaticDataNum_v1* number = nullptr;
    make.createStaticNum(session.stream, &number, "n", "Number", 1.5, kInterfaceVersion, error);
    if (number == nullptr) return false;
    group->AddStaticDataShared(number->GetSharedObject(), error);
    number->GetSharedObject()->Release();
    IVkjsonStaticDataString_v1* text = nullptr;
    make.createStaticString(session.stream, &text, "t", "Text", "on", kInterfaceVersion, error);
    group->AddStaticDataShared(text->GetSharedObject(), error);
    text->GetSharedObject()->Release();
    IVkjsonStaticDataBool_v1* truth = nullptr;
    make.createStaticBool(session.stream, &truth, "b", "Truth", 7, kInterfaceVersion, error);
    group->AddStaticDataShared(truth->GetSharedObject(), error);
    truth->GetSharedObject()->Release();
    IVkjsonStaticDataNumArr_v1* array = nullptr;
    make.createStaticNumArr(session.stream, &array, "a", "Array", kInterfaceVersion, error);
    const double values[] = {1, -2.5};
    array->SetValues(values, 2, error);
    group->AddStaticDataShared(array->GetSharedObject(), error);
    array->GetSharedObject()->Release();
    root->SetUtcInfo(1, 1, error);
    IVkjsonDynamicDataNum_v1* track = MakeTrack(session, "d", error);
    group->AddDynamicDataShared(track->GetSharedObject(), error);
    for (int k = 0; k < 3; ++k) track->AddSampleAtTicks(k, 2, k * 0.5, error);
    track->GetSharedObject()->Release();
    if (session.Is("release_too_often")) {
        for (int k = 0; k < 5; ++k) services->host->release(group->GetSharedObject());
        for (int k = 0; k < 5; ++k) services->host->release(reinterpret_cast<ISharedObject*>(&root));
        services->host->acquire(nullptr);
    } else {
        group->GetSharedObject()->Release();
    }
    return error->code == 0;
}

// What is handed in that is none of this document's; the codes that come back are handed on.
void AddForeignThings(const Session& session, IVkjsonRoot_v1* root, ZT_ErrorRecord* error) {
    static uint64_t foreign[64];
    const ZT_NodeFactories& make = *services->factories;
    IVkjsonGroup_v1* group = nullptr;
    if (session.Is("foreign_pointer")) {
        root->GetGroup()->AddGroup(reinterpret_cast<IVkjsonGroup_v1*>(foreign), error);
    } else if (session.Is("null_pointer")) {
        root->GetGroup()->AddStaticDataShared(nullptr, error);
    } else if (session.Is("other_stream")) {
        make.createGroup(session.stream + 1000, &group, "x", "X", kInterfaceVersion, error);
    } else if (session.Is("other_kind")) {
        make.createGroup(session.stream, &group, "x", "X", kInterfaceVersion, error);
        root->GetGroup()->AddDynamicDataShared(group->GetSharedObject(), error);
        group->GetSharedObject()->Release();
    } else if (session.Is("same_name")) {
        make.createGroup(session.stream, &group, "n", "X", kInterfaceVersion, error);
        root->GetGroup()->AddGroup(group, error);
        group->GetSharedObject()->Release();
    } else if (session.Is("not_attached")) {
        IVkjsonDynamicDataNum_v1* const track = MakeTrack(session, "x", error);
        track->AddSampleAtTicks(5, 1, 1, error);
        track->WriteSamples(error);
        track->GetSharedObject()->Release();
    } else if (session.Is("no_result")) {
        make.createGroup(session.stream, nullptr, "x", "X", kInterfaceVersion, error);
    } else if (session.Is("new_version")) {
        make.createGroup(session.stream, &group, "x", "X", 2, error);
    } else if (session.Is("old_version")) {
        make.createGroup(session.stream, &group, "x", "X", 0, error);
    } else if (session.Is("no_creator")) {
        IVkjsonRoot_v1* second = nullptr;
        make.createRoot(session.stream, &second, "", kInterfaceVersion, error);
    }
}

// What would be missing from the document, or make one that cannot be read; the codes that come back are handed on.
void AddWhatGetsLost(const Session& session, IVkjsonRoot_v1* root, ZT_ErrorRecord* error) {
    const ZT_NodeFactories& make = *services->factories;
    IVkjsonGroup_v1* group = nullptr;
    IVkjsonStaticDataNumArr_v1* array = nullptr;
    if (session.Is("second_root")) {
        IVkjsonRoot_v1* second = nullptr;
        make.createRoot(session.stream, &second, "org.test.second", kInterfaceVersion, error);
    } else if (session.Is("bad_name")) {
        make.createGroup(session.stream, &group, "not a name", "X", kInterfaceVersion, error);
    } else if (session.Is("too_deep")) {
        IVkjsonGroup_v1* parent = root->GetGroup();
        char name[] = "x00";
        for (int depth = 0; depth <= 100 && error->code == 0; ++depth) {
            name[1] = static_cast<char>('0' + depth / 10 % 10);
            name[2] = static_cast<char>('0' + depth % 10);
            if (depth == 100) name[0] = 'y';
            make.createGroup(session.stream, &group, name, "X", kInterfaceVersion, error);
            parent->AddGroup(group, error);
            group->GetSharedObject()->Release();
            parent = group;
        }
    } else if (session.Is("empty_array")) {
        make.createStaticNumArr(session.stream, &array, "x", "X", kInterfaceVersion, error);
        root->GetGroup()->AddStaticDataShared(array->GetSharedObject(), error);
        array->GetSharedObject()->Release();
        if (error->code == 0) root->WriteDocument(error);
    } else if (session.Is("loose_samples")) {
        IVkjsonDynamicDataNum_v1* const track = MakeTrack(session, "x", error);
        track->AddSampleAtTicks(5, 1, 1, error);
        track->GetSharedObject()->Release();
        if (error->code == 0) root->WriteDocument(error);
    } else if (session.Is("late_node")) {
        root->WriteDocument(error);
        if (error->code != 0) return;
        make.createGroup(session.stream, &group, "x", "X", kInterfaceVersion, error);
        root->GetGroup()->AddGroup(group, error);
        group->GetSharedObject()->Release();
    }
}

void Convert(void* own, uint8_t* converted, ZT_ErrorRecord* error) {
    *converted = 0;
    if (own < sessions || own >= sessions + kSessions) return Fail(error, 3);
    const Session& session = *static_cast<Session*>(own);
    const SessionEnd end(static_cast<Session*>(own));
    if (session.Is("convert_fails")) return Fail(error, 4711, 12, -3);
    if (session.Is("convert_throws")) THROW;
    if (session.Is("convert_says_no")) return;
    if (session.Is("convert_lies")) {
        *converted = 255;
        return;
    }
    IVkjsonRoot_v1* root = nullptr;
    ZT_ErrorRecord outcome{0, 0, -1, -1};
    if (Build(session, root, &outcome)) AddForeignThings(session, root, &outcome);
    if (outcome.code == 0) AddWhatGetsLost(session, root, &outcome);
    if (outcome.code != 0) {
        *error = outcome;
    } else if (session.Is("half_written")) {
        root->WriteHeader(error);
        *converted = 1;
    } else if (session.Is("writes_twice")) {
        root->WriteDocument(error);
        *converted = root->WriteDocument(error) == 0;
    } else {
        *converted = root->WriteDocument(error) != 0;
        if (session.Is("convert_denies")) *converted = 0;
    }
    if (root == nullptr || session.Is("keeps_root")) return;
    root->GetSharedObject()->Release();
}

void CheckFileFormat(const char* module, const char* path, uint8_t* accepted, ZT_ErrorRecord* error) {
    if (!Same(LastPart(module), module)) return Fail(error, 2);
    if (IsNamed(path, "check_fails")) return Fail(error, 88, 7, 8);
    if (IsNamed(path, "check_throws")) THROW;
    *accepted = IsNamed(path, "check_says_no") ? 0 : 0xA5;
}

void InitializeSession(const char*, const char* converter, const char* path, StreamContext context, void** session,
                       ZT_ErrorRecord* error) {
    if (!Same(converter, "org.test.hostile.converter")) return Fail(error, 1);
    if (IsNamed(path, "session_fails")) return Fail(error, 99, 1, 2);
    if (IsNamed(path, "session_throws")) THROW;
    *session = TakeSession(path, context);
}

void Terminate(ZT_ErrorRecord* error) { Fail(error, 66); }

}  // namespace

#if defined(NO_INITIALIZE)
#define InitializePlugin InitializeNobody
#endif
ZT_PLUGIN_EXPORT void InitializePlugin(const char* module, const ZT_PluginServices* hostServices,
                                       ZT_PluginEntryPoints* entryPoints, ZT_ErrorRecord* error) {
    services = hostServices;
    if (services->version != 1 || services->host->hostTable1 != nullptr) Fail(error, 1);
    if (entryPoints->size != 48 || entryPoints->version != 1 || entryPoints->convert != nullptr) Fail(error, 1);
    entryPoints->terminate = &Terminate;
    entryPoints->initializeSession = &InitializeSession;
    entryPoints->checkFileFormat = &CheckFileFormat;
    entryPoints->convert = &Convert;
    if (Same(module, "table_version")) entryPoints->version = 2;
    if (Same(module, "table_size")) entryPoints->size = 0xFFFFFFFF;
    if (Same(module, "no_entries")) entryPoints->initializeSession = nullptr;
    if (Same(module, "initialize_fails") || Same(module, "forced_fails")) Fail(error, 77, 5, 6);
    if (Same(module, "initialize_throws")) THROW;
}
