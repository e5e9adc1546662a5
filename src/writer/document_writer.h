// Writes a document: the header, the sets of samples as they come, and at the end the outline.
#pragma once

#include <string>
#include <vector>

#include "model/root.h"
#include "model/writer_interface.h"
#include "writer/text_buffer.h"

namespace zentor {

class DocumentWriter final : public ZT_PLUGIN::IDocumentWriter {
public:
    explicit DocumentWriter(std::string outputPath, const ContentForm& form = {})
        : file_(std::move(outputPath)), text_(file_, form) {}

    // Code ZT_WRITER_SYNC_TIME when a time of the video-sync list is none of the document's time mode.
    void WriteHeader(const ZT_PLUGIN::IVkjsonRoot_I& root) override;
    bool HasHeader() const override { return headerWritten_; }
    bool IsOpen() const override { return state_ == State::kOpen; }
    bool IsFinished() const override { return state_ == State::kFinished; }
    void WriteSampleSet(const ZT_PLUGIN::IVkjsonRoot_I& root, const ZT_PLUGIN::DynamicNodeView& node,
                        ZT_PLUGIN::SampleBuffer& samples) override;
    std::vector<ZT_PLUGIN::ByteRange> NumberSamples() const override { return numberSamples_; }
    void GiveUp() noexcept override;
    bool Finish(ZT_PLUGIN::IVkjsonRoot_I& root) override;

private:
    enum class State { kOpen, kFailed, kFinished };

    template <class Step>
    void Guarded(Step&& step);
    void AppendHeader(const ZT_PLUGIN::IVkjsonRoot_I& root);
    void AppendTimeInfo(const ZT_PLUGIN::IVkjsonRoot_I& root);
    void AppendOutline(ZT_PLUGIN::IVkjsonRoot_I& root);

    DocumentFile file_;
    TextBuffer text_;
    State state_ = State::kOpen;
    bool headerWritten_ = false;
    bool samplesOpened_ = false;  // there is a set of samples
    std::vector<ZT_PLUGIN::ByteRange> numberSamples_;
};

}  // namespace zentor
