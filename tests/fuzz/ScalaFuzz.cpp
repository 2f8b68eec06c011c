// The Scala scale parser on any text, as an imported file reaches it. A
// scale it accepts has twelve finite degrees rising within the octave and
// names every pitch without a fault; a refusal is one line.
#include "tuning/ScalaScale.h"
#include "tuning/Tuning.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace veltra;
    const auto result = parseScala(std::string_view(reinterpret_cast<const char*>(data), size));
    if (const auto* why = std::get_if<std::string>(&result)) {
        if (why->empty() || why->find('\n') != std::string::npos)
            std::abort();
        return 0;
    }
    const CentsTable& cents = std::get<ScalaScale>(result).cents;
    if (cents[0] != 0.0)
        std::abort();
    double previous = 0;
    for (std::size_t degree = 1; degree < cents.size(); ++degree) {
        const double pitch = cents[degree] + 100.0 * static_cast<double>(degree);
        if (!std::isfinite(pitch) || pitch <= previous || pitch >= 1200.0)
            std::abort();
        previous = pitch;
    }
    for (int tonic = 0; tonic < 12; ++tonic) {
        const Tuning tuning(cents, tonic, -2);
        for (float x = 8.0f; x < 100.0f; x += 0.37f) {
            const float shown = tuning.shownNoteNumber(x);
            if (!std::isfinite(shown) || std::abs(shown - std::round(shown)) > 0.5f)
                std::abort();
        }
    }
    return 0;
}
