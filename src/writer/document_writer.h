// Writes a document: the header, and at the end the outline.
#pragma once

#include <string>

#include "model/document_writer.h"
#include "model/root.h"
#include "writer/text_buffer.h"

namespace zentor {

class DocumentWriter final : public ZT_PLUGIN::IDocumentWriter {
public:
    explicit DocumentWriter(std::string outputPath) : file_(std::move(outputPath)), text_(file_) {}

    void WriteHeader(const ZT_PLUGIN::IVkjsonRoot_I& root) override;
    bool HasHeader() const override { return headerWritten_; }
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
};

}  // namespace zentor
