#pragma once

#include <cstdint>
#include <string_view>

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
};

} // namespace veltra
