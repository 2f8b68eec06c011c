#include "settings/IniText.h"

#include <algorithm>

namespace veltra {

namespace {

constexpr std::string_view kSpace = " \t\r";
constexpr std::string_view kGeneral = "General";
// Editors on some systems begin a UTF-8 file with it; it is no part of the
// first line.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::size_t bodyStart(std::string_view text)
{
    return text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
}

// An empty result still points into s (just past it), so a place found
// from it is a place in the text.
std::string_view trimmed(std::string_view s)
{
    const auto begin = s.find_first_not_of(kSpace);
    if (begin == std::string_view::npos)
        return s.substr(s.size());
    return s.substr(begin, s.find_last_not_of(kSpace) - begin + 1);
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool sameIgnoringCase(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, [](char x, char y) { return lower(x) == lower(y); });
}

// The file's own line end: that of its first line, else the Unix one.
std::string_view lineEnd(std::string_view text)
{
    const auto newline = text.find('\n');
    return newline != std::string_view::npos && newline > 0 && text[newline - 1] == '\r' ? "\r\n" : "\n";
}

// Calls visit(line, next) for each non-blank line (trimmed) of [General]
// and of the lines before any section, the section headers included; next
// is where the following line begins.
template <class Visit>
void forEachGeneralLine(std::string_view text, Visit visit)
{
    bool general = true; // lines before any section belong to [General]
    for (std::size_t begin = bodyStart(text); begin < text.size();) {
        const auto newline = text.find('\n', begin);
        const std::size_t end = newline == std::string_view::npos ? text.size() : newline;
        const std::size_t next = newline == std::string_view::npos ? text.size() : newline + 1;
        const std::string_view line = trimmed(text.substr(begin, end - begin));
        if (!line.empty() && line[0] == '[')
            general = line.size() == kGeneral.size() + 2 && line.back() == ']'
                && sameIgnoringCase(line.substr(1, kGeneral.size()), kGeneral);
        if (general && !line.empty())
            visit(line, next);
        begin = next;
    }
}

// The key and value of a setting line; nothing for a header or a comment.
std::optional<std::pair<std::string_view, std::string_view>> splitSetting(std::string_view line)
{
    const auto equals = line.find('=');
    if (equals == std::string_view::npos || line[0] == ';' || line[0] == '#' || line[0] == '[')
        return std::nullopt;
    return std::pair{trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1))};
}

// Whether the bytes are well-formed UTF-8 (no overlong forms, surrogates or
// code points past U+10FFFF).
bool isUtf8(std::string_view text)
{
    for (std::size_t i = 0; i < text.size();) {
        const auto c = static_cast<unsigned char>(text[i]);
        const std::size_t length = c < 0x80 ? 1 : (c >> 5) == 0x6 ? 2 : (c >> 4) == 0xe ? 3 : (c >> 3) == 0x1e ? 4 : 0;
        if (length == 0 || i + length > text.size())
            return false;
        char32_t point = length == 1 ? c : c & (0x7f >> length);
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next >> 6) != 0x2)
                return false;
            point = (point << 6) | (next & 0x3f);
        }
        constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
        if (point < kSmallest[length] || point > 0x10ffff || (point >= 0xd800 && point <= 0xdfff))
            return false;
        i += length;
    }
    return true;
}

bool isSetting(std::string_view line)
{
    line = trimmed(line);
    if (line.empty() || line[0] == ';' || line[0] == '#')
        return true;
    if (line[0] == '[')
        return line.back() == ']' && line.find(']') == line.size() - 1;
    const auto equals = line.find('=');
    return equals != std::string_view::npos && equals > 0 && line.substr(0, equals).find('[') == std::string_view::npos;
}

} // namespace

IniText::IniText(std::string text)
    : text_(std::move(text))
{
}

IniText::Place IniText::find(std::string_view key) const
{
    Place place;
    forEachGeneralLine(text_, [&](std::string_view line, std::size_t next) {
        if (const auto setting = splitSetting(line); setting && sameIgnoringCase(setting->first, key)) {
            place.valueBegin = static_cast<std::size_t>(setting->second.data() - text_.data());
            place.valueEnd = *place.valueBegin + setting->second.size();
        }
        place.sectionEnd = next;
    });
    return place;
}

std::map<std::string, IniText::Entry, std::less<>> IniText::entries() const
{
    std::map<std::string, Entry, std::less<>> entries;
    forEachGeneralLine(text_, [&](std::string_view line, std::size_t) {
        if (const auto setting = splitSetting(line)) {
            std::string key(setting->first);
            std::ranges::transform(key, key.begin(), lower);
            entries.insert_or_assign(std::move(key), Entry{std::string(setting->first), std::string(setting->second)});
        }
    });
    return entries;
}

std::optional<std::string_view> IniText::value(std::string_view key) const
{
    const Place place = find(key);
    if (!place.valueBegin)
        return std::nullopt;
    return std::string_view(text_).substr(*place.valueBegin, *place.valueEnd - *place.valueBegin);
}

void IniText::set(std::string_view key, std::string_view value)
{
    const Place place = find(key);
    if (place.valueBegin) {
        text_.replace(*place.valueBegin, *place.valueEnd - *place.valueBegin, value);
        return;
    }
    const std::string end(lineEnd(text_));
    const std::string line = std::string(key) + "=" + std::string(value) + end;
    if (place.sectionEnd) {
        const bool endsLine = text_[*place.sectionEnd - 1] == '\n';
        text_.insert(*place.sectionEnd, endsLine ? line : end + line);
    } else {
        const std::size_t body = bodyStart(text_);
        text_.insert(body, "[" + std::string(kGeneral) + "]" + end + line + (text_.size() == body ? "" : end));
    }
}

std::string problemWithIniText(std::string_view text)
{
    if (!isUtf8(text) || text.find('\0') != std::string_view::npos)
        return "it is not a text file";
    std::size_t number = 1;
    for (std::size_t begin = bodyStart(text); begin <= text.size(); ++number) {
        const auto newline = text.find('\n', begin);
        const std::size_t end = newline == std::string_view::npos ? text.size() : newline;
        if (!isSetting(text.substr(begin, end - begin)))
            return "line " + std::to_string(number) + " is not a setting";
        if (newline == std::string_view::npos)
            break;
        begin = newline + 1;
    }
    return {};
}

} // namespace veltra
