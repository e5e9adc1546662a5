// Writing a converter plug-in in C++14 or later: nodes that give themselves back, failures as exceptions, and the
// module's entry points. Everything here is inline and compiled into the plug-in; between it and the library stand only
// the tables of plugin.h and the interfaces of nodes.h, which document the rules, ranges and codes.
//
//     class MyConverter {
//     public:
//         static bool CheckFormat(const std::string& inputPath);
//         static bool Convert(ZT_PLUGIN::Conversion& conversion);
//     };
//     ZENTOR_PLUGIN(MyConverter)
//
// CheckFormat says whether the input can be converted; it is asked for inputs whose extension or signature is in the
// module's manifest. A module with several converters takes a second argument, `const std::string& converterId`: which
// of them is meant, by its identifier in the manifest. Convert makes the document: true when it was written. Both may
// run on several threads at once, for different inputs. Any exception that leaves them becomes a code: that of a
// ZT_PluginException, ZT_CONVERTER_OUT_OF_MEMORY for want of memory, ZT_CONVERTER_UNKNOWN for others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "plugin.h"
#include "plugin_exception.h"
#include "zentor/error_codes.h"

namespace ZT_PLUGIN {

// Calls an operation with an error record; throws the code that it stores there.
template <class Call>
void Checked(Call&& call) {
    ZT_ErrorRecord error{0, 0, -1, -1};
    call(&error);
    if (error.code != 0) throw ZT_PluginException(error.code, error.extra1, error.extra2);
}

// The input cannot be converted: ZT_CONVERSION, with the byte offset and the line (from 1 on) of the fault, -1 for
// unknown.
[[noreturn]] inline void RefuseInput(std::int64_t offset = -1, std::int64_t line = -1) {
    throw ZT_PluginException(ZT_CONVERSION, offset, line);
}

// A node, or none. Gives back the reference that it was handed over with; a node that is attached lives on.
template <class Interface>
class NodeHandle {
public:
    NodeHandle() = default;
    explicit NodeHandle(Interface* node) : node_(node) {}
    NodeHandle(NodeHandle&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
    NodeHandle& operator=(NodeHandle&& other) noexcept {
        std::swap(node_, other.node_);
        return *this;
    }
    ~NodeHandle() {
        if (node_ != nullptr) node_->GetSharedObject()->Release();
    }

    Interface* get() const { return node_; }
    Interface* operator->() const { return node_; }

private:
    Interface* node_ = nullptr;
};

// Static nodes. A pattern is the number of digits before and after the point; without one it is taken from the value,
// as is the legal range.
class StaticNumber : public NodeHandle<IVkjsonStaticDataNum_v1> {
public:
    using NodeHandle::NodeHandle;
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned) {
        Checked([&](auto* error) { get()->SetPattern(digitsInteger, digitsDecimal, isSigned ? 1 : 0, error); });
    }
    // `value`: one that the range must hold, besides that of the node.
    void SetLegalRange(double minimum, double maximum, double value) {
        Checked([&](auto* error) { get()->SetRange(minimum, maximum, value, error); });
    }
};

class StaticText : public NodeHandle<IVkjsonStaticDataString_v1> {
public:
    using NodeHandle::NodeHandle;
    void SetProperties(std::uint64_t maxLength, std::uint64_t maxDigitsInLength, bool isEventMarker) {
        Checked([&](auto* error) {
            get()->SetStringProperties(maxLength, maxDigitsInLength, isEventMarker ? 1 : 0, error);
        });
    }
};

class StaticBool : public NodeHandle<IVkjsonStaticDataBool_v1> {
public:
    using NodeHandle::NodeHandle;
};

// The least and the greatest value that are allowed.
struct LegalRange {
    double minimum;
    double maximum;
};

class StaticNumberArray : public NodeHandle<IVkjsonStaticDataNumArr_v1> {
public:
    using NodeHandle::NodeHandle;
    // One pattern for all elements.
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned) {
        Checked([&](auto* error) { get()->SetPattern(digitsInteger, digitsDecimal, isSigned ? 1 : 0, error); });
    }
    // One for each element.
    void SetLegalRanges(const std::vector<LegalRange>& ranges) {
        std::vector<double> minima;
        std::vector<double> maxima;
        for (const LegalRange& range : ranges) {
            minima.push_back(range.minimum);
            maxima.push_back(range.maximum);
        }
        Checked([&](auto* error) { get()->SetRanges(minima.data(), maxima.data(), ranges.size(), error); });
    }
    void SetValues(const std::vector<double>& values) {
        Checked([&](auto* error) { get()->SetValues(values.data(), values.size(), error); });
    }
    void SetDisplayNames(const std::vector<const char*>& names) {
        Checked([&](auto* error) { get()->SetDisplayNames(names.data(), names.size(), error); });
    }
    void SetIsPoint(bool isPoint) {
        Checked([&](auto* error) { get()->SetIsPoint(isPoint ? 1 : 0, error); });
    }
};

