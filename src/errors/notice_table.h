// The texts of notices: keys of the dictionaries, each with its English text. ^1 is how many.
#pragma once

#include "zentor/zentor.h"

namespace zentor {

struct NoticeEntry {
    ZT_NoticeKind kind;
    const char* key;
};

// clang-format off
#define ZT_NOTICE_TABLE(X) \
    X(ZT_NOTICE_EMPTY_CELLS, "EmptyCells=^1 empty cells became 0") \
    X(ZT_NOTICE_SHORT_ROWS, "ShortRows=^1 rows have fewer cells than the header") \
    X(ZT_NOTICE_LONG_ROWS, "LongRows=^1 rows have cells beyond the header, which were left out") \
    X(ZT_NOTICE_DELIMITER, "Delimiter=the cells seem to be separated by something else") \
    X(ZT_NOTICE_QUOTES, "Quotes=^1 cells are in quotation marks, which became part of them") \
    X(ZT_NOTICE_DECIMAL_COMMAS, "DecimalCommas=^1 cells look like numbers with a decimal comma") \
    X(ZT_NOTICE_TITLE_LINES, "TitleLines=the first line looks like a title, not like the names of columns") \
    X(ZT_NOTICE_DATA_AS_NAMES, "DataAsNames=the first line has numbers where the names of columns are expected") \
    X(ZT_NOTICE_OTHER_FORMAT, "OtherFormat=this looks like a file of another format, not like a table") \
    X(ZT_NOTICE_GROWTH, "Growth=the document is more than 1000 times as large as its input") \
    X(ZT_NOTICE_ROUNDED, "Rounded=^1 numbers have been rounded") \
    X(ZT_NOTICE_EXPONENTS, "Exponents=^1 numbers have lost zeros of their exponents and become others") \
    X(ZT_NOTICE_TEXTS, "Texts=^1 texts have quotation marks, backslashes or control characters, which the format cannot hold as they are") \
    X(ZT_NOTICE_NOT_UTF8, "NotUtf8=^1 texts have bytes that are no UTF-8") \
    X(ZT_NOTICE_READ_AS_WINDOWS, "ReadAsWindows=^1 texts have bytes that are no UTF-8, which were taken for Windows-1252") \
    X(ZT_NOTICE_NULLS, "Nulls=^1 null values were left out") \
    X(ZT_NOTICE_CHANNELS, "Channels=^1 channels that are no positions or rotations were left out") \
    X(ZT_NOTICE_END_SITES, "EndSites=^1 end sites were left out") \
    X(ZT_NOTICE_FRAMES, "Frames=^1 declared frames are not there") \
    X(ZT_NOTICE_FRAME_RATE, "FrameRate=the frame time is not that of any known rate, the nearest one was taken")

#define ZT_NOTICE_ROW(kind, text) {kind, "$$$/ZTNotice/" text},
// By ascending kind.
inline constexpr NoticeEntry kNoticeTable[] = {ZT_NOTICE_TABLE(ZT_NOTICE_ROW)};
#undef ZT_NOTICE_ROW
#undef ZT_NOTICE_TABLE
// clang-format on

}  // namespace zentor
