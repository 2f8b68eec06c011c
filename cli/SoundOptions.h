#pragma once

#include "settings/PreferenceStore.h"

#include <string>

namespace veltra::cli {

// Turns "guitar,voice" into a store in which exactly those Sounds_ keys are
// on; an unknown name is a UsageError naming the option.
void enableSoundCategories(const std::string& option, const std::string& list, PreferenceStore& store);

} // namespace veltra::cli
