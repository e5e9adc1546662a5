// The two versions of the document format.
#pragma once

#include "reader/parser.h"

namespace zentor {

// Documents before version 2: the time information stands at the top.
class ZT_VkjsonParser_v1 final : public ZT_VkjsonParser {
public:
    using ZT_VkjsonParser::ZT_VkjsonParser;

private:
    const ZT_VkjsonValidator& Validator() const override;
    bool HasPlainOutlines() const override { return false; }
    void ReadVersionProperty(TopLevelKey key, std::size_t keyOffset) override;
    void AddMissing(std::string& names) const override;
    void CheckTimeMode(TopLevelKey key, std::size_t keyOffset) const;

    bool useTimecode_ = false;
};

// "vkjson2.0.0": the time information stands in "dynamicDataInfo".
class ZT_VkjsonParser_v2 final : public ZT_VkjsonParser {
public:
    using ZT_VkjsonParser::ZT_VkjsonParser;

private:
    const ZT_VkjsonValidator& Validator() const override;
    bool HasPlainOutlines() const override { return true; }
    void ReadVersionProperty(TopLevelKey key, std::size_t keyOffset) override;
    void CheckBeforeSamples(std::size_t keyOffset) const override;
    void AddMissing(std::string& names) const override;
    void CheckSamplesPresent(TopLevelKey key, std::size_t keyOffset) const;
    void ReadDynamicDataInfo();

    bool samplesPresent_ = false;
};

}  // namespace zentor