// A time: so many ticks of 1/perSecond seconds, since the start of the day for time codes, since 1970-01-01T00:00:00Z
// for UTC.
struct Ticks {
    std::int64_t count;
    std::uint32_t perSecond;
};

// A time may also be a time string of the document's form: a text, or what becomes one by itself, but no list in
// braces, which is Ticks.
template <class Text>
using IfText = std::enable_if_t<std::is_convertible<const Text&, std::string>::value>;
inline const char* TimeText(const char* time) { return time; }
inline const char* TimeText(const std::string& time) { return time.c_str(); }

// How the values between two samples are to be understood.
enum class Between : std::uint32_t { kLinear = 1, kHold = 2 };

// What dynamic nodes have in common. Samples are added in the order of time, after the node is attached and the root
// has its time mode.
template <class Interface>
class DynamicNode : public NodeHandle<Interface> {
public:
    using NodeHandle<Interface>::NodeHandle;
    // How many samples are expected, for whoever asks before they are there; what is written is their number.
    void SetSampleCount(std::uint64_t count) {
        Checked([&](auto* error) { this->get()->SetSampleCount(count, error); });
    }
    // Writes the samples into the document now, and lets go what was kept for them; the root's Write does it for nodes
    // that have not.
    void WriteSamples() {
        Checked([&](auto* error) { this->get()->WriteSamples(error); });
    }
};

class DynamicNumber : public DynamicNode<IVkjsonDynamicDataNum_v1> {
public:
    using DynamicNode::DynamicNode;
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned) {
        Checked([&](auto* error) { get()->SetPattern(digitsInteger, digitsDecimal, isSigned ? 1 : 0, error); });
    }
    void SetLegalRange(double minimum, double maximum) {
        Checked([&](auto* error) { get()->SetRange(minimum, maximum, minimum, error); });
    }
    void AddSample(Ticks time, double value) {
        Checked([&](auto* error) { get()->AddSampleAtTicks(time.count, time.perSecond, value, error); });
    }
    // A value that is a decimal text already, `size` bytes, is not read and written again.
    void AddSampleText(Ticks time, const char* text, std::size_t size) {
        Checked([&](auto* error) { Texts().AddSampleAtTicks(time.count, time.perSecond, text, size, error); });
    }
    template <class Text, class = IfText<Text>>
    void AddSample(const Text& time, double value) {
        Checked([&](auto* error) { get()->AddSampleAtTimeString(TimeText(time), value, error); });
    }

private:
    friend class Conversion;

    // ZT_VERSION_TOO_NEW with a library that does not have them.
    IVkjsonNumberTexts_v1& Texts() const {
        if (texts_ == nullptr) throw ZT_PluginException(ZT_VERSION_TOO_NEW);
        return *texts_;
    }

    IVkjsonNumberTexts_v1* texts_ = nullptr;  // of the node, which keeps it
};

