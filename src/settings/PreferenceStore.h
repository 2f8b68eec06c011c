#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace veltra {

// The per-user key-value store that holds every choice of the tuner.
// Readers ask by key at the moment of use; nothing caches a value.
// A missing key reads as false, 0 or 0.0. Numbers convert between the
// accessors (an integer reads as a double, a double as a truncated integer).
class PreferenceStore {
public:
    virtual ~PreferenceStore() = default;

    virtual bool hasValue(std::string_view key) const = 0;
    virtual bool boolForKey(std::string_view key) const = 0;
    virtual std::int64_t integerForKey(std::string_view key) const = 0;
    virtual float floatForKey(std::string_view key) const = 0;
    virtual double doubleForKey(std::string_view key) const = 0;

    virtual void setBool(bool value, std::string_view key) = 0;
    virtual void setInteger(std::int64_t value, std::string_view key) = 0;
    virtual void setFloat(float value, std::string_view key) = 0;
    virtual void setDouble(double value, std::string_view key) = 0;

    // Text values (a sound input's name). A missing key, or one that holds
    // no text its rule accepts, reads as the empty text.
    virtual std::string stringForKey(std::string_view key) const = 0;
    virtual void setString(std::string_view value, std::string_view key) = 0;

    // A store that others may change while the program runs (another
    // instance, the user's editor) offers a descriptor that becomes readable
    // when that may have happened; -1 for a store that is this process's
    // alone.
    virtual int watchDescriptor() const { return -1; }
    // The keys whose values changed from outside since the last call, now
    // read anew. Called when watchDescriptor() is readable.
    virtual std::vector<std::string> takeOutsideChanges() { return {}; }
};

} // namespace veltra
