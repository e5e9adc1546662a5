// The binary interface between the library and converter plug-ins.
//
// A plug-in module is a dynamic library in the folder `zentor-plugins` beside the library, or in a folder that the
// environment variable ZENTOR_PLUGIN_PATH names. It exports one function, InitializePlugin, and carries two texts that
// the library reads without running any code of the module:
// - its manifest, JSON: a resource of type "txt" and name "ZTPLUGINUIDS" on Windows, the section
//   ".zt.txt.ZTPLUGINUIDS" elsewhere;
// - its identifier: likewise under the name "MODULE_IDENTIFIER".
// zentor_add_plugin() of the CMake package embeds both. converter.h wraps everything here for C++.
//
// Order of calls: InitializePlugin when a converter of the module is needed for the first time; then for each input
// CheckFileFormat, and if that says yes and the converter is chosen, InitializeSession and Convert, once each and on
// one thread; Terminate before the module is unloaded. Conversions of different inputs may run on several threads at
// once.
//
// Everything is plain tables and flat interfaces, for any compiler. No exception leaves a function of either side:
// failures are codes in the error record, whose two details the host is given as they are (-1: none). Texts are
// zero-terminated UTF-8 and borrowed for the call.
#pragma once

#include <stdint.h>

#include "nodes.h"

#if defined(_WIN32)
#define ZT_PLUGIN_EXPORT extern "C" __declspec(dllexport)
#else
#define ZT_PLUGIN_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace ZT_PLUGIN {

// The version of the tables here, and of the interfaces of nodes.h.
constexpr uint32_t kInterfaceVersion = 1;

// The document of one conversion; nodes belong to the document that they were made for.
typedef uint64_t StreamContext;

// How a plug-in makes nodes. Each factory stores the new node's interface through `node`, with one reference already
// counted: the first Acquire takes that one over, and a plug-in that never calls Acquire gives it back with one Release
// (of the node's GetSharedObject). A node that is attached is kept by its group. Nodes go with their conversion at the
// latest. `version` is kInterfaceVersion of the
// header that the plug-in was built with. On failure *node stays as it was. Codes: ZT_NULL_RESULT (`node` is null),
// ZT_VERSION_TOO_NEW (a version above 1), ZT_VERSION_ZERO (version 0), ZT_STREAM_NOT_OPEN (`context` is that of no
// conversion under way), ZT_INVALID_NAME (the match name is not of the form that nodes.h states), ZT_RANGE_VALUE (a
// number that is not finite).
struct ZT_NodeFactories {
    uint64_t size;  // of this table, in bytes
    // Also ZT_EMPTY_CREATOR (no creator, or an empty one), ZT_INVALID_GROUP (the document has a root, or had one).
    void (*createRoot)(StreamContext context, IVkjsonRoot_v1** node, const char* creator, uint32_t version,
                       ZT_ErrorRecord* error);
    void (*createGroup)(StreamContext context, IVkjsonGroup_v1** node, const char* matchName, const char* displayName,
                        uint32_t version, ZT_ErrorRecord* error);
    // Dynamic nodes get their names when they are initialised.
    void (*createDynamicNumArr)(StreamContext context, IVkjsonDynamicDataNumArr_v1** node, uint32_t version,
                                ZT_ErrorRecord* error);
    void (*createDynamicNum)(StreamContext context, IVkjsonDynamicDataNum_v1** node, uint32_t version,
                             ZT_ErrorRecord* error);
    void (*createDynamicString)(StreamContext context, IVkjsonDynamicDataString_v1** node, uint32_t version,
                                ZT_ErrorRecord* error);
    void (*createStaticNum)(StreamContext context, IVkjsonStaticDataNum_v1** node, const char* matchName,
                            const char* displayName, double value, uint32_t version, ZT_ErrorRecord* error);
    void (*createStaticNumArr)(StreamContext context, IVkjsonStaticDataNumArr_v1** node, const char* matchName,
                               const char* displayName, uint32_t version, ZT_ErrorRecord* error);
    void (*createStaticString)(StreamContext context, IVkjsonStaticDataString_v1** node, const char* matchName,
                               const char* displayName, const char* value, uint32_t version, ZT_ErrorRecord* error);
    // `value`: any other than 0 is true.
    void (*createStaticBool)(StreamContext context, IVkjsonStaticDataBool_v1** node, const char* matchName,
                             const char* displayName, uint8_t value, uint32_t version, ZT_ErrorRecord* error);
};