class DynamicNumberArray : public DynamicNode<IVkjsonDynamicDataNumArr_v1> {
public:
    using DynamicNode::DynamicNode;
    void SetPattern(std::uint64_t digitsInteger, std::uint64_t digitsDecimal, bool isSigned) {
        Checked([&](auto* error) { get()->SetPattern(digitsInteger, digitsDecimal, isSigned ? 1 : 0, error); });
    }
    // All elements have a sign, even if none is negative.
    void SetIsSigned(bool isSigned) {
        Checked([&](auto* error) { get()->SetIsSigned(isSigned ? 1 : 0, error); });
    }
    // For the next element.
    void AddLegalRange(double minimum, double maximum) {
        Checked([&](auto* error) { get()->AddRange(minimum, maximum, error); });
    }
    void AddDisplayName(const std::string& name) {
        Checked([&](auto* error) { get()->AddDisplayName(name.c_str(), error); });
    }
    void SetIsPoint(bool isPoint) {
        Checked([&](auto* error) { get()->SetIsPoint(isPoint ? 1 : 0, error); });
    }
    void AddSample(Ticks time, const std::vector<double>& values) {
        Checked([&](auto* error) {
            get()->AddSampleAtTicks(time.count, time.perSecond, values.data(), values.size(), error);
        });
    }
    template <class Text, class = IfText<Text>>
    void AddSample(const Text& time, const std::vector<double>& values) {
        Checked(
            [&](auto* error) { get()->AddSampleAtTimeString(TimeText(time), values.data(), values.size(), error); });
    }
};

class DynamicText : public DynamicNode<IVkjsonDynamicDataString_v1> {
public:
    using DynamicNode::DynamicNode;
    void SetProperties(std::uint64_t maxLength, std::uint64_t maxDigitsInLength, bool isEventMarker) {
        Checked([&](auto* error) {
            get()->SetStringProperties(maxLength, maxDigitsInLength, isEventMarker ? 1 : 0, error);
        });
    }
    void AddSample(Ticks time, const std::string& text) {
        Checked([&](auto* error) { get()->AddSampleAtTicks(time.count, time.perSecond, text.c_str(), error); });
    }
    template <class Text, class = IfText<Text>>
    void AddSample(const Text& time, const std::string& text) {
        Checked([&](auto* error) { get()->AddSampleAtTimeString(TimeText(time), text.c_str(), error); });
    }
};

// What a dynamic node is called and how it is sampled. The sample-set identifier is the match name unless given.
struct DynamicNames {
    std::string matchName;
    std::string displayName;
    Between between = Between::kLinear;
    std::string sampleSetId = {};
    std::string maxInterSampleDuration = {};  // of a node with an expected frequency; empty: none
};

class Group;

// Attaches nodes to a group. They are written in the order in which they are attached.
class GroupMembers {
public:
    void Add(const StaticNumber& node) { AddStatic(node); }
    void Add(const StaticText& node) { AddStatic(node); }
    void Add(const StaticBool& node) { AddStatic(node); }
    void Add(const StaticNumberArray& node) { AddStatic(node); }
    void Add(const DynamicNumber& node) { AddDynamic(node); }
    void Add(const DynamicNumberArray& node) { AddDynamic(node); }
    void Add(const DynamicText& node) { AddDynamic(node); }
    inline void Add(const Group& group);

protected:
    GroupMembers() = default;
    GroupMembers(GroupMembers&&) = default;
    GroupMembers& operator=(GroupMembers&&) = default;
    virtual ~GroupMembers() = default;
    virtual IVkjsonGroup_v1* Members() const = 0;

private:
    template <class Node>
    void AddStatic(const Node& node) {
        Checked([&](auto* error) { Members()->AddStaticDataShared(node->GetSharedObject(), error); });
    }
    template <class Node>
    void AddDynamic(const Node& node) {
        Checked([&](auto* error) { Members()->AddDynamicDataShared(node->GetSharedObject(), error); });
    }
};

class Group : public NodeHandle<IVkjsonGroup_v1>, public GroupMembers {
public:
    using NodeHandle::NodeHandle;

protected:
    IVkjsonGroup_v1* Members() const override { return get(); }
};

inline void GroupMembers::Add(const Group& group) {
    Checked([&](auto* error) { Members()->AddGroupShared(group->GetSharedObject(), error); });
}

class Root : public NodeHandle<IVkjsonRoot_v1>, public GroupMembers {
public:
    using NodeHandle::NodeHandle;

