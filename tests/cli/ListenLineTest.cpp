#include "ListenCommand.h"

#include "app/OfflineTuner.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>

namespace veltra::test {
namespace {

// `listen | cat`: whatever the widths of the note, the deviation and the
// frequency, every line has its fields in the same columns, so that a
// column of a pipe or a file reads straight down. The readings are the
// tuner's own, from tones heard through the patch.
TEST(ListenLine, FieldsKeepTheirColumnsWhateverTheirWidth)
{
    const struct {
        double hertz;
        const char* note;
        std::size_t deviationWidth; // "+9.5%" or "+11.5%"
    } tones[] = {
        {440.0 * std::pow(2.0, 9.5 / 1200), "A4", 5},
        {440.0 * std::pow(2.0, 11.5 / 1200), "A4", 6},
        {82.407, "E2", 5},
        {1046.5 * std::pow(2.0, -23.5 / 1200), "C6", 6},
        {3729.3, "A#7", 5},
    };
    std::vector<std::string> lines{cli::listenLine(ViewController::Labels{})};
    for (const auto& tone : tones) {
        MemoryPreferenceStore preferences;
        CommonUtils::setDefaultPreferences(preferences);
        OfflineTuner tuner(preferences, 48000);
        tuner.run(sine(tone.hertz, 0.3, 1.0, 48000));
        const auto& labels = tuner.screen().labels();
        EXPECT_EQ(labels.noteName + labels.sharpFlat + labels.octaveNumber, tone.note);
        EXPECT_EQ(labels.deviation.size(), tone.deviationWidth) << labels.deviation;
        lines.push_back(cli::listenLine(labels));
    }
    // Where the fields lie: the deviation ends in its per-cent sign, the
    // frequency in its unit, and the bar begins.
    const auto columns = [](const std::string& line) {
        return std::vector<std::size_t>{line.find('%'), line.find(" Hz"), line.find('[')};
    };
    const auto reading = columns(lines[1]);
    for (const std::string& line : lines) {
        SCOPED_TRACE(line);
        EXPECT_EQ(line.size(), lines[1].size());
        EXPECT_EQ(line.find('['), reading[2]);
        if (line != lines[0]) {
            EXPECT_EQ(columns(line), reading);
        }
    }
    EXPECT_TRUE(lines[0].starts_with("  -  ")) << lines[0];
}

} // namespace
} // namespace veltra::test
