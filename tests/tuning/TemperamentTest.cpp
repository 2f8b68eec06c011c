#include "settings/MemoryPreferenceStore.h"
#include "settings/Preferences.h"
#include "tuning/ScalaScale.h"
#include "tuning/Temperament.h"
#include "tuning/Tuning.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace veltra {
namespace {

// The published tables, in cents above C for C, C#, D, Eb, E, F, F#, G, G#,
// A, Bb, B, as tuning handbooks and the Scala archive give them. The
// temperaments themselves are built from their recipes (fifths narrowed by
// fractions of a comma), so these are an independent check.
struct Published {
    Temperament temperament;
    std::array<double, 12> cents;
};

const Published kPublished[] = {
    {Temperament::Equal, {0, 100, 200, 300, 400, 500, 600, 700, 800, 900, 1000, 1100}},
    {Temperament::Pythagorean,
     {0, 113.685, 203.910, 294.135, 407.820, 498.045, 611.730, 701.955, 815.640, 905.865, 996.090, 1109.775}},
    {Temperament::QuarterCommaMeantone,
     {0, 76.049, 193.157, 310.265, 386.314, 503.422, 579.471, 696.578, 772.627, 889.735, 1006.843, 1082.892}},
    {Temperament::SixthCommaMeantone,
     {0, 88.594, 196.741, 304.888, 393.482, 501.629, 590.224, 698.371, 786.965, 895.112, 1003.259, 1091.853}},
    {Temperament::WerckmeisterIII,
     {0, 90.225, 192.180, 294.135, 390.225, 498.045, 588.270, 696.090, 792.180, 888.270, 996.090, 1092.180}},
    {Temperament::KirnbergerIII,
     {0, 90.225, 193.157, 294.135, 386.314, 498.045, 590.224, 696.578, 792.180, 889.735, 996.090, 1088.269}},
    {Temperament::Vallotti,
     {0, 94.135, 196.090, 298.045, 392.180, 501.955, 592.180, 698.045, 796.090, 894.135, 1000.000, 1090.225}},
    {Temperament::Young,
     {0, 90.225, 196.090, 294.135, 392.180, 498.045, 588.270, 698.045, 792.180, 894.135, 996.090, 1090.225}},
    {Temperament::Just,
     {0, 111.731, 203.910, 315.641, 386.314, 498.045, 590.224, 701.955, 813.686, 884.359, 1017.596, 1088.269}},
};

TEST(TemperamentTest, EveryTableMatchesItsPublishedCents)
{
    for (const Published& p : kPublished) {
        const CentsTable table = centsTable(p.temperament);
        for (std::size_t degree = 0; degree < 12; ++degree)
            EXPECT_NEAR(table[degree] + 100.0 * static_cast<double>(degree), p.cents[degree], 0.01)
                << kTemperaments[static_cast<std::size_t>(p.temperament)].id << " degree " << degree;
    }
}

TEST(TemperamentTest, IdsNameEveryTemperamentOnce)
{
    for (const TemperamentInfo& info : kTemperaments)
        EXPECT_EQ(temperamentForId(info.id), info.temperament) << info.id;
    EXPECT_EQ(temperamentForId("Vallotti"), std::nullopt);
    EXPECT_EQ(temperamentForId(""), std::nullopt);
}

// A Scala file of a temperament, written as a tuning library would (ratios
// where they are exact, cents elsewhere), gives the same table.
TEST(TemperamentTest, AScalaFileOfATemperamentGivesItsTable)
{
    const std::string werckmeister = "! werck3.scl\n"
                                     "!\n"
                                     "Andreas Werckmeister's temperament III (the most famous one, 1681)\n"
                                     " 12\n"
                                     "!\n"
                                     " 256/243\n 192.18000\n 32/27\n 390.22500\n 4/3\n 1024/729\n"
                                     " 696.09000\n 128/81\n 888.27000\n 16/9\n 1092.18000\n 2/1\n";
    const auto scale = parseScala(werckmeister);
    ASSERT_TRUE(std::holds_alternative<ScalaScale>(scale)) << std::get<std::string>(scale);
    const CentsTable expected = centsTable(Temperament::WerckmeisterIII);
    for (std::size_t degree = 0; degree < 12; ++degree)
        EXPECT_NEAR(std::get<ScalaScale>(scale).cents[degree], expected[degree], 0.01) << degree;
}

} // namespace
} // namespace veltra
