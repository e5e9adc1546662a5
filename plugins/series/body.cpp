#include "body.h"

#include "refusal.h"

namespace series {

Body::Body(const std::string& path, const Dialect& dialect, const Header& header, const TimeReading& reading)
    : dialect_(dialect),
      header_(header),
      reading_(reading),
      source_(path, dialect.encoding),
      rows_(source_, dialect.delimiter),
      times_(reading, dialect.decimal) {}

bool Body::Next() {
    while (rows_.Next()) {
        if (rows_.Line() < header_.firstRowLine) continue;
        if (dialect_.hasComments && BeginsAsComment(rows_.Text())) continue;
        if (rows_.Count() > header_.names.size()) {
            leftOut_.longer.Add(rows_);
            // It has taken its time all the same.
            if (reading_.kind == TimeReading::Kind::kRate) HasTime();
            continue;
        }
        if (HasTime()) return true;
    }
    return false;
}

bool Body::HasTime() {
    Moment time;
    const TimeState state = times_.Next(rows_.At(reading_.column).text, rows_.At(reading_.second).text, time);
    if (state == TimeState::kTooFine) {
        throw Refusal("a time has more than nine decimals of a second", rows_.Line(), rows_.Offset());
    }
    if (state == TimeState::kNone) {
        leftOut_.untimed.Add(rows_);
        return false;
    }
    if (hasTime_ && time < time_) {
        leftOut_.backward.Add(rows_);
        return false;
    }
    hasTime_ = true;
    time_ = time;
    return true;
}

}  // namespace series
