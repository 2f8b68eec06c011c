#pragma once

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace veltra::test {

// Files written by tools/classifier/make_reference.py.
inline std::filesystem::path classifyData(const std::string& name)
{
    const char* root = std::getenv("VELTRA_SOURCE_DIR");
    return std::filesystem::path(root ? root : VELTRA_TEST_SOURCE_DIR) / "tests/classify/data" / name;
}

inline std::vector<float> readFloats(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::vector<char> bytes(std::istreambuf_iterator<char>(in), {});
    std::vector<float> values(bytes.size() / sizeof(float));
    std::copy(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(values.size() * sizeof(float)),
              reinterpret_cast<char*>(values.data()));
    return values;
}

// Whether a window, by its nominal start (its end less 0.975 s), is one of
// the regular windows every 0.48 s from the stream's start, as the
// reference's are, rather than one scored at a note's start or heard again.
inline bool onRegularGrid(double startSeconds)
{
    return std::abs(std::remainder(startSeconds, 0.48)) < 0.001;
}

} // namespace veltra::test
