#pragma once

#include "views/Canvas.h"
#include "views/Geometry.h"

#include <cstdint>

namespace veltra {

// A full piano keyboard across the view with the key of the shown note lit
// green. Key 0 is the lowest A; index 48 is the reference A.
class PianoView {
public:
    // Index of the last key; the keyboard has numberOfKeys + 1 keys.
    std::int64_t numberOfKeys() const { return numberOfKeys_; }
    void setNumberOfKeys(std::int64_t lastKey) { numberOfKeys_ = lastKey; }

    // The lit key; any index outside the keyboard (such as -1) lights none.
    std::int64_t highlightKey() const { return highlightKey_; }
    void setHighlightKey(std::int64_t key) { highlightKey_ = key; }

    // Draws into r; a null canvas draws nothing.
    void draw(Canvas* canvas, const Rect& r) const;

private:
    std::int64_t numberOfKeys_ = 87;
    std::int64_t highlightKey_ = -1;
};

} // namespace veltra
