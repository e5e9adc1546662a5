// How numbers and texts go into a document.
#pragma once

#include "util/escaped_text.h"
#include "util/number_text.h"

namespace zentor {

// A document whose numbers and texts come back as they went in has the other form of both; to readers it is one like
// all others.
struct ContentForm {
    NumberForm numbers = NumberForm::kSixteenDigits;
    TextForm texts = TextForm::kAsItIs;

    bool IsFaithful() const { return numbers == NumberForm::kShortest; }
};

}  // namespace zentor
