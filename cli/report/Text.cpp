#include "report/Text.h"

#include <cstdio>

namespace veltra::report {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// The length of the well-formed UTF-8 sequence at the front of text, or 0.
std::size_t sequenceLength(std::string_view text)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return 1;
    std::size_t length = 0;
    unsigned char low = 0x80, high = 0xBF; // the range of the second byte
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;  // no overlong forms
        high = lead == 0xED ? 0x9F : 0xBF; // no surrogates
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF; // nothing beyond U+10FFFF
    } else {
        return 0;
    }
    if (text.size() < length || byte(1) < low || byte(1) > high)
        return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (byte(i) < 0x80 || byte(i) > 0xBF)
            return 0;
    return length;
}

} // namespace

std::string validUtf8(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t n = sequenceLength(text);
        if (n == 0) {
            out += kReplacement;
            text.remove_prefix(1);
        } else {
            out += text.substr(0, n);
            text.remove_prefix(n);
        }
    }
    return out;
}

std::string jsonQuoted(std::string_view text)
{
    std::string out = "\"";
    for (const char c : validUtf8(text)) {
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            out += escape;
        } else {
            out += c;
        }
    }
    return out + '"';
}

} // namespace veltra::report
