#pragma once

#include "settings/IniText.h"
#include "settings/PreferenceStore.h"
#include "settings/Preferences.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <utility>

namespace veltra {

struct PreferenceRule;

// The user's preferences in an INI file (by default in the XDG config
// directory). A file that cannot be parsed is left untouched: the program
// says so in one line and runs on defaults held in memory. A known key whose
// value the tuner cannot use (see PreferenceRules.h) is reported in one line
// and reads as its default; its text stays in the file until that setting is
// changed. A change rewrites only its own line and replaces the file
// atomically, so comments, other keys and sections stay as they are. A file
// that cannot be written is reported once; the values still apply this
// session.
class IniPreferenceStore : public PreferenceStore {
public:
    // The store for the file at path, or an in-memory fallback when the file
    // exists but is not a preference file.
    static std::unique_ptr<PreferenceStore> open(const std::filesystem::path& path, std::ostream& console);
    static std::filesystem::path defaultPath();

    bool hasValue(std::string_view key) const override;
    bool boolForKey(std::string_view key) const override;
    std::int64_t integerForKey(std::string_view key) const override;
    float floatForKey(std::string_view key) const override;
    double doubleForKey(std::string_view key) const override;

    void setBool(bool value, std::string_view key) override;
    void setInteger(std::int64_t value, std::string_view key) override;
    void setFloat(float value, std::string_view key) override;
    void setDouble(double value, std::string_view key) override;

private:
    IniPreferenceStore(std::filesystem::path path, std::string text, std::ostream& console);
    // The value key reads as: for a known key, its default when the file's
    // text breaks the key's rule; nothing for a missing key.
    std::optional<PreferenceValue> value(std::string_view key) const;
    std::optional<PreferenceValue> parse(std::string_view key) const;
    void reportUnusable(const PreferenceRule& rule, std::string_view text) const;
    void write(std::string_view key, const std::string& text);

    std::filesystem::path path_;
    IniText ini_;
    // What each key read as, until it is written: the tuner reads several
    // keys for every reading and every frame of the graph, and finding each
    // in the text and parsing it again showed in every reading's profile.
    mutable std::map<std::string, std::optional<PreferenceValue>, std::less<>> read_;
    std::ostream& console_;
    bool reportedWriteFailure_ = false;
    mutable std::set<std::pair<std::string, std::string>> reportedValues_; // key and text, each reported once
};

} // namespace veltra
