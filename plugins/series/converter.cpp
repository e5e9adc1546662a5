// Tables become recordings: a node for each column, with the samples of its rows.
#include <zentor/plugin/converter.h>
#include <zentor/plugin/json_text.h>

#include "columns.h"
#include "refusal.h"
#include "time_choice.h"

namespace {

using namespace series;

std::string TimeColumns(const Header& header, const TimeReading& reading) {
    if (reading.kind == TimeReading::Kind::kRate) return "";
    std::string names = header.NameOf(reading.column);
    if (reading.second != TimeReading::kNoColumn) names += ", " + header.NameOf(reading.second);
    return names;
}

// What was found out about the table.
ZT_PLUGIN::Group AboutGroup(ZT_PLUGIN::Conversion& conversion, const Dialect& dialect, const Header& header,
                            const Survey& survey) {
    auto group = conversion.CreateGroup("about", "About");
    const auto addCount = [&](const char* matchName, const char* displayName, std::uint64_t count) {
        group.Add(conversion.CreateNumber(matchName, displayName, static_cast<double>(count)));
    };
    const auto addText = [&](const std::string& matchName, const std::string& displayName, const std::string& text) {
        group.Add(conversion.CreateText(matchName, ZT_PLUGIN::EscapedText(displayName), ZT_PLUGIN::EscapedText(text)));
    };
    addCount("rows", "Rows", survey.rows);
    addCount("rowsLeftOut", "Rows left out", survey.leftOut.Count());
    addCount("rowsTooLong", "Left out with more cells than columns", survey.leftOut.longer.count);
    addCount("rowsWithoutTime", "Left out without a time", survey.leftOut.untimed.count);
    addCount("rowsGoingBack", "Left out with a time that goes back", survey.leftOut.backward.count);
    addText("delimiter", "Delimiter", NameOf(dialect.delimiter));
    addText("decimal", "Decimal mark", dialect.decimal == Decimal::kPoint ? "point" : "comma");
    addText("timeColumn", "Column of times", TimeColumns(header, survey.reading));
    addText("encoding", "Encoding", NameOf(dialect.encoding));
    if (!header.title.empty()) addText("title", "Title", header.title);
    for (std::size_t k = 0; k < header.names.size(); ++k) {
        if (const std::string unit = header.UnitOf(k); !unit.empty()) {
            addText("unit" + std::to_string(k), "Unit of " + header.NameOf(k), unit);
        }
    }
    return group;
}

void Tell(const ZT_PLUGIN::Conversion& conversion, const std::string& what, const RowCount& rows) {
    if (rows.count != 0)
        conversion.Notice(what + ": " + std::to_string(rows.count), rows.count, rows.offset, rows.line);
}

void TellLeftOut(const ZT_PLUGIN::Conversion& conversion, const Survey& survey, const Header& header) {
    const auto tell = [&](const std::string& what, const RowCount& rows) {
        Tell(conversion, what + ", left out", rows);
    };
    tell("rows with more filled cells than there are columns", survey.leftOut.longer);
    tell("rows without a time that can be read", survey.leftOut.untimed);
    tell("rows that go back in time", survey.leftOut.backward);
    for (std::size_t k = 0; k < survey.columns.size(); ++k) {
        const ColumnFacts& facts = survey.columns[k];
        if (facts.IsNumber()) tell("cells of \"" + header.NameOf(k) + "\" that say there is no number", facts.markers);
    }
    if (survey.midnights != 0) {
        conversion.Notice("times of day pass midnight and go on with the next day", survey.midnights);
    }
}

bool ConvertTable(ZT_PLUGIN::Conversion& conversion) {
    const std::string& path = conversion.InputPath();
    const Options options = ReadOptions(conversion);
    const Dialect dialect = FindDialect(ReadHead(path, options.encoding), options);
    const Header header = FindHeader(dialect, options.headerLine);
    const Survey survey = TakeSurvey(path, dialect, header, ChooseTime(dialect, header, options));

    auto root = conversion.CreateRoot(conversion.ConverterId());
    root.SetUtc(survey.decimals, true);
    Columns columns(conversion, root, dialect, header, survey);
    root.Add(AboutGroup(conversion, dialect, header, survey));
    Body body(path, dialect, header, survey.reading);
    while (body.Next()) columns.Add(body.Time(), body.Row());
    TellLeftOut(conversion, survey, header);
    Tell(conversion, "texts with bytes that are no UTF-8, read as Windows-1252", columns.NotUtf8());
    return root.Write();
}

class SeriesConverter {
public:
    // Whether it can be read shows when it is; only hosts that ask for this converter get it.
    static bool CheckFormat(const std::string&) { return true; }

    static bool Convert(ZT_PLUGIN::Conversion& conversion) {
        try {
            return ConvertTable(conversion);
        } catch (const Refusal& refusal) {
            conversion.Refuse(refusal.what(), refusal.Offset(), refusal.Line());
        }
    }
};

}  // namespace

ZENTOR_PLUGIN(SeriesConverter)
