#pragma once

#include <cmath>

namespace veltra {

// Where audio enters the program (a file, a microphone), a sample that is
// not a finite number is taken as silence: one NaN would otherwise stay in
// the patch's and the classifier's filters for good.
inline float finiteOrSilence(float sample)
{
    return std::isfinite(sample) ? sample : 0.0f;
}

} // namespace veltra
