#include "settings/IniText.h"

namespace veltra {

namespace {

constexpr std::string_view kSpace = " \t\r";
constexpr std::string_view kGeneral = "General";

std::string_view trimmed(std::string_view s)
{
    const auto begin = s.find_first_not_of(kSpace);
    if (begin == std::string_view::npos)
        return {};
    return s.substr(begin, s.find_last_not_of(kSpace) - begin + 1);
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
    bool general = true; // lines before any section belong to [General]
    for (std::size_t begin = 0; begin < text_.size();) {
        const auto newline = text_.find('\n', begin);
        const std::size_t end = newline == std::string::npos ? text_.size() : newline;
        const std::size_t next = newline == std::string::npos ? text_.size() : newline + 1;
        const std::string_view line = trimmed(std::string_view(text_).substr(begin, end - begin));
        if (!line.empty() && line[0] == '[') {
            general = line == "[" + std::string(kGeneral) + "]";
        } else if (general && !line.empty()) {
            const auto equals = line.find('=');
            if (equals != std::string_view::npos && line[0] != ';' && line[0] != '#'
                && trimmed(line.substr(0, equals)) == key) {
                const std::string_view value = trimmed(line.substr(equals + 1));
                const std::size_t lineStart = static_cast<std::size_t>(line.data() - text_.data());
                place.valueBegin = value.empty() ? lineStart + equals + 1 : static_cast<std::size_t>(value.data() - text_.data());
                place.valueEnd = *place.valueBegin + value.size();
            }
        }
        if (general && !line.empty())
            place.sectionEnd = next;
        begin = next;
    }
    return place;
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
    const std::string line = std::string(key) + "=" + std::string(value) + "\n";
    if (place.sectionEnd) {
        const bool endsLine = text_[*place.sectionEnd - 1] == '\n';
        text_.insert(*place.sectionEnd, endsLine ? line : "\n" + line);
    } else {
        text_.insert(0, "[" + std::string(kGeneral) + "]\n" + line + (text_.empty() ? "" : "\n"));
    }
}

std::string problemWithIniText(std::string_view text)
{
    if (!isUtf8(text) || text.find('\0') != std::string_view::npos)
        return "it is not a text file";
    std::size_t number = 1;
    for (std::size_t begin = 0; begin <= text.size(); ++number) {
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
