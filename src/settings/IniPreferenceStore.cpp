#include "settings/IniPreferenceStore.h"

#include "settings/AtomicFile.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/PreferenceRules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace veltra {

namespace {

// The value of a key without a rule: a finite number or a boolean; any other
// text reads like a missing key.
std::optional<PreferenceValue> parseAnyValue(std::string_view text)
{
    static const PreferenceRule anyNumber{"", PreferenceRule::Type::Number, -HUGE_VAL, HUGE_VAL};
    static const PreferenceRule anyBoolean{"", PreferenceRule::Type::Boolean};
    if (auto number = parsePreference(anyNumber, text))
        return number;
    return parsePreference(anyBoolean, text);
}

// The text of a value made fit for one line of a message.
std::string forMessage(std::string_view text)
{
    // Longer values are cut: enough to recognise the line in the file.
    constexpr std::size_t kShownCharacters = 40;
    std::string shown(text.substr(0, kShownCharacters));
    std::replace_if(shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return text.size() > kShownCharacters ? shown + "..." : shown;
}

std::string spelling(const PreferenceValue& value)
{
    if (const auto* b = std::get_if<bool>(&value))
        return *b ? "true" : "false";
    if (const auto* i = std::get_if<std::int64_t>(&value))
        return std::to_string(*i);
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", std::get<double>(value));
    return text;
}

double asDouble(const PreferenceValue& value)
{
    return std::visit([](auto v) { return static_cast<double>(v); }, value);
}

} // namespace

std::unique_ptr<PreferenceStore> IniPreferenceStore::open(const std::filesystem::path& path, std::ostream& console)
{
    std::string text, problem;
    if (std::error_code error; std::filesystem::exists(path, error)) {
        std::ifstream in(path, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(in), {});
        problem = in.bad() || !std::filesystem::is_regular_file(path, error) ? "it cannot be read" : problemWithIniText(text);
    }
    if (!problem.empty()) {
        console << "Preferences file " << path.string() << " is not usable (" << problem
                << "); running on defaults and leaving the file as it is" << std::endl;
        return std::make_unique<MemoryPreferenceStore>();
    }
    return std::unique_ptr<PreferenceStore>(new IniPreferenceStore(path, std::move(text), console));
}

std::filesystem::path IniPreferenceStore::defaultPath()
{
    const char* config = std::getenv("XDG_CONFIG_HOME");
    const char* home = std::getenv("HOME");
    const std::filesystem::path folder = config && *config ? std::filesystem::path(config)
        : home && *home                                    ? std::filesystem::path(home) / ".config"
                                                           : std::filesystem::path(".config");
    return folder / "veltra" / "veltra.ini";
}

IniPreferenceStore::IniPreferenceStore(std::filesystem::path path, std::string text, std::ostream& console)
    : path_(std::move(path))
    , ini_(std::move(text))
    , console_(console)
{
    // The file's problems are told at start-up, not at the first use.
    for (const PreferenceDefault& d : kPreferenceDefaults)
        value(d.key);
}

std::optional<PreferenceValue> IniPreferenceStore::value(std::string_view key) const
{
    if (const auto known = read_.find(key); known != read_.end())
        return known->second;
    return read_.emplace(std::string(key), parse(key)).first->second;
}

std::optional<PreferenceValue> IniPreferenceStore::parse(std::string_view key) const
{
    const auto text = ini_.value(key);
    if (!text)
        return std::nullopt;
    const PreferenceRule* rule = preferenceRule(key);
    if (!rule)
        return parseAnyValue(*text);
    if (auto usable = parsePreference(*rule, *text))
        return usable;
    reportUnusable(*rule, *text);
    return defaultValue(*rule);
}

void IniPreferenceStore::reportUnusable(const PreferenceRule& rule, std::string_view text) const
{
    if (!reportedValues_.emplace(std::string(rule.key), std::string(text)).second)
        return;
    console_ << "Preferences file " << path_.string() << ": " << rule.key << "=" << forMessage(text)
             << " is not usable (" << describeRule(rule) << " expected); using " << spelling(defaultValue(rule))
             << " until the setting is changed" << std::endl;
}

bool IniPreferenceStore::hasValue(std::string_view key) const
{
    return ini_.value(key).has_value();
}

bool IniPreferenceStore::boolForKey(std::string_view key) const
{
    const auto v = value(key);
    return v && asDouble(*v) != 0.0;
}

std::int64_t IniPreferenceStore::integerForKey(std::string_view key) const
{
    const double value = doubleForKey(key);
    // A value the integer range cannot hold reads as 0, like a missing key.
    return std::isfinite(value) && std::fabs(value) < 9.2e18 ? static_cast<std::int64_t>(value) : 0;
}

float IniPreferenceStore::floatForKey(std::string_view key) const
{
    return static_cast<float>(doubleForKey(key));
}

double IniPreferenceStore::doubleForKey(std::string_view key) const
{
    const auto v = value(key);
    return v ? asDouble(*v) : 0.0;
}

void IniPreferenceStore::setBool(bool value, std::string_view key)
{
    write(key, spelling(value));
}

void IniPreferenceStore::setInteger(std::int64_t value, std::string_view key)
{
    write(key, spelling(value));
}

void IniPreferenceStore::setFloat(float value, std::string_view key)
{
    // Written with float precision so that 4.5 or 0.1f read back as set.
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    write(key, text);
}

void IniPreferenceStore::setDouble(double value, std::string_view key)
{
    write(key, spelling(value));
}

void IniPreferenceStore::write(std::string_view key, const std::string& text)
{
    ini_.set(key, text);
    if (const auto known = read_.find(key); known != read_.end())
        read_.erase(known);
    const std::string problem = replaceFile(path_, ini_.text());
    if (!problem.empty() && !reportedWriteFailure_) {
        reportedWriteFailure_ = true;
        console_ << "Preferences cannot be saved to " << path_.string() << " (" << problem
                 << "); changes apply until the program ends" << std::endl;
    }
}

} // namespace veltra
