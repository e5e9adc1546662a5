#include "conversion/csv_tsv/table_converter.h"

#include <cstdio>

#include "conversion/csv_tsv/table_children.h"
#include "conversion/csv_tsv/table_dialect.h"
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

// Every cell becomes a node, those that short rows lack, too.
bool GrowsTooMuch(const TableIndex& table) {
    constexpr double kBytesOfNode = 200;
    constexpr double kMostGrowth = 1000;
    const double nodes = static_cast<double>(table.rows.Count()) * static_cast<double>(table.columnCount);
    return nodes * kBytesOfNode > static_cast<double>(table.text.size()) * kMostGrowth;
}

}  // namespace

// What the rows are like that are not as long as the header.
void TableConverter::CheckShape(const TableIndex& table, const LossWatch& watch) const {
    if (!watch.IsOn()) return;
    if (table.shortRows != 0) AddNotice(ZT_NOTICE_SHORT_ROWS, watch.PlaceAt(table.firstShortRow), table.shortRows);
    if (table.longRows != 0) AddNotice(ZT_NOTICE_LONG_ROWS, watch.PlaceAt(table.firstLongRow), table.longRows);
    if (!GrowsTooMuch(table)) return;
    if (Info().isStrict && !Info().anySize) RefuseInput(kGrowth, watch.PlaceAt(table.firstShortRow));
    AddNotice(ZT_NOTICE_GROWTH, watch.PlaceAt(table.firstShortRow));
}

bool TableConverter::Convert() {
    TableText text;
    if (!text.Read(Info().inputPath)) {
        SayCannotOpen(Info().originalName);
        return false;
    }
    TableIndex table(text.view(), delimiter_, Info().form.numbers);
    LossWatch watch(Info(), text.view(), text.Start());
    CheckShape(table, watch);
    TellDialect(table, watch);
    const auto root = NativeCreateRoot(this, Info().streamId);
    CallModel([&](auto* error) { root->SetCreator(identifier_, error); });
    root->SetChildSource(MakeTableChildren(*this, table, watch));
    std::uint32_t written = 0;
    CallModel([&](auto* error) { written = root->WriteDocument(error); });
    return written != 0;
}

}  // namespace zentor
