#include "conversion/json/json_converter.h"

#include "conversion/identifiers.h"
#include "conversion/json/json_children.h"
#include "conversion/json/json_text.h"
#include "conversion/native_frame.h"

namespace zentor {

bool JsonConverter::Convert() {
    const auto root = NativeCreateRoot(this, Info().streamId);
    CallModel([&](auto* error) { root->SetCreator(identifiers::kJson, error); });
    JsonText text(Info().inputPath, Info().form.numbers);
    LossWatch watch(Info(), text.view(), static_cast<std::int64_t>(text.MarkSize()));
    root->SetChildSource(MakeJsonChildren(text.MakeIterator(), Info().form.numbers, watch));
    std::uint32_t written = 0;
    CallModel([&](auto* error) { written = root->WriteDocument(error); });
    return written != 0;
}

}  // namespace zentor
