#include "format/frame_rate.h"

#include <cmath>

namespace zentor {

bool AllowsDropFrame(double framesPerSecond) {
    constexpr double kRounding = 0.0001;
    const auto isNear = [framesPerSecond](const FrameRate& rate) {
        return std::abs(framesPerSecond - double{1.0} * rate.numerator / rate.denominator) < kRounding;
    };
    return isNear(kRate2997) || isNear(kRate5994);
}

}  // namespace zentor
