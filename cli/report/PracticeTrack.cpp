#include "report/PracticeTrack.h"

#include "settings/Preferences.h"
#include "tuning/Note.h"

#include <cmath>
#include <limits>

namespace veltra::report {

namespace {

constexpr double kCentsPerSemitone = 100.0;

std::string fullName(const Note& note)
{
    return note.note + note.sharpFlat + note.octaveNumber;
}

} // namespace

ReadoutFollower::ReadoutFollower(const PreferenceStore& preferences)
    : preferences_(preferences)
{
}

void ReadoutFollower::reading(double time, std::optional<float> frequency, const std::string& shownNote)
{
    if (!frequency) {
        track_.trace.push_back({time, std::numeric_limits<float>::quiet_NaN()});
        if (!silentSince_)
            silentSince_ = time;
        if (time - *silentSince_ >= kSilenceGap)
            close(*silentSince_);
        return;
    }
    silentSince_.reset();
    const float x = noteNumberForFrequency(*frequency, preferences_.integerForKey(PreferenceKey::A4));
    track_.trace.push_back({time, x});
    if (current_ && currentName_ != shownNote)
        close(time);
    if (x <= 0)
        return; // below the lowest key: nothing a label can name
    const std::string readingNote = fullName(CommonUtils::noteForNumber(x, preferences_));
    if (readingNote != shownNote)
        return;
    const auto key = roundHalfAwayFromZero(x);
    if (!current_) {
        current_ = Occurrence{static_cast<int>(key), time, time, {}};
        currentName_ = shownNote;
    }
    current_->cents.push_back(kCentsPerSemitone * (static_cast<double>(x) - static_cast<double>(key)));
}

PracticeTrack ReadoutFollower::finish(double seconds)
{
    close(silentSince_.value_or(seconds));
    track_.seconds = seconds;
    return std::move(track_);
}

void ReadoutFollower::close(double time)
{
    if (!current_)
        return;
    current_->end = time;
    track_.occurrences.push_back(std::move(*current_));
    current_.reset();
}

} // namespace veltra::report