    // The time mode of all samples, set before the first of them.
    void SetTimecode(std::uint32_t frameRateValue, std::uint32_t frameRateScale, bool dropFrame) {
        Checked([&](auto* error) { get()->SetTimecodeInfo(dropFrame ? 1 : 0, frameRateValue, frameRateScale, error); });
    }
    // `precision`: decimals of a second, 0 to 9. `isGmt`: times end in "Z".
    void SetUtc(std::uint32_t precision, bool isGmt) {
        Checked([&](auto* error) { get()->SetUtcInfo(precision, isGmt ? 1 : 0, error); });
    }
    // An entry of the video-sync list, which says what of a video belongs to what of the document: the number of a
    // frame, or a time string of the document's form. In order, and before the first sample.
    void AddVideoSyncFrame(const std::string& fileName, std::uint32_t frameNumber) {
        Checked([&](auto* error) { get()->AddVideoSyncFrame(fileName.c_str(), frameNumber, error); });
    }
    void AddVideoSyncTime(const std::string& fileName, const std::string& time) {
        Checked([&](auto* error) { get()->AddVideoSyncTime(fileName.c_str(), time.c_str(), error); });
    }
    // In place of the creator that it was made with; empty: the document names none.
    void SetCreator(const std::string& creator) {
        Checked([&](auto* error) { get()->SetCreator(creator.c_str(), error); });
    }
    // Of the root itself, which is not written.
    void SetDisplayName(const std::string& displayName) {
        Checked([&](auto* error) { get()->SetDisplayName(displayName.c_str(), error); });
    }
    // Begins the document now instead of with the first samples.
    void WriteHeader() {
        Checked([&](auto* error) { get()->WriteHeader(error); });
    }
    // Finishes the document: true when it was written.
    bool Write() {
        std::uint32_t written = 0;
        Checked([&](auto* error) { written = get()->WriteDocument(error); });
        return written != 0;
    }

protected:
    IVkjsonGroup_v1* Members() const override { return get()->GetGroup(); }
};

// One conversion: its input, and the factories of its nodes. Match names and sample-set identifiers are unique in a
// document.
class Conversion {
public:
    Conversion(const ZT_PluginServices& services, StreamContext context, const char* converterId, const char* inputPath)
        : services_(services), context_(context), converterId_(converterId), inputPath_(inputPath) {}
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    const std::string& ConverterId() const { return converterId_; }  // as in the manifest
    const std::string& InputPath() const { return inputPath_; }      // absolute, UTF-8
    const ZT_HostServices* Host() const { return services_.host; }

    // The value of a parameter that the host gives, of those that the manifest names; null when it gives none, or when
    // the library is older than parameters.
    const char* Parameter(const char* key) const {
        const ZT_HostServices* const host = services_.host;
        constexpr std::size_t kEnd = offsetof(ZT_HostServices, parameter) + sizeof(host->parameter);
        return host != nullptr && host->size >= kEnd ? host->parameter(context_, key) : nullptr;
    }
    // Tells the host what the conversion has changed or left out, how often, and where in the input first: a byte
    // offset, and a line from 1 on. Older libraries do not pass it on.
    void Notice(const std::string& message, std::uint64_t count = 1, std::int64_t offset = -1,
                std::int64_t line = -1) const {
        const ZT_HostServices* const host = services_.host;
        constexpr std::size_t kEnd = offsetof(ZT_HostServices, notice) + sizeof(host->notice);
        if (host != nullptr && host->size >= kEnd) host->notice(context_, message.c_str(), count, offset, line);
    }

    // The input cannot be converted, and why, in words for people: the cause and what helps. Otherwise as RefuseInput.
    [[noreturn]] void Refuse(const std::string& reason, std::int64_t offset = -1, std::int64_t line = -1) const {
        const ZT_HostServices* const host = services_.host;
        constexpr std::size_t kEnd = offsetof(ZT_HostServices, reason) + sizeof(host->reason);
        if (host != nullptr && host->size >= kEnd) host->reason(context_, reason.c_str());
        RefuseInput(offset, line);
    }

