// How the model reaches the writer of its document.
#pragma once

#include <cstdint>
#include <memory>

namespace ZT_PLUGIN {

class IVkjsonRoot_I;

// Writes one document. Failures are ZT_PluginExceptions; after one the document counts as not written and stays so.
class IDocumentWriter {
public:
    virtual ~IDocumentWriter() = default;
    // Writes the beginning of the document unless that has happened.
    virtual void WriteHeader(const IVkjsonRoot_I& root) = 0;
    virtual bool HasHeader() const = 0;
    // Writes the rest; false when the document was finished, or had failed, before.
    virtual bool Finish(IVkjsonRoot_I& root) = 0;
};

// The writers of the conversions that are running, by stream id. Thread-safe. A stream is opened before its converter
// runs and closed after it.
std::uint64_t OpenStream(std::unique_ptr<IDocumentWriter> writer);
void CloseStream(std::uint64_t streamId) noexcept;
// The writer of a stream; code 2011 when the stream is not open.
IDocumentWriter& WriterOfStream(std::uint64_t streamId);

}  // namespace ZT_PLUGIN
