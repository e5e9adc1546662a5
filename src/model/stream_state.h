// What the nodes of one document share while it is built: its writer, its root and the names in use.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "errors/exception.h"
#include "format/content_form.h"
#include "model/spill_file.h"
#include "model/writer_interface.h"
#include "zentor/error_codes.h"
#include "zentor/time_form.h"

namespace ZT_PLUGIN {

// What a converter tells the host.
struct ConverterNotice {
    std::string message;
    std::uint64_t count;
    std::int64_t offset;
    std::int64_t line;
};

// The time of the latest sample that was given in ticks. Converters have it for one node after the other.
struct LatestTime {
    std::int64_t ticks = 0;
    std::uint32_t ticksPerSecond = 0;  // 0: none
    char text[zentor::TimeForm::kWidestFormatted];
    std::size_t size = 0;
    zentor::Instant instant;  // borrows from the text
};

struct StreamState {
    std::unique_ptr<IDocumentWriter> writer;  // null once the conversion is over
    SpillFile spill;                          // of samples
    zentor::ContentForm form;                 // of the document
    std::vector<std::string> parameters;      // "key=value", for the converter
    std::vector<ConverterNotice> notices;     // of the converter
    std::string reason;                       // why it refuses the input, in its own words
    LatestTime latestTime;
    const IVkjsonRoot_I* root = nullptr;  // while it lives
    bool hasRoot = false;                 // has had one: a document has no other
    bool hasSamples = false;
    std::size_t unwrittenSets = 0;                       // of samples, whether their node is still there or not
    std::size_t dynamicNodes = 0;                        // that are alive
    std::size_t sampleBufferLimit = kSampleBufferLimit;  // of each of them
    std::unordered_set<std::string> matchNames;          // of attached nodes
    std::unordered_set<std::string> sampleSetIds;

    // Takes a dynamic node in, or a dead one out.
    void CountDynamicNodes(bool isNew) noexcept;
    // The writer; ZT_STREAM_NOT_OPEN when the conversion is over.
    IDocumentWriter& Writer() const {
        if (!writer) throw ZT_PluginException(ZT_STREAM_NOT_OPEN);
        return *writer;
    }
};

// The streams of the conversions that are running, by id. Thread-safe. A stream is opened before its converter runs and
// closed after it; nodes that outlive it keep its state, without the writer.
std::uint64_t OpenStream(std::unique_ptr<IDocumentWriter> writer, const zentor::ContentForm& form = {},
                         std::vector<std::string> parameters = {});
void CloseStream(std::uint64_t streamId) noexcept;
// Null when the stream is not open.
std::shared_ptr<StreamState> FindStream(std::uint64_t streamId);

}  // namespace ZT_PLUGIN
