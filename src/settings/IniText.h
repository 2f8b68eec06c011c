#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace veltra {

// The text of an INI file, read and edited a line at a time. Keys are those
// of the [General] section (or of the lines before any section); section
// and key names match whatever their letters' case, as people type them.
// Setting a key changes only the value on its line, or adds a line to that
// section in the file's own line-end style, so every other byte (a leading
// byte-order mark, comments, keys we do not know, other sections, line
// ends) stays as the user left it.
class IniText {
public:
    explicit IniText(std::string text = {});

    // The value's text with the spaces around it trimmed; of a key given
    // twice, the last.
    std::optional<std::string_view> value(std::string_view key) const;
    void set(std::string_view key, std::string_view value);
    const std::string& text() const { return text_; }

    // A key of [General] as the file spells it, and its value.
    struct Entry {
        std::string name, value;
        bool operator==(const Entry&) const = default;
    };
    // Every key of [General] (in lower case) with its last entry, in one
    // pass: what a comparison of two versions of the file needs.
    std::map<std::string, Entry, std::less<>> entries() const;

private:
    struct Place {
        std::optional<std::size_t> valueBegin, valueEnd; // the key's value, if present
        std::optional<std::size_t> sectionEnd;           // just after the section's last line
    };
    Place find(std::string_view key) const;

    std::string text_;
};

// Why text cannot be an INI file of ours, or an empty string: it must be
// UTF-8 without NUL bytes (a byte-order mark may lead), and every line
// blank, a comment (; or #), a "[section]" or a "key=value".
std::string problemWithIniText(std::string_view text);

} // namespace veltra
