#include "settings/MemoryPreferenceStore.h"

#include <cmath>
#include <limits>
#include <type_traits>

namespace veltra {

namespace {

// Text reads as 0 through the number accessors, like a missing key.
double asDouble(const MemoryPreferenceStore::Value& v)
{
    return std::visit(
        [](const auto& x) {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(x)>>)
                return static_cast<double>(x);
            else
                return 0.0;
        },
        v);
}

} // namespace

const MemoryPreferenceStore::Value* MemoryPreferenceStore::valueForKey(std::string_view key) const
{
    const auto it = values_.find(key);
    return it == values_.end() ? nullptr : &it->second;
}

bool MemoryPreferenceStore::hasValue(std::string_view key) const
{
    return valueForKey(key) != nullptr;
}

bool MemoryPreferenceStore::boolForKey(std::string_view key) const
{
    const Value* v = valueForKey(key);
    return v && asDouble(*v) != 0.0;
}

std::int64_t MemoryPreferenceStore::integerForKey(std::string_view key) const
{
    const Value* v = valueForKey(key);
    if (!v)
        return 0;
    if (const auto* i = std::get_if<std::int64_t>(v))
        return *i;
    const double d = asDouble(*v);
    // A stored double outside the integer range reads as 0, like a missing key.
    if (!std::isfinite(d) || std::fabs(d) >= 9.2e18)
        return 0;
    return static_cast<std::int64_t>(d);
}

float MemoryPreferenceStore::floatForKey(std::string_view key) const
{
    return static_cast<float>(doubleForKey(key));
}

double MemoryPreferenceStore::doubleForKey(std::string_view key) const
{
    const Value* v = valueForKey(key);
    return v ? asDouble(*v) : 0.0;
}

void MemoryPreferenceStore::setBool(bool value, std::string_view key)
{
    values_.insert_or_assign(std::string(key), Value(value));
}

void MemoryPreferenceStore::setInteger(std::int64_t value, std::string_view key)
{
    values_.insert_or_assign(std::string(key), Value(value));
}

void MemoryPreferenceStore::setFloat(float value, std::string_view key)
{
    values_.insert_or_assign(std::string(key), Value(static_cast<double>(value)));
}

void MemoryPreferenceStore::setDouble(double value, std::string_view key)
{
    values_.insert_or_assign(std::string(key), Value(value));
}

std::string MemoryPreferenceStore::stringForKey(std::string_view key) const
{
    const Value* v = valueForKey(key);
    const auto* text = v ? std::get_if<std::string>(v) : nullptr;
    return text ? *text : std::string();
}

void MemoryPreferenceStore::setString(std::string_view value, std::string_view key)
{
    values_.insert_or_assign(std::string(key), Value(std::string(value)));
}

} // namespace veltra
