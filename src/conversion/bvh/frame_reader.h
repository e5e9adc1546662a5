// The frames of a capture.
#pragma once

#include <cstdint>
#include <vector>

#include "conversion/bvh/capture_input.h"
#include "conversion/loss_watch.h"
#include "model/dynamic_numbers.h"
#include "util/number_text.h"

namespace zentor {

// Reads the frames, one after the other. Lines count: a frame may go over several of them, but ends with a line.
class FrameReader {
public:
    // `declared`: from so many frames on what is no frame ends the data. Before, a frame that ends with the last byte
    // of the text does not count: a recorder that stopped may have left half a number there.
    FrameReader(CaptureInput& input, std::size_t columns, std::uint64_t declared, NumberForm form, LossWatch& watch);

    // The next frame, one number for each column, borrowed until the next call. False after the last complete one.
    // Code ZT_CONVERSION and those of File_IO.
    bool Next();
    const std::vector<ZT_PLUGIN::NumberSample>& Numbers() const { return numbers_; }

private:
    bool IsNumberNext();
    // Whether the text ends here, maybe within a number: a recorder that stopped.
    bool IsCutNext();
    bool ReadNumber(std::size_t column);
    void MakeRoom(std::size_t column);

    CaptureInput& input_;
    std::uint64_t declared_;
    NumberForm form_;
    LossWatch& watch_;
    std::uint64_t frames_ = 0;
    std::vector<ZT_PLUGIN::NumberSample> numbers_;
    std::vector<char> texts_;  // of the numbers of this frame, one after the other
    std::size_t used_ = 0;
};

}  // namespace zentor
