#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "tuning/Note.h"
#include "tuning/Temperament.h"
#include "tuning/Tuning.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

namespace veltra {
namespace {

constexpr int kC = 0;
constexpr int kD = 2;
constexpr int kA = 9;
// Piano-key numbers (Note.h): C4 is key 40, A4 key 49.
constexpr float kC4 = 40;
constexpr float kE4 = 44;

void choose(MemoryPreferenceStore& store, Temperament temperament, int tonic = kC, int transpose = 0)
{
    store.setInteger(static_cast<std::int64_t>(temperament), PreferenceKey::Temperament);
    store.setInteger(tonic, PreferenceKey::Tonic);
    store.setInteger(transpose, PreferenceKey::Transpose);
}

// With the first choices (nothing stored, or equal temperament at concert
// pitch stored) every note number and every tone is the same to the bit.
TEST(TuningTest, EqualTemperamentAtConcertPitchChangesNoBit)
{
    MemoryPreferenceStore missing;
    MemoryPreferenceStore stored;
    choose(stored, Temperament::Equal, 5, 0);
    for (const MemoryPreferenceStore* store : {&missing, &stored}) {
        const Tuning tuning = Tuning::fromPreferences(*store);
        EXPECT_TRUE(tuning.isEqualAtConcertPitch());
        for (const float x : {8.3f, 39.5f, 40.5f, 48.999f, 49.0f, 49.5f, 87.49f, 100.0f, INFINITY, NAN}) {
            EXPECT_EQ(std::bit_cast<std::uint32_t>(tuning.shownNoteNumber(x)), std::bit_cast<std::uint32_t>(x)) << x;
            EXPECT_EQ(std::bit_cast<std::uint32_t>(tuning.concertMidiNote(x)), std::bit_cast<std::uint32_t>(x)) << x;
        }
    }
}

// The reference A keeps its pitch in every system on every tonic, and the
// other notes keep their distances from it as the table gives them.
TEST(TuningTest, TheReferenceAStaysInTuneAndTheTableTurnsWithTheTonic)
{
    for (const TemperamentInfo& info : kTemperaments) {
        const CentsTable table = centsTable(info.temperament);
        for (int tonic = 0; tonic < 12; ++tonic) {
            const Tuning tuning(table, tonic, 0);
            EXPECT_EQ(tuning.centsOf(kA), 0.0) << info.id << " on " << tonic;
            for (int pc = 0; pc < 12; ++pc)
                EXPECT_NEAR(tuning.centsOf(pc) - tuning.centsOf(tonic), table[static_cast<std::size_t>((pc - tonic + 12) % 12)],
                            1e-9)
                    << info.id << " on " << tonic << " pc " << pc;
        }
    }
}

// A pitch at a note's tempered place reads as that note in tune; the same
// pitch in equal temperament reads off by the table's cents.
TEST(TuningTest, ATemperedPitchIsInTuneInItsSystem)
{
    MemoryPreferenceStore store;
    store.setInteger(440, PreferenceKey::A4);
    choose(store, Temperament::QuarterCommaMeantone, kD);
    const Tuning tuning = Tuning::fromPreferences(store);
    for (float key = 28; key < 61; ++key) {
        const auto pc = static_cast<int>(std::lround(key + 8)) % 12;
        const float concert = key + static_cast<float>(tuning.centsOf(pc) / 100.0);
        EXPECT_NEAR(tuning.shownNoteNumber(concert), key, 1e-5) << key;
        EXPECT_NEAR(tuning.shownNoteNumber(concert + 0.2f), key + 0.2f, 1e-5) << key;
        EXPECT_NEAR(tuning.shownNoteNumber(concert - 0.3f), key - 0.3f, 1e-5) << key;
    }
}

// Where two neighbours lie more than a semitone apart (meantone's C sharp
// and D, 117.1 cents), a pitch between them is named by the nearer one and
// shown no further off than the readout can say; where they lie closer, the
// nearer one is named even beyond 50 cents of equal temperament.
TEST(TuningTest, BetweenTwoNotesTheNearerIsNamed)
{
    const Tuning meantone(centsTable(Temperament::QuarterCommaMeantone), kC, 0);
    const double cSharp = 40 + 1 + meantone.centsOf(1) / 100.0; // C sharp 4
    const double d = 40 + 2 + meantone.centsOf(2) / 100.0;
    ASSERT_NEAR(d - cSharp, 1.1711, 1e-4);
    struct Case {
        double concert;
        const char* shown;
    };
    const Case cases[] = {
        {cSharp + 0.49, "+49.0%"},
        {cSharp + 0.55, "+49.9%"}, // 55 cents above C sharp, 62 below D
        {d - 0.57, "-50.0%"},      // 57 below D, 60 above C sharp
        {d - 0.45, "-45.0%"},
    };
    MemoryPreferenceStore names;
    CommonUtils::setDefaultPreferences(names);
    for (const Case& c : cases) {
        const float shown = meantone.shownNoteNumber(static_cast<float>(c.concert));
        const Note note = CommonUtils::noteForNumber(shown, names);
        EXPECT_EQ(note.deviation, c.shown) << c.concert;
        EXPECT_EQ(note.note + note.sharpFlat, c.concert < (cSharp + d) / 2 ? "C#" : "D") << c.concert;
    }
}

// A B flat instrument: concert C4 is written D4, and written D4 sounds
// concert C4; in a temperament the tone takes the concert note's cents.
TEST(TuningTest, ATransposingInstrumentReadsAndPlaysWrittenNotes)
{
    MemoryPreferenceStore store;
    choose(store, Temperament::Equal, kC, -2);
    const Tuning bFlat = Tuning::fromPreferences(store);
    EXPECT_EQ(bFlat.shownNoteNumber(kC4), kC4 + 2);
    EXPECT_EQ(bFlat.shownNoteNumber(kC4 + 0.123f), kC4 + 2.123f);
    EXPECT_EQ(bFlat.concertMidiNote(62), 60);

    choose(store, Temperament::WerckmeisterIII, kC, 7);
    const Tuning up = Tuning::fromPreferences(store);
    const auto cents = centsTable(Temperament::WerckmeisterIII);
    const double eFromA = cents[4] - cents[9];
    EXPECT_NEAR(up.shownNoteNumber(kE4 + static_cast<float>(eFromA / 100)), kE4 - 7, 1e-5);
    EXPECT_NEAR(up.concertMidiNote(64 - 7), 64 + eFromA / 100, 1e-5);
}

// Values out of range (a store without rules) fall back to the first
// choice, or to the nearest transposition the tuner knows.
TEST(TuningTest, OutOfRangePreferencesFallBack)
{
    MemoryPreferenceStore store;
    store.setInteger(42, PreferenceKey::Temperament);
    store.setInteger(-1, PreferenceKey::Tonic);
    store.setInteger(99, PreferenceKey::Transpose);
    const Tuning tuning = Tuning::fromPreferences(store);
    EXPECT_EQ(tuning.centsOf(0), 0.0);
    EXPECT_EQ(tuning.transpose(), kMaximumTranspose);
}

// The imported scale's degrees come from the store, counted from the tonic.
TEST(TuningTest, TheImportedScaleIsReadFromItsKeys)
{
    MemoryPreferenceStore store;
    choose(store, Temperament::Imported, kC);
    const CentsTable just = centsTable(Temperament::Just);
    for (std::size_t degree = 1; degree < 12; ++degree)
        store.setDouble(just[degree] + 100.0 * static_cast<double>(degree), kScaleCentsKeys[degree - 1]);
    const Tuning imported = Tuning::fromPreferences(store);
    const Tuning builtIn(just, kC, 0);
    for (int pc = 0; pc < 12; ++pc)
        EXPECT_NEAR(imported.centsOf(pc), builtIn.centsOf(pc), 1e-9) << pc;
}

} // namespace
} // namespace veltra
