#include "settings/IniPreferenceStore.h"

#include "settings/AtomicFile.h"
#include "settings/MemoryPreferenceStore.h"
#include "settings/PreferenceRules.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace veltra {

namespace {

// A preference file is the user's alone unless they made it otherwise.
constexpr mode_t kNewFileMode = 0600;
// A save killed half-way leaves its temporary; one this old belongs to no
// save still under way.
constexpr std::chrono::seconds kStaleTemporaryAge{60};

std::filesystem::path folderOf(const std::filesystem::path& path)
{
    return path.parent_path().empty() ? "." : path.parent_path();
}

// Instances take turns to read, edit and write the file, so no save falls
// between another's read and its write. The lock is the folder's (a lock
// file would be one more file in the user's folder). An instance that holds
// it for long (stopped in a debugger) delays the others by half a second
// at most; then they go ahead unlocked rather than freeze their window.
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& folder)
        : fd_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        constexpr int kTries = 50;
        for (int attempt = 0; fd_ >= 0 && attempt < kTries; ++attempt) {
            if (::flock(fd_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
                return;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock()
    {
        if (fd_ >= 0)
            ::close(fd_);
    }

private:
    int fd_;
};

// A key as the program spells it, for a name as the file spells it; a key
// the tuner does not know keeps the file's spelling.
std::string programSpelling(const std::string& name)
{
    const auto same = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b)); };
    for (const PreferenceDefault& d : kPreferenceDefaults)
        if (std::ranges::equal(d.key, name, same))
            return std::string(d.key);
    return name;
}

std::string unusableFileLine(const std::filesystem::path& path, const std::string& problem, std::string_view outcome)
{
    return "Preferences file " + path.string() + " is not usable (" + problem + "); " + std::string(outcome)
        + " and leaving the file as it is";
}

// Why the file cannot be our preference file, or an empty string.
std::string problemWithFile(const FileContents& file)
{
    return file.problem.empty() ? problemWithIniText(file.text) : file.problem;
}

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

const PreferenceRule* textRule(std::string_view key)
{
    const PreferenceRule* rule = preferenceRule(key);
    return rule && rule->type == PreferenceRule::Type::Text ? rule : nullptr;
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
    removeStaleTemporaries(path, kStaleTemporaryAge);
    FileContents file = readRegularFile(path, kLargestFileMiB);
    if (const std::string problem = problemWithFile(file); !problem.empty()) {
        console << unusableFileLine(path, problem, "running on defaults") << std::endl;
        return std::make_unique<MemoryPreferenceStore>();
    }
    return std::unique_ptr<PreferenceStore>(new IniPreferenceStore(path, std::move(file.text), console));
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
    checkKnownKeys();
}

IniPreferenceStore::~IniPreferenceStore()
{
    if (watch_ >= 0)
        ::close(watch_);
}

// The file's problems are told when it is read, not at the first use.
void IniPreferenceStore::checkKnownKeys() const
{
    for (const PreferenceDefault& d : kPreferenceDefaults)
        value(d.key);
    for (const PreferenceRule& rule : textPreferenceRules())
        stringForKey(rule.key);
}

std::optional<PreferenceValue> IniPreferenceStore::value(std::string_view key) const
{
    if (const auto known = read_.find(key); known != read_.end())
        return known->second;
    return read_.emplace(std::string(key), parse(key)).first->second;
}

std::optional<std::string_view> IniPreferenceStore::text(std::string_view key) const
{
    if (const auto unsaved = unsaved_.find(key); unsaved != unsaved_.end())
        return unsaved->second;
    return ini_.value(key);
}

std::optional<PreferenceValue> IniPreferenceStore::parse(std::string_view key) const
{
    const PreferenceRule* rule = preferenceRule(key);
    if (rule && rule->type == PreferenceRule::Type::Text)
        return std::nullopt; // read as text alone, and as 0 by the number accessors
    const auto text = this->text(key);
    if (!text)
        return rule ? std::optional(defaultValue(*rule)) : std::nullopt;
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
             << " is not usable (" << describeRule(rule) << " expected); using "
             << (rule.type == PreferenceRule::Type::Text ? "\"\"" : spelling(defaultValue(rule)))
             << " until the setting is changed" << std::endl;
}

