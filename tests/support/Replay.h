#pragma once

#include "views/RecordingCanvas.h"

#include <type_traits>
#include <variant>

namespace veltra::test {

// Draws recorded primitives again onto another canvas, in the same order.
inline void replay(const Primitive& p, Canvas& canvas)
{
    std::visit(
        [&canvas](const auto& k) {
            using Kind = std::decay_t<decltype(k)>;
            if constexpr (std::is_same_v<Kind, FilledRect>)
                canvas.fillRect(k.rect, k.fill);
            else if constexpr (std::is_same_v<Kind, StrokedLine>)
                canvas.strokeLine(k.from, k.to, k.stroke, k.lineWidth);
            else
                canvas.fillAndStrokeRect(k.rect, k.fill, k.stroke, k.lineWidth);
        },
        p);
}

inline void replay(const RecordingCanvas& recording, Canvas& canvas)
{
    for (const Primitive& p : recording.primitives())
        replay(p, canvas);
}

} // namespace veltra::test
