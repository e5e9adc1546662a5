#include "columns.h"

#include <algorithm>

#include <zentor/plugin/json_text.h>

namespace series {

namespace {

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool IsUtf8(const std::string& text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = ZT_PLUGIN::Utf8Length(text, at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

}  // namespace

Columns::Columns(ZT_PLUGIN::Conversion& conversion, ZT_PLUGIN::Root& root, const Dialect& dialect, const Header& header,
                 const Survey& survey)
    : dialect_(dialect), columns_(survey.columns.size()) {
    for (std::uint32_t k = 0; k < survey.decimals; ++k) {
        ticksPerSecond_ *= 10;
        nanosecondsPerTick_ /= 10;
    }
    for (std::size_t k = 0; k < columns_.size(); ++k) {
        const ColumnFacts& facts = survey.columns[k];
        if (survey.reading.Uses(k)) continue;
        const std::string matchName = "column" + std::to_string(k);
        const std::string displayName = ZT_PLUGIN::EscapedText(header.NameOf(k));
        if (facts.IsNumber()) {
            columns_[k].number = conversion.CreateDynamicNumber({matchName, displayName, ZT_PLUGIN::Between::kLinear});
            columns_[k].number.SetSampleCount(facts.numbers);
            columns_[k].isPlain = facts.arePlain;
            root.Add(columns_[k].number);
        } else {
            columns_[k].text = conversion.CreateDynamicText({matchName, displayName, ZT_PLUGIN::Between::kHold});
            columns_[k].text.SetSampleCount(facts.texts + facts.numbers + facts.markers.count);
            root.Add(columns_[k].text);
        }
    }
}

void Columns::Add(const Moment& time, const RowReader& row) {
    const ZT_PLUGIN::Ticks ticks{time.seconds * ticksPerSecond_ + time.nanoseconds / nanosecondsPerTick_,
                                 static_cast<std::uint32_t>(ticksPerSecond_)};
    for (std::size_t k = 0; k < std::min(row.Count(), columns_.size()); ++k) {
        const Cell cell = row.At(k);
        Column& column = columns_[k];
        if (cell.text.empty()) continue;
        if (column.text.get() != nullptr) {
            AddText(column, ticks, cell, row);
        } else if (column.number.get() != nullptr) {
            std::string_view digits = cell.text;
            // What is no number was a marker when the table was surveyed.
            if (!column.isPlain && !ReadNumber(cell.text, dialect_.decimal, room_, digits)) continue;
            column.number.AddSampleText(ticks, digits.data(), digits.size());
        }
    }
}

void Columns::AddText(Column& column, ZT_PLUGIN::Ticks time, const Cell& cell, const RowReader& row) {
    room_.assign(cell.text);
    if (!IsAscii(room_) && !IsUtf8(room_)) notUtf8_.Add(row);
    column.text.AddSample(time, ZT_PLUGIN::EscapedSampleText(room_));
}

}  // namespace series
