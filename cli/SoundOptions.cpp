#include "SoundOptions.h"

#include "Command.h"
#include "classify/SoundCategories.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace veltra::cli {

namespace {

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

} // namespace

void enableSoundCategories(const std::string& option, const std::string& list, PreferenceStore& store)
{
    for (const SoundCategory& category : kSoundCategories)
        store.setBool(false, category.key);
    std::stringstream items(list);
    for (std::string item; std::getline(items, item, ',');) {
        const auto match = std::find_if(kSoundCategories.begin(), kSoundCategories.end(),
                                        [&](const SoundCategory& c) { return lower(std::string(c.title)) == lower(item); });
        if (match == kSoundCategories.end())
            throw UsageError(option + ": unknown sound category '" + item + "' (use guitar, violin, piano, voice)");
        store.setBool(true, match->key);
    }
}

bool soundGateOptions(ArgReader& reader, PreferenceStore& store)
{
    const bool useML = reader.flag("--use-ml");
    const auto sounds = reader.option("--sounds");
    if (sounds && !useML)
        throw UsageError("--sounds goes with --use-ml");
    store.setBool(useML, PreferenceKey::UseML);
    if (sounds)
        enableSoundCategories("--sounds", *sounds, store);
    return useML;
}

} // namespace veltra::cli
