// Samples on standard output.
#pragma once

#include <memory>

#include "document.h"

namespace zentor_cli {

// Writes each sample as it comes; before the first one nothing.
class SampleOutput {
public:
    virtual ~SampleOutput() = default;

    virtual void Add(const Sample& sample) = 0;
    // After the last one.
    virtual void Finish() = 0;
};

// `format`: "text", "csv" or "json". `elementNames`: of the elements of an array, if they have names.
std::unique_ptr<SampleOutput> MakeSampleOutput(const std::string& format, std::vector<std::string> elementNames);

}  // namespace zentor_cli
