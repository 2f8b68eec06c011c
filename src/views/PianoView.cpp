#include "views/PianoView.h"

#include "settings/Fatal.h"

#include <array>

namespace veltra {

namespace {

constexpr Color kKeyOutline{1.0 / 3.0, 1.0 / 3.0, 1.0 / 3.0, 1.0};
constexpr Color kLitKey{0.0, 1.0, 0.0, 1.0};
constexpr Color kWhiteKey{1.0, 1.0, 1.0, 0.9};
constexpr Color kBlackKey{0.0, 0.0, 0.0, 1.0};

constexpr double kWhiteKeyOutlineWidth = 0.75;
constexpr double kLitBlackKeyOutlineWidth = 1.0;

// Black keys are two thirds as wide as white ones and about 60% as long.
constexpr double kBlackKeyWidthDivisor = 1.5;
constexpr double kBlackKeyHeightDivisor = 1.65;

// Bit k set: key k within the octave from A is white (A B C D E F G).
constexpr unsigned kWhiteKeyMask = 0x5AD;

// Starting on A, the five black keys of each group of seven white keys sit
// on the boundaries after white keys 1 (A sharp), 3, 4 (C and D sharp),
// 6 and 7 (F and G sharp).
constexpr std::array<std::int64_t, 5> kBlackKeyBoundaries{1, 3, 4, 6, 7};
constexpr std::int64_t kWhiteKeysPerGroup = 7;

// key >= 0
bool isWhiteKey(std::int64_t key)
{
    return ((kWhiteKeyMask >> (key % 12)) & 1U) != 0;
}

struct KeyCounts {
    std::int64_t white = 0;
    std::int64_t black = 0;
    bool litIsWhite = false;
    std::int64_t litOrdinal = -1; // among keys of the lit key's colour; -1 for none
};

KeyCounts countKeys(std::int64_t lastKey, std::int64_t highlightKey)
{
    KeyCounts counts;
    for (std::int64_t k = 0; k <= lastKey; ++k) {
        const bool white = isWhiteKey(k);
        std::int64_t& sameColour = white ? counts.white : counts.black;
        if (k == highlightKey) {
            counts.litIsWhite = white;
            counts.litOrdinal = sameColour;
        }
        ++sameColour;
    }
    return counts;
}

} // namespace

void PianoView::draw(Canvas* canvas, const Rect& r) const
{
    if (!canvas)
        return;
    if (numberOfKeys_ < 0)
        fatalError("piano keyboard with a negative number of keys");

    const KeyCounts keys = countKeys(numberOfKeys_, highlightKey_);
    const double kw = r.width / static_cast<double>(keys.white);

    // Deliberately one rectangle more than there are white keys: the extra
    // one starts at the right edge and lies outside the view.
    for (std::int64_t i = 0; i <= keys.white; ++i) {
        const bool lit = keys.litIsWhite && keys.litOrdinal == i;
        canvas->fillAndStrokeRect({kw * static_cast<double>(i), 0.0, kw, r.height}, lit ? kLitKey : kWhiteKey,
                                  kKeyOutline, kWhiteKeyOutlineWidth);
    }

    if (keys.black < 1)
        fatalError("piano keyboard without black keys");
    const double bw = kw / kBlackKeyWidthDivisor;
    const double bh = r.height / kBlackKeyHeightDivisor;
    for (std::int64_t j = 0; j < keys.black; ++j) {
        const std::int64_t group = j / static_cast<std::int64_t>(kBlackKeyBoundaries.size());
        const std::int64_t boundary = kBlackKeyBoundaries[static_cast<std::size_t>(j) % kBlackKeyBoundaries.size()];
        const double x = kw * static_cast<double>(kWhiteKeysPerGroup) * static_cast<double>(group) +
                         static_cast<double>(boundary) * kw - bw * 0.5;
        const Rect key{x, 0.0, bw, bh};
        if (!keys.litIsWhite && keys.litOrdinal == j)
            canvas->fillAndStrokeRect(key, kLitKey, kKeyOutline, kLitBlackKeyOutlineWidth);
        else
            canvas->fillRect(key, kBlackKey);
    }
}

} // namespace veltra
