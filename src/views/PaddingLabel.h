#pragma once

#include "views/Geometry.h"

namespace veltra {

// A label whose text keeps clear of its left and right edges, for labels
// drawn on a coloured background. Its intrinsic size is not enlarged; a
// layout that needs the extra room adds the margin itself.
class PaddingLabel {
public:
    static constexpr double kTopInset = 0.0;
    static constexpr double kLeftInset = 8.0;
    static constexpr double kBottomInset = 0.0;
    static constexpr double kRightInset = 8.0;

    // The rectangle the text is drawn in. A label narrower than the two side
    // insets gets a negative width, passed on as it is.
    static Rect textRect(const Rect& bounds);
};

} // namespace veltra
