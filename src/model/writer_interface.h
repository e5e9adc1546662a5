// How the model reaches the writer of its document.
#pragma once

#include <cstdint>
#include <vector>

#include "model/node_values.h"
#include "model/sample_buffer.h"

namespace ZT_PLUGIN {

class IVkjsonRoot_I;

// Bytes of the document from one offset to another.
struct ByteRange {
    std::uint64_t begin;
    std::uint64_t end;
};

// Writes one document. Failures are ZT_PluginExceptions; after one the document counts as not written and stays so.
class IDocumentWriter {
public:
    virtual ~IDocumentWriter() = default;
    // Writes the beginning of the document unless that has happened. Code ZT_WRITER_SYNC_TIME when it cannot be as the
    // root asks.
    virtual void WriteHeader(const IVkjsonRoot_I& root) = 0;
    virtual bool HasHeader() const = 0;
    // Whether the document is neither finished nor given up.
    virtual bool IsOpen() const = 0;
    // Whether the document is whole.
    virtual bool IsFinished() const = 0;
    // Writes a set of samples, and the header before the first; a set without samples writes nothing. Code
    // ZT_INVALID_DYNAMIC_NODE when the document is not open.
    virtual void WriteSampleSet(const IVkjsonRoot_I& root, const DynamicNodeView& node, SampleBuffer& samples) = 0;
    // Where the samples of numbers stand, in ascending order: there are no texts there but times.
    virtual std::vector<ByteRange> NumberSamples() const { return {}; }
    // The document will never be whole: it is deleted.
    virtual void GiveUp() noexcept = 0;
    // Writes the rest; false when the document was finished, or had failed, before.
    virtual bool Finish(IVkjsonRoot_I& root) = 0;
};

}  // namespace ZT_PLUGIN