    Root CreateRoot(const std::string& creator) {
        return Create<Root, IVkjsonRoot_v1>([&](auto** node, auto* error) {
            Factories().createRoot(context_, node, creator.c_str(), kInterfaceVersion, error);
        });
    }
    Group CreateGroup(const std::string& matchName, const std::string& displayName) {
        return Create<Group, IVkjsonGroup_v1>([&](auto** node, auto* error) {
            Factories().createGroup(context_, node, matchName.c_str(), displayName.c_str(), kInterfaceVersion, error);
        });
    }
    StaticNumber CreateNumber(const std::string& matchName, const std::string& displayName, double value) {
        return Create<StaticNumber, IVkjsonStaticDataNum_v1>([&](auto** node, auto* error) {
            Factories().createStaticNum(context_, node, matchName.c_str(), displayName.c_str(), value,
                                        kInterfaceVersion, error);
        });
    }
    StaticText CreateText(const std::string& matchName, const std::string& displayName, const std::string& value) {
        return Create<StaticText, IVkjsonStaticDataString_v1>([&](auto** node, auto* error) {
            Factories().createStaticString(context_, node, matchName.c_str(), displayName.c_str(), value.c_str(),
                                           kInterfaceVersion, error);
        });
    }
    StaticBool CreateBool(const std::string& matchName, const std::string& displayName, bool value) {
        return Create<StaticBool, IVkjsonStaticDataBool_v1>([&](auto** node, auto* error) {
            Factories().createStaticBool(context_, node, matchName.c_str(), displayName.c_str(), value ? 1 : 0,
                                         kInterfaceVersion, error);
        });
    }
    StaticNumberArray CreateNumberArray(const std::string& matchName, const std::string& displayName,
                                        const std::vector<double>& values) {
        auto array = Create<StaticNumberArray, IVkjsonStaticDataNumArr_v1>([&](auto** node, auto* error) {
            Factories().createStaticNumArr(context_, node, matchName.c_str(), displayName.c_str(), kInterfaceVersion,
                                           error);
        });
        array.SetValues(values);
        return array;
    }
    DynamicNumber CreateDynamicNumber(const DynamicNames& names) {
        auto number = Named(names, Create<DynamicNumber, IVkjsonDynamicDataNum_v1>([&](auto** node, auto* error) {
                                Factories().createDynamicNum(context_, node, kInterfaceVersion, error);
                            }));
        const ZT_HostServices* const host = services_.host;
        constexpr std::size_t kEnd = offsetof(ZT_HostServices, numberTexts) + sizeof(host->numberTexts);
        if (host != nullptr && host->size >= kEnd) number.texts_ = host->numberTexts(number.get());
        return number;
    }
    DynamicNumberArray CreateDynamicNumberArray(const DynamicNames& names, std::uint64_t size) {
        auto array =
            Named(names, Create<DynamicNumberArray, IVkjsonDynamicDataNumArr_v1>([&](auto** node, auto* error) {
                      Factories().createDynamicNumArr(context_, node, kInterfaceVersion, error);
                  }));
        Checked([&](auto* error) { array->SetArraySize(size, error); });
        return array;
    }
    DynamicText CreateDynamicText(const DynamicNames& names) {
        return Named(names, Create<DynamicText, IVkjsonDynamicDataString_v1>([&](auto** node, auto* error) {
                         Factories().createDynamicString(context_, node, kInterfaceVersion, error);
                     }));
    }

private:
    const ZT_NodeFactories& Factories() const { return *services_.factories; }

    template <class Handle, class Interface, class Make>
    static Handle Create(Make&& make) {
        Interface* node = nullptr;
        Checked([&](auto* error) { make(&node, error); });
        return Handle(node);
    }

    template <class Node>
    static Node Named(const DynamicNames& names, Node node) {
        const std::string& sampleSetId = names.sampleSetId.empty() ? names.matchName : names.sampleSetId;
        const bool hasFrequency = !names.maxInterSampleDuration.empty();
        Checked([&](auto* error) {
            node->Initialize(names.matchName.c_str(), names.displayName.c_str(), sampleSetId.c_str(), 0,
                             static_cast<std::uint32_t>(names.between), hasFrequency ? 1 : 0,
                             names.maxInterSampleDuration.c_str(), error);
        });
        return node;
    }

    const ZT_PluginServices& services_;
    StreamContext context_;
    std::string converterId_;
    std::string inputPath_;
};

