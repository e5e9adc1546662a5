// What is kept of a document that has been read: where its nodes and samples are, and its time information.
#pragma once

#include <optional>

#include "reader/outline.h"
#include "reader/sample_data_processor.h"
#include "zentor/records.h"

namespace zentor {

// Nothing of it points into the bytes that it was read from; those of its functions that need bytes are given them.
struct VkjsonDocument {
    ZT_FileInfo info;
    ZT_VideoSyncTimeList videoSync;
    std::optional<TimeForm> timeForm;  // none without time information
    Outline outline;
    ZT_SampleDataProcessor samples;
};

}  // namespace zentor
