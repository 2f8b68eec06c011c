#include "tuning/Temperament.h"

#include <algorithm>
#include <cmath>

namespace veltra {

namespace {

double cents(double ratio)
{
    return 1200.0 * std::log2(ratio);
}

const double kPureFifth = cents(3.0 / 2.0);
// The two commas the historical temperaments share out among their fifths.
const double kSyntonicComma = cents(81.0 / 80.0);
const double kPythagoreanComma = cents(531441.0 / 524288.0);
// The schisma: Pythagorean less syntonic comma.
const double kSchisma = cents(32805.0 / 32768.0);

// The eleven fifths of a twelve-note keyboard that are tuned, around the
// circle from E flat to G sharp (E flat-B flat, B flat-F, F-C, C-G, ...,
// C sharp-G sharp), each given by how much it is narrower than pure; the
// twelfth, G sharp-E flat, takes what is left. This is how the historical
// temperaments are defined, so each one is written as its recipe and the
// cents follow from it.
using FifthNarrowing = std::array<double, 11>;

// Semitones above C of the notes of the chain, in the order above.
constexpr std::array<int, 12> kChainDegrees{3, 10, 5, 0, 7, 2, 9, 4, 11, 6, 1, 8};
constexpr std::size_t kChainC = 3;

CentsTable fromFifths(const FifthNarrowing& narrowing)
{
    std::array<double, 12> pitch{}; // cents above C, any octave
    for (std::size_t i = kChainC; i + 1 < kChainDegrees.size(); ++i)
        pitch[i + 1] = pitch[i] + kPureFifth - narrowing[i];
    for (std::size_t i = kChainC; i > 0; --i)
        pitch[i - 1] = pitch[i] - kPureFifth + narrowing[i - 1];
    CentsTable table{};
    for (std::size_t i = 0; i < kChainDegrees.size(); ++i) {
        const int degree = kChainDegrees[i];
        const double withinOctave = pitch[i] - 1200.0 * std::floor(pitch[i] / 1200.0);
        table[static_cast<std::size_t>(degree)] = withinOctave - 100.0 * degree;
    }
    return table;
}

FifthNarrowing allFifths(double narrowing)
{
    FifthNarrowing fifths;
    fifths.fill(narrowing);
    return fifths;
}

CentsTable fromRatios(const std::array<double, 12>& ratios)
{
    CentsTable table{};
    for (std::size_t degree = 0; degree < ratios.size(); ++degree)
        table[degree] = cents(ratios[degree]) - 100.0 * static_cast<double>(degree);
    return table;
}

} // namespace

std::optional<Temperament> temperamentForId(std::string_view id)
{
    const auto found = std::find_if(kTemperaments.begin(), kTemperaments.end(),
                                    [id](const TemperamentInfo& info) { return info.id == id; });
    if (found == kTemperaments.end())
        return std::nullopt;
    return found->temperament;
}

CentsTable centsTable(Temperament temperament)
{
    const double p = kPythagoreanComma;
    const double s = kSyntonicComma;
    switch (temperament) {
    case Temperament::Pythagorean:
        return fromFifths(allFifths(0));
    case Temperament::QuarterCommaMeantone:
        return fromFifths(allFifths(s / 4));
    case Temperament::SixthCommaMeantone:
        return fromFifths(allFifths(s / 6));
    case Temperament::WerckmeisterIII:
        // C-G, G-D, D-A and B-F sharp narrow by a quarter Pythagorean comma.
        return fromFifths({0, 0, 0, p / 4, p / 4, p / 4, 0, 0, p / 4, 0, 0});
    case Temperament::KirnbergerIII:
        // C-G-D-A-E narrow by a quarter syntonic comma (a pure third C-E),
        // F sharp-C sharp by a schisma.
        return fromFifths({0, 0, 0, s / 4, s / 4, s / 4, s / 4, 0, 0, kSchisma, 0});
    case Temperament::Vallotti:
        // F-C-G-D-A-E-B narrow by a sixth of the Pythagorean comma.
        return fromFifths({0, 0, p / 6, p / 6, p / 6, p / 6, p / 6, p / 6, 0, 0, 0});
    case Temperament::Young:
        // The same six fifths one step round the circle: C-G-D-A-E-B-F sharp.
        return fromFifths({0, 0, 0, p / 6, p / 6, p / 6, p / 6, p / 6, p / 6, 0, 0});
    case Temperament::Just:
        return fromRatios({1.0, 16.0 / 15, 9.0 / 8, 6.0 / 5, 5.0 / 4, 4.0 / 3, 45.0 / 32, 3.0 / 2, 8.0 / 5, 5.0 / 3,
                           9.0 / 5, 15.0 / 8});
    case Temperament::Equal:
    case Temperament::Imported:
        break;
    }
    return {};
}

} // namespace veltra
