#include "ListenCommand.h"

#include "app/OfflineTuner.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "support/Signals.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

namespace veltra::test {
namespace {

// `listen | cat`: whatever the widths of the note, the deviation and the
// frequency, every line has its fields in the same columns, so that a
// column of a pipe or a file reads straight down; a transposing
// instrument's concert note has a column of its own after them. The
// readings are the tuner's own, from tones heard through the patch.
TEST(ListenLine, FieldsKeepTheirColumnsWhateverTheirWidth)
{
    const struct {
        double hertz;
        const char* note;
        std::size_t deviationWidth; // "+9.5%" or "+11.5%"
        const char* bFlatNote;      // the same tone written for a B flat instrument
    } tones[] = {
        {440.0 * std::pow(2.0, 9.5 / 1200), "A4", 5, "B4"},
        {440.0 * std::pow(2.0, 11.5 / 1200), "A4", 6, "B4"},
        {82.407, "E2", 5, "F#2"},
        {1046.5 * std::pow(2.0, -23.5 / 1200), "C6", 6, "D6"},
        {3729.3, "A#7", 5, "C8"},
    };
    for (const int transpose : {0, -2}) {
        SCOPED_TRACE(transpose);
        const bool transposed = transpose != 0;
        std::vector<std::string> lines{cli::listenLine(ViewController::Labels{}, transposed)};
        for (const auto& tone : tones) {
            MemoryPreferenceStore preferences;
            CommonUtils::setDefaultPreferences(preferences);
            preferences.setInteger(transpose, PreferenceKey::Transpose);
            OfflineTuner tuner(preferences, 48000);
            tuner.run(sine(tone.hertz, 0.3, 1.0, 48000));
            const auto& labels = tuner.screen().labels();
            EXPECT_EQ(labels.noteName + labels.sharpFlat + labels.octaveNumber, transposed ? tone.bFlatNote : tone.note);
            EXPECT_EQ(labels.deviation.size(), tone.deviationWidth) << labels.deviation;
            lines.push_back(cli::listenLine(labels, transposed));
            char concert[24]; // the concert note, padded to its column's width
            std::snprintf(concert, sizeof concert, "  concert %-3s", tone.note);
            EXPECT_EQ(lines.back().ends_with(concert), transposed) << lines.back();
        }
        // Where the fields lie: the deviation ends in its per-cent sign, the
        // frequency in its unit, and the bar and the concert note begin.
        const auto columns = [](const std::string& line) {
            return std::vector<std::size_t>{line.find('%'), line.find(" Hz"), line.find('['), line.find("concert")};
        };
        const auto reading = columns(lines[1]);
        for (const std::string& line : lines) {
            SCOPED_TRACE(line);
            EXPECT_EQ(line.size(), lines[1].size());
            EXPECT_EQ(line.find('['), reading[2]);
            EXPECT_EQ(line.find("concert"), reading[3]);
            if (line != lines[0]) {
                EXPECT_EQ(columns(line), reading);
            }
        }
        EXPECT_TRUE(lines[0].starts_with("  -  ")) << lines[0];
        EXPECT_EQ(lines[0].ends_with("  concert -  "), transposed) << lines[0];
    }
}

} // namespace
} // namespace veltra::test
