#include "conversion/native_frame.h"

#include "errors/exception.h"

namespace zentor {

using namespace ZT_PLUGIN;

namespace {

// Makes a node of one kind for the document of a stream.
template <class Node, class... Arguments>
Owner<Node> CreateNode(std::uint64_t streamId, const Arguments&... arguments) {
    try {
        return MakeOwner(new Node(streamId, arguments...));
    } catch (const ZT_PluginException& failure) {
        if (failure.code() == ZT_STREAM_NOT_OPEN) Raise(kWriterFailureStream);
        RaiseConverterFailure(failure.code(), failure.extra1(), failure.extra2());
    }
}

// The same for the converter's document.
template <class Node, class... Arguments>
Owner<Node> CreateNode(const ZT_ConverterHandlerBase* converter, const Arguments&... arguments) {
    if (converter == nullptr) Raise(kInvalidPointer, Quoted("Native converter"));
    return CreateNode<Node>(converter->Info().streamId, arguments...);
}

}  // namespace

Owner<VkjsonRootImpl> NativeCreateRoot(const ZT_ConverterHandlerBase* converter, std::uint64_t streamId) {
    if (converter == nullptr) Raise(kInvalidPointer, Quoted("Native converter"));
    return CreateNode<VkjsonRootImpl>(streamId);
}

Owner<VkjsonGroupImpl> NativeCreateGroup(const ZT_ConverterHandlerBase* converter, std::string_view matchName,
                                         std::string_view displayName) {
    return CreateNode<VkjsonGroupImpl>(converter, matchName, displayName);
}

Owner<VkjsonStaticDataNumImpl> NativeCreateStaticNum(const ZT_ConverterHandlerBase* converter,
                                                     std::string_view matchName, std::string_view displayName,
                                                     double value, const NumberProperties& properties) {
    auto node = CreateNode<VkjsonStaticDataNumImpl>(converter, matchName, displayName, value);
    const NumberPattern& pattern = properties.pattern;
    const MinMax& range = properties.legalRange;
    CallModel(
        [&](auto* error) { node->SetPattern(pattern.digitsInteger, pattern.digitsDecimal, pattern.isSigned, error); });
    CallModel([&](auto* error) { node->SetRange(range.minimum, range.maximum, value, error); });
    return node;
}

Owner<VkjsonStaticDataNumArrImpl> NativeCreateStaticNumArr(const ZT_ConverterHandlerBase* converter,
                                                           std::string_view matchName, std::string_view displayName,
                                                           std::span<const double> values,
                                                           const NumberArrayProperties& properties) {
    auto node = CreateNode<VkjsonStaticDataNumArrImpl>(converter, matchName, displayName);
    const NumberPattern& pattern = properties.pattern;
    std::vector<double> minima;
    std::vector<double> maxima;
    for (const MinMax& range : properties.legalRanges) {
        minima.push_back(range.minimum);
        maxima.push_back(range.maximum);
    }
    CallModel([&](auto* error) { node->SetValues(values.data(), values.size(), error); });
    CallModel(
        [&](auto* error) { node->SetPattern(pattern.digitsInteger, pattern.digitsDecimal, pattern.isSigned, error); });
    if (!minima.empty()) {
        CallModel([&](auto* error) { node->SetRanges(minima.data(), maxima.data(), minima.size(), error); });
    }
    CallModel([&](auto* error) {
        node->SetDisplayNames(properties.displayNames.data(), properties.displayNames.size(), error);
    });
    CallModel([&](auto* error) { node->SetIsPoint(properties.isPoint, error); });
    return node;
}

Owner<VkjsonStaticDataStringImpl> NativeCreateStaticString(const ZT_ConverterHandlerBase* converter,
                                                           std::string_view matchName, std::string_view displayName,
                                                           std::string_view value, const StringProperties& properties) {
    auto node = CreateNode<VkjsonStaticDataStringImpl>(converter, matchName, displayName, value);
    CallModel([&](auto* error) {
        node->SetStringProperties(properties.maxLength, properties.maxDigitsInLength, properties.isEventMarker, error);
    });
    return node;
}

Owner<VkjsonStaticDataBoolImpl> NativeCreateStaticBool(const ZT_ConverterHandlerBase* converter,
                                                       std::string_view matchName, std::string_view displayName,
                                                       bool value) {
    return CreateNode<VkjsonStaticDataBoolImpl>(converter, matchName, displayName, value);
}

Owner<VkjsonDynamicDataNumArrImpl> NativeCreateDynamicNumArr(const ZT_ConverterHandlerBase* converter,
                                                             const DynamicArrayDescription& description) {
    constexpr std::uint64_t kMostDimensions = 3;
    const std::uint64_t dimensions = description.dimensions;
    const NumberArrayProperties& properties = description.properties;
    auto node = CreateNode<VkjsonDynamicDataNumArrImpl>(converter);
    if (dimensions == 0 || dimensions > kMostDimensions) Raise(kWriterFailureDimensions);
    if (!properties.legalRanges.empty() && properties.legalRanges.size() != dimensions) Raise(kWriterFailureRanges);
    if (!properties.displayNames.empty() && properties.displayNames.size() != dimensions) {
        throw ZT_PluginException(ZT_DISPLAY_NAME_COUNT);
    }
    const std::string matchName(description.matchName);
    const std::string displayName(description.displayName);
    const std::string sampleSetId(description.sampleSetId);
    CallModel([&](auto* error) {
        node->Initialize(matchName.c_str(), displayName.c_str(), sampleSetId.c_str(), 0,
                         static_cast<std::uint32_t>(description.interpolation), 0, nullptr, error);
    });
    const NumberPattern& pattern = properties.pattern;
    CallModel([&](auto* error) { node->SetArraySize(dimensions, error); });
    CallModel([&](auto* error) { node->SetIsSigned(pattern.isSigned, error); });
    CallModel(
        [&](auto* error) { node->SetPattern(pattern.digitsInteger, pattern.digitsDecimal, pattern.isSigned, error); });
    for (const MinMax& range : properties.legalRanges) {
        CallModel([&](auto* error) { node->AddRange(range.minimum, range.maximum, error); });
    }
    for (const char* const name : properties.displayNames) {
        CallModel([&](auto* error) { node->AddDisplayName(name, error); });
    }
    CallModel([&](auto* error) { node->SetIsPoint(properties.isPoint, error); });
    return node;
}

}  // namespace zentor
