#pragma once

#include "settings/PreferenceStore.h"

#include <string>

namespace veltra::cli {

class ArgReader;

// Turns "guitar,voice" into a store in which exactly those Sounds_ keys are
// on; an unknown name is a UsageError naming the option.
void enableSoundCategories(const std::string& option, const std::string& list, PreferenceStore& store);

// Reads --use-ml and --sounds LIST into the store (UseML and the Sounds_
// keys); true when the gate is on.
bool soundGateOptions(ArgReader& reader, PreferenceStore& store);

} // namespace veltra::cli
