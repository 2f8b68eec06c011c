#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace veltra::test {

// The lines of a program's output, without their newlines.
inline std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> result;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        result.push_back(line);
    return result;
}

inline std::vector<std::string> lines(const std::ostringstream& out)
{
    return lines(out.str());
}

} // namespace veltra::test
