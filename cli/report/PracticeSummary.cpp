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

template <typename Pool>
NoteFigures figuresOf(int key, std::string name, const Pool& pool)
{
    NoteFigures f{key, std::move(name), pool.times, pool.seconds, pool.cents.size(), 0, 0, 0};
    if (pool.cents.size() == 0)
        return f;
    f.medianCents = pool.cents.quantile(0.5);
    f.spreadCents = (pool.cents.quantile(kSpreadHighQuantile) - pool.cents.quantile(kSpreadLowQuantile)) / 2;
    f.inTuneShare = static_cast<double>(pool.cents.countWithin(kInTuneCents)) / static_cast<double>(pool.cents.size());
    return f;
}

template <typename Pools, typename Name>
std::vector<NoteFigures> figuresOf(const Pools& pools, Name name)
{
    std::vector<NoteFigures> out;
    for (const auto& [key, pool] : pools)
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

} // namespace

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

void SummaryBuilder::add(const Occurrence& o, const CentsDistribution& cents)
{
    shownSeconds_ += o.seconds();
    const auto gather = [&](Pool& pool) {
        ++pool.times;
        pool.seconds += o.seconds();
        pool.cents.merge(cents);
    };
    if (o.seconds() < kBriefSeconds) {
        gather(brief_[o.key]);
        return;
    }
    gather(notes_[o.key]);
    gather(pitchClasses_[pitchClassOf(o.key)]);
}

PracticeSummary SummaryBuilder::finish(double soundSeconds, const NoteNames& names) const
{
    PracticeSummary summary;
    summary.soundSeconds = soundSeconds;
    summary.shownSeconds = shownSeconds_;
    summary.notes = figuresOf(notes_, [&](int key) { return names.note(key); });
    summary.pitchClasses = figuresOf(pitchClasses_, [&](int pc) { return names.pitchClass(pc); });
    for (const auto& [key, pool] : brief_)
        summary.brief.push_back({key, names.note(key), pool.times, pool.seconds, pool.cents.size(), 0, 0, 0});
    sortByDeviation(summary.notes);
    sortByDeviation(summary.pitchClasses);
    return summary;
}

} // namespace veltra::report