bool IniPreferenceStore::hasValue(std::string_view key) const
{
    return text(key).has_value();
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

std::vector<std::string> IniPreferenceStore::takeOutsideChanges()
{
    // Every event only says "look again"; one look answers them all.
    alignas(inotify_event) char events[4096];
    bool notified = false;
    while (watch_ >= 0 && ::read(watch_, events, sizeof events) > 0)
        notified = true;
    if (notified) {
        const FolderLock lock(folderOf(linkTarget(path_)));
        reload();
    }
    std::vector<std::string> changed(outsideChanges_.begin(), outsideChanges_.end());
    outsideChanges_.clear();
    return changed;
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

std::string IniPreferenceStore::stringForKey(std::string_view key) const
{
    const auto text = this->text(key);
    if (!text)
        return {};
    if (const PreferenceRule* rule = textRule(key); rule && !acceptsText(*rule, *text)) {
        reportUnusable(*rule, *text);
        return {};
    }
    return std::string(*text);
}

// Text the file could not hold as one value (a line break) never reaches it.
void IniPreferenceStore::setString(std::string_view value, std::string_view key)
{
    if (const PreferenceRule* rule = textRule(key); rule && !acceptsText(*rule, value)) {
        console_ << "Preferences: " << key << "=" << forMessage(value) << " cannot be kept (" << describeRule(*rule)
                 << " expected)" << std::endl;
        return;
    }
    write(key, std::string(value));
}

void IniPreferenceStore::write(std::string_view key, std::string text)
{
    unsaved_.insert_or_assign(std::string(key), std::move(text));
    read_.clear();
    const FolderLock lock(folderOf(linkTarget(path_)));
    if (!reload())
        return;
    IniText edited = ini_;
    for (const auto& [name, value] : unsaved_)
        edited.set(name, value);
    if (const std::string problem = saveFile(path_, edited.text(), kNewFileMode); !problem.empty()) {
        if (!reportedWriteFailure_)
            console_ << "Preferences cannot be saved to " << path_.string() << " (" << problem
                     << "); changes apply until the program ends" << std::endl;
        reportedWriteFailure_ = true;
        return;
    }
    ini_ = std::move(edited);
    unsaved_.clear();
    read_.clear();
    watchFile();
}

bool IniPreferenceStore::reload()
{
    FileContents file = readRegularFile(path_, kLargestFileMiB);
    if (const std::string problem = problemWithFile(file); !problem.empty()) {
        if (problem != reportedFileProblem_)
            console_ << unusableFileLine(path_, problem, "keeping the settings read before") << std::endl;
        reportedFileProblem_ = problem;
        return false;
    }
    reportedFileProblem_.clear();
    adopt(IniText(std::move(file.text)));
    watchFile();
    return true;
}

void IniPreferenceStore::adopt(IniText disk)
{
    if (disk.text() == ini_.text())
        return;
    const auto before = ini_.entries();
    const auto after = disk.entries();
    for (const auto* side : {&before, &after})
        for (const auto& [key, entry] : *side) {
            const auto& other = side == &before ? after : before;
            if (const auto match = other.find(key); match == other.end() || match->second.value != entry.value)
                outsideChanges_.insert(programSpelling(entry.name));
        }
    ini_ = std::move(disk);
    read_.clear();
    checkKnownKeys();
}

// The folders of the path and of the file it leads to (a rename into place
// shows only there) and the file itself (written in place through another
// hard link, it changes without its folder knowing). Watching what is
// watched already changes nothing, so this runs after every read and save:
// a replaced file or a folder made by the first save is watched from then on.
int IniPreferenceStore::watchDescriptor() const
{
    if (watch_ < 0) {
        watch_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        watchFile();
    }
    return watch_;
}

void IniPreferenceStore::watchFile() const
{
    if (watch_ < 0)
        return;
    constexpr std::uint32_t kFolderEvents = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_CREATE | IN_DELETE;
    const std::filesystem::path target = linkTarget(path_);
    inotify_add_watch(watch_, folderOf(path_).c_str(), kFolderEvents);
    inotify_add_watch(watch_, folderOf(target).c_str(), kFolderEvents);
    inotify_add_watch(watch_, target.c_str(), IN_CLOSE_WRITE | IN_MODIFY);
}

} // namespace veltra
