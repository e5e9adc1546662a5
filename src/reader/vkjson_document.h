// What is kept of a document that has been read: its outline and time information, as values.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "reader/outline.h"
#include "reader/sample_data_processor.h"
#include "zentor/records.h"

namespace zentor {

// Strings of the outline point into the bytes that it was read from; they must outlive it.
struct VkjsonDocument {
    ZT_FileInfo info;
    ZT_VideoSyncTimeList videoSync;
    std::optional<TimeForm> timeForm;  // none without time information
    Outline outline;
    ZT_SampleDataProcessor samples;
};

}  // namespace zentor
