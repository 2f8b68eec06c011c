#include "app/qt/RendererChoice.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace veltra {
namespace {

// A machine's /dev/dri as a directory of empty files.
class DriDirectory {
public:
    explicit DriDirectory(const std::vector<std::string>& nodes)
        : path_(std::filesystem::temp_directory_path() /
                ("veltra-dri-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "-" +
                 std::to_string(counter_++)))
    {
        std::filesystem::create_directories(path_);
        for (const std::string& node : nodes)
            std::ofstream(path_ / node).put('\0');
    }
    ~DriDirectory() { std::filesystem::remove_all(path_); }
    const std::filesystem::path& path() const { return path_; }

private:
    static inline int counter_ = 0;
    std::filesystem::path path_;
};

TEST(RendererChoice, SoftwareOnlyWithoutAGpuAndWithoutTheUsersOwnChoice)
{
    struct Case {
        std::string what;
        std::vector<std::string> nodes;
        bool userChose;
        bool software;
    };
    const Case cases[] = {
        {"a GPU's render node", {"card0", "renderD128"}, false, false},
        {"a display controller without rendering (card only)", {"card0"}, false, true},
        {"no GPU at all", {}, false, true},
        {"no GPU, but the user picked a renderer", {}, true, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const DriDirectory dri(c.nodes);
        EXPECT_EQ(preferSoftwareRendering(dri.path(), c.userChose), c.software);
    }
    EXPECT_TRUE(preferSoftwareRendering("/nonexistent/dri", false)) << "a machine without /dev/dri has no GPU";
}

} // namespace
} // namespace veltra