// The entry points of a module whose converter is `Converter`.
template <class Converter>
class PluginModule {
public:
    static void Initialize(const ZT_PluginServices* services, ZT_PluginEntryPoints* entryPoints,
                           ZT_ErrorRecord* error) noexcept {
        Guarded(error, [&] {
            if (services == nullptr || services->version < kInterfaceVersion || services->factories == nullptr ||
                entryPoints == nullptr || entryPoints->size < sizeof *entryPoints) {
                throw ZT_PluginException(ZT_INVALID_POINTER);
            }
            services_ = services;
            entryPoints->initializeSession = &InitializeSession;
            entryPoints->checkFileFormat = &CheckFileFormat;
            entryPoints->convert = &Convert;
        });
    }

private:
    template <class Body>
    static void Guarded(ZT_ErrorRecord* error, Body&& body) noexcept {
        ZT_ErrorRecord outcome{0, 0, -1, -1};
        try {
            body();
        } catch (const ZT_PluginException& failure) {
            outcome = {0, failure.code(), failure.extra1(), failure.extra2()};
        } catch (const std::bad_alloc&) {
            outcome.code = ZT_CONVERTER_OUT_OF_MEMORY;
        } catch (const std::exception& failure) {
            outcome.code = ZT_CONVERTER_UNKNOWN;
            Trace(failure.what());
        } catch (...) {
            outcome.code = ZT_CONVERTER_UNKNOWN;
        }
        if (error != nullptr) *error = outcome;
    }

    // What the error record has no room for.
    static void Trace(const char* text) noexcept {
        const ZT_HostServices* const host = services_ == nullptr ? nullptr : services_->host;
        constexpr std::size_t kEnd = offsetof(ZT_HostServices, trace) + sizeof(host->trace);
        if (host != nullptr && host->size >= kEnd) host->trace(text);
    }

    static void InitializeSession(const char*, const char* converterId, const char* inputPath, StreamContext context,
                                  void** session, ZT_ErrorRecord* error) {
        Guarded(error, [&] { *session = new Conversion(*services_, context, converterId, inputPath); });
    }
    static void CheckFileFormat(const char*, const char* inputPath, std::uint8_t* accepted, ZT_ErrorRecord* error) {
        Guarded(error, [&] { *accepted = Accepts<Converter>(inputPath, 0) ? 1 : 0; });
    }

    // A CheckFormat that wants to know the converter comes first.
    template <class Checker>
    static auto Accepts(const char* inputPath, int)
        -> decltype(Checker::CheckFormat(std::string(inputPath), std::string()) ? true : false) {
        return Checker::CheckFormat(std::string(inputPath), CheckedConverter());
    }
    template <class Checker>
    static bool Accepts(const char* inputPath, long) {
        return Checker::CheckFormat(std::string(inputPath));
    }
    // Empty with a library that does not tell.
    static std::string CheckedConverter() {
        const ZT_HostServices* const host = services_->host;
        constexpr std::size_t kEnd = offsetof(ZT_HostServices, checkedConverter) + sizeof(host->checkedConverter);
        if (host == nullptr || host->size < kEnd) return {};
        const char* const identifier = host->checkedConverter();
        return identifier == nullptr ? std::string() : std::string(identifier);
    }

    static void Convert(void* session, std::uint8_t* converted, ZT_ErrorRecord* error) {
        Guarded(error, [&] {
            const std::unique_ptr<Conversion> conversion(static_cast<Conversion*>(session));
            *converted = Converter::Convert(*conversion) ? 1 : 0;
        });
    }

    static const ZT_PluginServices* services_;
};

template <class Converter>
const ZT_PluginServices* PluginModule<Converter>::services_ = nullptr;

}  // namespace ZT_PLUGIN

// Once in a module: makes `Converter` its converter.
#define ZENTOR_PLUGIN(Converter)                                                                                  \
    ZT_PLUGIN_EXPORT void InitializePlugin(const char*, const ZT_PLUGIN::ZT_PluginServices* services,             \
                                           ZT_PLUGIN::ZT_PluginEntryPoints* entryPoints, ZT_ErrorRecord* error) { \
        ZT_PLUGIN::PluginModule<Converter>::Initialize(services, entryPoints, error);                             \
    }
