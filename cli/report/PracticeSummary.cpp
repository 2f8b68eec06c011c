#include "report/PracticeSummary.h"

#include "settings/Preferences.h"
#include "tuning/Note.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace veltra::report {

namespace {

constexpr int kSemitonesPerOctave = 12;
// Key 40 is middle C (C4); pitch classes count from C.
constexpr int kMiddleC = 40;

int pitchClassOf(int key)
{
    return ((key - kMiddleC) % kSemitonesPerOctave + kSemitonesPerOctave) % kSemitonesPerOctave;
}

// Readings and occurrences gathered for one note or pitch class.
struct Pool {
    int times = 0;
    double seconds = 0;
    std::vector<double> cents;

    void add(const Occurrence& o)
    {
        ++times;
        seconds += o.seconds();
        cents.insert(cents.end(), o.cents.begin(), o.cents.end());
    }
};

NoteFigures figuresOf(int key, std::string name, Pool& pool)
{
    NoteFigures f{key, std::move(name), pool.times, pool.seconds, pool.cents.size(), 0, 0, 0};
    if (pool.cents.empty())
        return f;
    std::sort(pool.cents.begin(), pool.cents.end());
    f.medianCents = quantile(pool.cents, 0.5);
    f.spreadCents = (quantile(pool.cents, kSpreadHighQuantile) - quantile(pool.cents, kSpreadLowQuantile)) / 2;
    const auto inTune = std::count_if(pool.cents.begin(), pool.cents.end(),
                                      [](double c) { return std::abs(c) <= kInTuneCents; });
    f.inTuneShare = static_cast<double>(inTune) / static_cast<double>(pool.cents.size());
    return f;
}

template <typename Name>
std::vector<NoteFigures> figuresOf(std::map<int, Pool>& pools, Name name)
{
    std::vector<NoteFigures> out;
    for (auto& [key, pool] : pools)
        out.push_back(figuresOf(key, name(key), pool));
    return out;
}

// Worst first: the largest deviation either way, then the lower note.
void sortByDeviation(std::vector<NoteFigures>& figures)
{
    std::stable_sort(figures.begin(), figures.end(), [](const NoteFigures& a, const NoteFigures& b) {
        return std::abs(a.medianCents) > std::abs(b.medianCents);
    });
}

double soundSeconds(const std::vector<TracePoint>& trace)
{
    // Each reading stands for the time since the one before it.
    double seconds = 0;
    for (std::size_t i = 1; i < trace.size(); ++i)
        if (!std::isnan(trace[i].noteNumber))
            seconds += trace[i].time - trace[i - 1].time;
    return seconds;
}

} // namespace

double quantile(const std::vector<double>& sorted, double q)
{
    if (sorted.empty())
        return 0;
    const double position = q * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(std::floor(position));
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    const double fraction = position - static_cast<double>(below);
    return sorted[below] + fraction * (sorted[above] - sorted[below]);
}

NoteNames::NoteNames(bool sharps)
{
    store_.setBool(sharps, PreferenceKey::SharpsOnly);
}

std::string NoteNames::note(int key) const
{
    const Note note = CommonUtils::noteForNumber(static_cast<float>(key), store_);
    return note.note + note.sharpFlat + note.octaveNumber;
}

std::string NoteNames::pitchClass(int pitchClass) const
{
    const Note note = CommonUtils::noteForNumber(static_cast<float>(kMiddleC + pitchClass), store_);
    return note.note + note.sharpFlat;
}

PracticeSummary summarize(const PracticeTrack& track, const NoteNames& names)
{
    std::map<int, Pool> notes, pitchClasses, brief;
    PracticeSummary summary;
    summary.soundSeconds = soundSeconds(track.trace);
    for (const Occurrence& o : track.occurrences) {
        summary.shownSeconds += o.seconds();
        if (o.seconds() < kBriefSeconds) {
            brief[o.key].add(o);
            continue;
        }
        notes[o.key].add(o);
        pitchClasses[pitchClassOf(o.key)].add(o);
    }
    summary.notes = figuresOf(notes, [&](int key) { return names.note(key); });
    summary.pitchClasses = figuresOf(pitchClasses, [&](int pc) { return names.pitchClass(pc); });
    for (auto& [key, pool] : brief)
        summary.brief.push_back({key, names.note(key), pool.times, pool.seconds, pool.cents.size(), 0, 0, 0});
    sortByDeviation(summary.notes);
    sortByDeviation(summary.pitchClasses);
    return summary;
}

} // namespace veltra::report
