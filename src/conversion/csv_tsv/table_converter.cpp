#include "conversion/csv_tsv/table_converter.h"

#include <cstdio>

#include "conversion/csv_tsv/table_children.h"
#include "conversion/csv_tsv/table_index.h"
#include "conversion/csv_tsv/table_text.h"
#include "conversion/native_frame.h"

namespace zentor {

namespace {

// Hosts read this line from standard output.
void SayCannotOpen(const std::string& path) {
    std::printf("ERROR Opening File %s\n", path.c_str());
    std::fflush(stdout);
}

}  // namespace

bool TableConverter::Convert() {
    TableText text;
    if (!text.Read(Info().inputPath)) {
        SayCannotOpen(Info().originalName);
        return false;
    }
    TableIndex table(text.view(), delimiter_, Info().form.numbers);
    const auto root = NativeCreateRoot(this, Info().streamId);
    CallModel([&](auto* error) { root->SetCreator(identifier_, error); });
    root->SetChildSource(MakeTableChildren(*this, table));
    std::uint32_t written = 0;
    CallModel([&](auto* error) { written = root->WriteDocument(error); });
    return written != 0;
}

}  // namespace zentor
