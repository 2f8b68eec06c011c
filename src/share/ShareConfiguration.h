#pragma once

#include "AppId.h"

// Where the menu's entries lead. Change them here, and only here.
namespace veltra::ShareConfiguration {

// The software centre's page of the app, where users rate and review it.
inline constexpr const char* kRateAddress = "appstream:" VELTRA_APP_ID;
// The maker's page listing its other apps.
inline constexpr const char* kMoreAppsAddress = "https://veltra.app/apps";
// The short link that the share text carries.
inline constexpr const char* kShareLink = "https://veltra.app";
// The maker's social-media handle, named in the share text.
inline constexpr const char* kSocialHandle = "@veltratuner";
inline constexpr const char* kSupportAddress = "support@veltra.app";

} // namespace veltra::ShareConfiguration
