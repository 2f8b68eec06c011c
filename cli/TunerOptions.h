#pragma once

#include "Command.h"

#include "settings/MemoryPreferenceStore.h"

namespace veltra::cli {

// The preferences of a command's run: the first-launch defaults, with the
// reference A (--a4 HZ, 400 to 499), flat names (--flats), the tuning
// system (--temperament NAME or --scala FILE, on --tonic NOTE) and the
// instrument key (--transpose KEY) as asked.
MemoryPreferenceStore tunerPreferences(ArgReader& reader);

} // namespace veltra::cli