// What else a plug-in can ask for. The table grows at its end: `size` tells what a library has of it.
struct ZT_HostServices {
    uint64_t size;  // of this table, in bytes
    // Reference counting by address: a pointer that is no live object of the library is ignored.
    void (*acquire)(ISharedObject* object);
    void (*release)(ISharedObject* object);
    // The two tables that the host application passed to CreateZentor_1; null where it has none. What they hold is
    // between the application and its plug-ins.
    const void* hostTable1;
    const void* hostTable2;
    // The identifier, as in the manifest, of the converter that the calling thread's CheckFileFormat is asked about;
    // borrowed for that call. Null outside of CheckFileFormat. Older libraries do not have this entry.
    const char* (*checkedConverter)();
    // Says what a failure was for which there is but a code, such as the words of an exception: a line on standard
    // error where the environment variable ZENTOR_TRACE is 1, else nothing. Older libraries do not have this entry.
    void (*trace)(const char* text);
    // The value of a parameter that the host gives for this conversion; null when it gives none. Lives as long as the
    // conversion. The host's parameters are those that the manifest names: others are refused before the module is
    // asked. Older libraries do not have this entry.
    const char* (*parameter)(StreamContext context, const char* key);
    // Tells the host what the conversion has changed or left out, once it has succeeded: a sentence, how often, and
    // where in the input first, as a byte offset and a line from 1 on (-1: not known). At most 100 of a conversion are
    // kept. Older libraries do not have this entry.
    void (*notice)(StreamContext context, const char* message, uint64_t count, int64_t offset, int64_t line);
    // Says why the conversion fails, before it does with a code: the cause and what helps, in words for people. The
    // last one counts. Older libraries do not have this entry.
    void (*reason)(StreamContext context, const char* message);
    // The node's adder of numbers as texts, which lives as long as the node; null for what is no dynamic number of the
    // library. Older libraries do not have this entry.
    IVkjsonNumberTexts_v1* (*numberTexts)(IVkjsonDynamicDataNum_v1* node);
};

// What the library hands to InitializePlugin. Lives until the module is unloaded.
struct ZT_PluginServices {
    uint32_t size;     // of this table, in bytes
    uint32_t version;  // 1
    const ZT_NodeFactories* factories;
    const ZT_HostServices* host;
};

// What a module fills in InitializePlugin; the library has set `size` and `version`, which stay as they are.
struct ZT_PluginEntryPoints {
    uint32_t size;     // 48
    uint32_t version;  // 1
    // The end of the module. May be null.
    void (*terminate)(ZT_ErrorRecord* error);
    // Begins the conversion of one input by one of the module's converters. `inputPath` is absolute. What is stored
    // through `session` is handed to `convert` and is the module's own; it ends with that call.
    void (*initializeSession)(const char* moduleIdentifier, const char* converterIdentifier, const char* inputPath,
                              StreamContext context, void** session, ZT_ErrorRecord* error);
    void* reserved;
    // Whether one of the module's converters, which the host service `checkedConverter` names, can convert the input:
    // any value of *accepted other than 0 is yes. May be null: the manifest decides.
    void (*checkFileFormat)(const char* moduleIdentifier, const char* inputPath, uint8_t* accepted,
                            ZT_ErrorRecord* error);
    // Makes the document: creates its root, attaches nodes, and calls the root's WriteDocument. *converted other than
    // 0: it did. The session is over, whatever the result.
    void (*convert)(void* session, uint8_t* converted, ZT_ErrorRecord* error);
};

// The type of the function InitializePlugin, which every module exports. The module cannot be used, and is unloaded, if
// it stores a code in `error`.
typedef void (*ZT_InitializePlugin)(const char* moduleIdentifier, const ZT_PluginServices* services,
                                    ZT_PluginEntryPoints* entryPoints, ZT_ErrorRecord* error);

}  // namespace ZT_PLUGIN
