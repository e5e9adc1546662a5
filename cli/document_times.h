// The times of a document.
#pragma once

#include <optional>

#include "document.h"
#include "json_output.h"
#include "zentor/time_form.h"

namespace zentor_cli {

// The form of its time strings; nothing when the document says nothing of samples.
std::optional<zentor::TimeForm> TimeFormOf(const FileInfo& info);

// Makes the span reach over another one too.
void Widen(TimeSpan& span, const TimeSpan& other, const zentor::TimeForm& form);

// "FIRST to LAST", for a terminal. There are samples.
std::string Describe(const TimeSpan& span);

// "firstTime" and "lastTime"; nothing without samples.
void WriteMembers(JsonOutput& json, const TimeSpan& span);

}  // namespace zentor_cli
