// Comma- and tab-separated tables.
#pragma once

#include "conversion/converter_base.h"
#include "conversion/csv_tsv/table_index.h"
#include "conversion/identifiers.h"
#include "conversion/loss_watch.h"

namespace zentor {

// Turns a delimited table into static data: one group for each column, one node for each cell.
class TableConverter : public ZT_ConverterHandlerBase {
public:
    bool Convert() override;

protected:
    TableConverter(ConversionInfo info, char delimiter, const char* identifier)
        : ZT_ConverterHandlerBase(std::move(info)), delimiter_(delimiter), identifier_(identifier) {}

private:
    void CheckShape(const TableIndex& table, const LossWatch& watch) const;

    char delimiter_;
    const char* identifier_;
};

class CSVConverter final : public TableConverter {
public:
    explicit CSVConverter(ConversionInfo info) : TableConverter(std::move(info), ',', identifiers::kCsv) {}
};

class TSVConverter final : public TableConverter {
public:
    explicit TSVConverter(ConversionInfo info) : TableConverter(std::move(info), '\t', identifiers::kTsv) {}
};

}  // namespace zentor
