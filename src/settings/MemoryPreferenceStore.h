#pragma once

#include "settings/PreferenceStore.h"

#include <map>
#include <string>
#include <variant>

namespace veltra {

// A preference store held in memory: the store of tests and of the
// command-line tool, and the fallback when the user's file cannot be used.
class MemoryPreferenceStore : public PreferenceStore {
public:
    using Value = std::variant<bool, std::int64_t, double, std::string>;

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

    // The raw stored value, for tests that check which setter wrote a key.
    const Value* valueForKey(std::string_view key) const;

private:
    std::map<std::string, Value, std::less<>> values_;
};

} // namespace veltra
