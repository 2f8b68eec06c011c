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
// directory), shared with whoever else edits it: other instances of the
// tuner and the user's editor.
//
// A change is merged, never imposed: the file is read as it is on disk at
// that moment, only the changed key's line is replaced (or added), and the
// result replaces the file atomically, so every other line, comment,
// section and line end stays as whoever wrote it left it. Saves of several
// instances take turns on a lock of the file's folder. The folder is
// watched, so changes made outside reach the running program
// (takeOutsideChanges). A symbolic link is followed to the file it names;
// a file with several hard links is rewritten in place.
//
// Only an ordinary file of at most kLargestFileMiB is read; anything else
// at the path (a folder, a pipe, a device, a file too large or not an INI
// file) is left untouched: at start-up the program says so in one line and
// runs on defaults held in memory; later, it keeps the settings it had and
// holds its changes in memory. A known key whose value the tuner cannot use
// (see PreferenceRules.h) is reported in one line and reads as its default;
// its text stays in the file until that setting is changed. A file that
// cannot be written is reported once; the values still apply this session.
class IniPreferenceStore : public PreferenceStore {
public:
    // Preference files are a few hundred bytes; anything far larger is not one.
    static constexpr std::size_t kLargestFileMiB = 1;

    // The store for the file at path, or an in-memory fallback when the file
    // exists but is not a preference file.
    static std::unique_ptr<PreferenceStore> open(const std::filesystem::path& path, std::ostream& console);
    static std::filesystem::path defaultPath();

    IniPreferenceStore(const IniPreferenceStore&) = delete;
    IniPreferenceStore& operator=(const IniPreferenceStore&) = delete;
    ~IniPreferenceStore() override;

    bool hasValue(std::string_view key) const override;
    bool boolForKey(std::string_view key) const override;
    std::int64_t integerForKey(std::string_view key) const override;
    float floatForKey(std::string_view key) const override;
    double doubleForKey(std::string_view key) const override;

    void setBool(bool value, std::string_view key) override;
    void setInteger(std::int64_t value, std::string_view key) override;
    void setFloat(float value, std::string_view key) override;
    void setDouble(double value, std::string_view key) override;
    std::string stringForKey(std::string_view key) const override;
    void setString(std::string_view value, std::string_view key) override;

    // Made at the first call: closing an inotify instance waits for the
    // kernel's grace period (tens of milliseconds), which only a store
    // that is watched should pay.
    int watchDescriptor() const override;
    std::vector<std::string> takeOutsideChanges() override;

private:
    IniPreferenceStore(std::filesystem::path path, std::string text, std::ostream& console);
    // The value key reads as: for a known key, its default when the file's
    // text breaks the key's rule or the key has gone from the file; nothing
    // for a missing key of any other name.
    std::optional<PreferenceValue> value(std::string_view key) const;
    std::optional<std::string_view> text(std::string_view key) const;
    std::optional<PreferenceValue> parse(std::string_view key) const;
    void reportUnusable(const PreferenceRule& rule, std::string_view text) const;
    void checkKnownKeys() const;
    void write(std::string_view key, std::string text);
    // Takes in the file as it now is on disk; false (said once) when it is
    // no longer usable, and the settings read before stay.
    bool reload();
    void adopt(IniText disk);
    void watchFile() const;

    std::filesystem::path path_;
    IniText ini_; // the file as last read or written
    // Changes not yet in the file (its save failed); they read before it.
    std::map<std::string, std::string, std::less<>> unsaved_;
    // What each key read as, until the text changes: the tuner reads several
    // keys for every reading and every frame of the graph, and finding each
    // in the text and parsing it again showed in every reading's profile.
    mutable std::map<std::string, std::optional<PreferenceValue>, std::less<>> read_;
    std::set<std::string> outsideChanges_;
    std::ostream& console_;
    mutable int watch_ = -1; // inotify, once asked for
    bool reportedWriteFailure_ = false;
    std::string reportedFileProblem_;
    mutable std::set<std::pair<std::string, std::string>> reportedValues_; // key and text, each reported once
};

} // namespace veltra
