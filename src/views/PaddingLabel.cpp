#include "views/PaddingLabel.h"

namespace veltra {

Rect PaddingLabel::textRect(const Rect& bounds)
{
    return Rect{bounds.x + kLeftInset, bounds.y + kTopInset, bounds.width - (kLeftInset + kRightInset),
                bounds.height - (kTopInset + kBottomInset)};
}

} // namespace veltra
