#include "Command.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace veltra::cli {

ArgReader::ArgReader(const Args& args)
    : args_(args)
{
}

bool ArgReader::flag(const std::string& name)
{
    const auto it = std::find(args_.begin(), args_.end(), name);
    if (it == args_.end())
        return false;
    args_.erase(it);
    return true;
}

std::optional<std::string> ArgReader::option(const std::string& name)
{
    const auto it = std::find(args_.begin(), args_.end(), name);
    if (it == args_.end())
        return std::nullopt;
    // An empty value ("") is no value either: an empty file name would
    // only fail later, less clearly.
    if (it + 1 == args_.end() || (it + 1)->empty())
        throw UsageError(name + " needs a value");
    std::string value = *(it + 1);
    args_.erase(it, it + 2);
    return value;
}

std::optional<double> ArgReader::numberOption(const std::string& name, double min, double max)
{
    const auto text = option(name);
    if (!text)
        return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text->c_str(), &end);
    if (text->empty() || *end != '\0' || !std::isfinite(value) || value < min || value > max) {
        char range[64];
        std::snprintf(range, sizeof range, "%g to %g", min, max);
        throw UsageError(name + " must be a number from " + range + ", not '" + *text + "'");
    }
    return value;
}

std::string oneLine(std::string_view text)
{
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            out += "\\n";
        } else if (byte < 0x20 || byte == 0x7f) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02x", byte);
            out += escape;
        } else {
            out += c;
        }
    }
    return out;
}

Args ArgReader::positionals() const
{
    for (const std::string& a : args_)
        if (a.size() > 1 && a[0] == '-')
            throw UsageError("unknown option " + a);
    return args_;
}

} // namespace veltra::cli
