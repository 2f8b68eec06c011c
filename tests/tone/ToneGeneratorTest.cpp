#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "tone/ToneGenerator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace veltra {
namespace {

using ::testing::ElementsAre;

// Receiver and value as the patch sees them; bangs carry no value.
using Message = std::pair<std::string, std::optional<float>>;

class RecordingSender : public PdSender {
public:
    void sendFloat(float value, std::string_view receiver) override { sent.emplace_back(receiver, value); }
    void sendBang(std::string_view receiver) override { sent.emplace_back(receiver, std::nullopt); }
    std::vector<Message> sent;
};

TEST(ToneNoteNumberTest, TagAndOctaveGiveMidiNoteOverflowIsFatal)
{
    EXPECT_EQ(ToneGenerator::toneNoteNumber(1, 0), 60);
    EXPECT_EQ(ToneGenerator::toneNoteNumber(10, 0), 69);
    EXPECT_EQ(ToneGenerator::toneNoteNumber(12, 2), 95);
    constexpr auto max = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(ToneGenerator::toneNoteNumber(1, max / 4), "fatal");
    // tag + 59 overflows first, even though the total would fit.
    EXPECT_DEATH(ToneGenerator::toneNoteNumber(max - 50, -1), "fatal");
}

// Exact single-precision results. 69.078514 shows as 69.07851 at seven
// digits; the A4 403 row is where dividing first, or working in double
// precision, changes the last bit.
TEST(ToneGeneratorTest, PressSendsTunedNoteThenTrigger)
{
    MemoryPreferenceStore store;
    RecordingSender sender;
    ToneGenerator tones{sender, store};
    const std::tuple<std::int64_t, std::int64_t, std::int64_t, float> rows[] = {
        {440, 10, 0, 69.0f},     {440, 1, 0, 60.0f},       {432, 1, 1, 71.682335f},
        {442, 10, 0, 69.078514f}, {403, 3, 1, 72.4793091f},
    };
    for (const auto& [a4, tag, segment, sent] : rows) {
        store.setInteger(a4, PreferenceKey::A4);
        sender.sent.clear();
        tones.btnToneDown(tag, segment);
        EXPECT_THAT(sender.sent, ElementsAre(Message{"midinote", sent}, Message{"trigger", std::nullopt}))
            << "A4 " << a4 << " tag " << tag;
    }
}

// The buttons name written notes in the chosen tuning: a B flat instrument's
// D sounds concert C; Werckmeister III's E sits 1.955 cents above equal
// temperament's (A kept at 440), and with A4 442 both move together.
TEST(ToneGeneratorTest, PressPlaysTheWrittenNoteInTheChosenTuning)
{
    MemoryPreferenceStore store;
    RecordingSender sender;
    ToneGenerator tones{sender, store};
    const std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t, float> rows[] = {
        {440, 0, -2, 3, 60.0f},
        {440, 4, 0, 5, 64.01955f},
        {442, 4, 0, 5, 64.09806f},
        {440, 4, 12, 5, 76.01955f},
    };
    for (const auto& [a4, temperament, transpose, tag, sent] : rows) {
        store.setInteger(a4, PreferenceKey::A4);
        store.setInteger(temperament, PreferenceKey::Temperament);
        store.setInteger(transpose, PreferenceKey::Transpose);
        sender.sent.clear();
        tones.btnToneDown(tag, 0);
        ASSERT_EQ(sender.sent.size(), 2u);
        EXPECT_NEAR(*sender.sent[0].second, sent, 2e-5f) << "temperament " << temperament << " tag " << tag;
    }
}

TEST(ToneGeneratorTest, ReleaseSendsStopAndWrapsCounter)
{
    MemoryPreferenceStore store;
    RecordingSender sender;
    ToneGenerator tones{sender, store};
    tones.btnToneCancel();
    EXPECT_THAT(sender.sent, ElementsAre(Message{"stop", std::nullopt}));
    for (int i = 1; i < 9999; ++i)
        tones.stopTone();
    EXPECT_EQ(tones.toneCancelIncrement(), 9999);
    tones.stopTone();
    EXPECT_EQ(tones.toneCancelIncrement(), 0);
    EXPECT_EQ(sender.sent.size(), 10000U);
}

} // namespace
} // namespace veltra
