#include "dsp/Patch.h"
#include "dsp/PatchFile.h"
#include "dsp/PdBase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace veltra {
namespace {

std::vector<std::string> records(std::string_view text)
{
    std::vector<std::string> out;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(";\n", start)) != std::string_view::npos; start = end + 2)
        out.emplace_back(text.substr(start, end - start));
    EXPECT_EQ(start, text.size()) << "text after the last record";
    return out;
}

TEST(PatchText, HasTheExactShape)
{
    const std::string_view patch = CommonUtils::patch;
    EXPECT_EQ(patch.size(), 2214u);
    EXPECT_TRUE(patch.ends_with(";\n"));
    EXPECT_FALSE(patch.ends_with("\n\n"));

    const auto all = records(patch);
    ASSERT_EQ(all.size(), 1u + 37u + 43u);
    EXPECT_EQ(all[0], "#N canvas 0 100 1440 742 10");

    std::vector<std::string> objects(all.begin() + 1, all.begin() + 38);
    std::vector<std::string> connections(all.begin() + 38, all.end());
    for (const auto& c : connections)
        EXPECT_TRUE(c.starts_with("#X connect ")) << c;

    // Pd wraps long records; these four are stored on two lines, all others on one.
    const std::pair<int, std::string> wrapped[] = {
        {12, "#X obj 249 18 bng 15 250 50 0 empty trigger r:trigger 17 7 0 10 #fcfcfc\n#000000 #000000"},
        {18, "#X obj 342 18 bng 15 250 50 0 empty stop r:stop 17 7 0 10 #fcfcfc #000000\n#000000"},
        {28, "#X obj 81 277 sigmund~ -npts 4096 -hop 256 -npeak 20 pitch env, f\n32"},
        {29, "#X obj 356 268 sigmund~ -npts 2048 -hop 256 -npeak 20 pitch env, f\n32"},
    };
    for (int i = 0; i < 37; ++i) {
        const auto it = std::find_if(std::begin(wrapped), std::end(wrapped), [i](const auto& w) { return w.first == i; });
        if (it != std::end(wrapped))
            EXPECT_EQ(objects[static_cast<std::size_t>(i)], it->second);
        else
            EXPECT_EQ(objects[static_cast<std::size_t>(i)].find('\n'), std::string::npos) << "object " << i;
    }

    // The names the program talks to, and the escaped commas of expr.
    EXPECT_EQ(objects[7], "#X floatatom 144 568 5 0 0 1 s:frequency - frequency 0");
    EXPECT_EQ(objects[15], "#X floatatom 422 18 5 0 0 1 r:midinote midinote - 0");
    EXPECT_EQ(objects[23], "#X obj 143 525 expr if ($f2>1 \\, $f2 \\, $f1)");
    EXPECT_EQ(objects[30], "#X obj 306 468 expr if($f2==1 \\, $f1 \\, $f3)");

    // Connection order decides Pd's delivery order: the reset of a switch's
    // third operand must come before the frequency reaches its hot inlet.
    EXPECT_EQ(connections.front(), "#X connect 0 0 22 0");
    EXPECT_EQ(connections[10], "#X connect 8 0 33 0");
    EXPECT_EQ(connections[11], "#X connect 8 0 32 0");
    EXPECT_EQ(connections[14], "#X connect 11 0 31 0");
    EXPECT_EQ(connections[15], "#X connect 11 0 30 0");
    EXPECT_EQ(connections.back(), "#X connect 36 0 25 0");
    for (const auto& c : connections) {
        std::istringstream fields(c.substr(11));
        int from, outlet, to, inlet;
        ASSERT_TRUE(fields >> from >> outlet >> to >> inlet) << c;
        EXPECT_TRUE(from >= 0 && from < 37 && to >= 0 && to < 37 && outlet >= 0 && inlet >= 0) << c;
    }
}

TEST(PatchText, WrittenFileIsByteExactAndOpensInLibpd)
{
    const auto dir = std::filesystem::temp_directory_path() / ("veltra-patch-" + makeUuidString());
    const std::string name = makeUuidString();
    ASSERT_TRUE(writeFileAtomically(dir / name, std::string(CommonUtils::patch)));
    std::ifstream in(dir / name, std::ios::binary);
    const std::string onDisk((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(onDisk, CommonUtils::patch);

    PdBase base;
    const auto patch = base.openFile(name, dir.string());
    ASSERT_TRUE(patch.has_value());
    base.closeFile(*patch);
    EXPECT_FALSE(base.openFile("no-such-patch", dir.string()).has_value());
    std::filesystem::remove_all(dir);
}

} // namespace
} // namespace veltra
