#include "app/ReferenceCapture.h"

#include "settings/Localization.h"
#include "settings/Preferences.h"

#include <cmath>
#include <cstdio>

namespace veltra {

namespace {

// The number as a person reads it: whole hertz, cents to one decimal.
std::string number(double value, const char* format)
{
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return localNumber(text);
}

} // namespace

ReferenceCapture::ReferenceCapture(PreferenceStore& preferences)
    : preferences_(preferences)
{
}

void ReferenceCapture::start()
{
    heard_.start(static_cast<int>(preferences_.integerForKey(PreferenceKey::A4)));
    message_ = translate("ReferenceCapture", "Play an A and hold it for a second.");
    if (changed_)
        changed_();
}

void ReferenceCapture::cancel()
{
    if (!listening())
        return;
    heard_.cancel();
    message_.clear();
    if (changed_)
        changed_();
}

void ReferenceCapture::receiveFloat(float value, const std::string& source)
{
    if (source != "frequency")
        return;
    if (const auto result = heard_.addReading(value))
        finish(*result);
}

void ReferenceCapture::finish(const HeardReference::Result& result)
{
    using Outcome = HeardReference::Outcome;
    switch (result.outcome) {
    case Outcome::Set:
        preferences_.setInteger(result.a4, PreferenceKey::A4);
        //: %1 the new reference in whole hertz ("441").
        message_ = fillIn(translate("ReferenceCapture", "Reference A set to %1 Hz."), {number(result.a4, "%.0f")});
        break;
    case Outcome::OutOfRange:
        //: %1 the A heard, in whole hertz ("510"); the reference is kept between 400 and 499 Hz.
        message_ = fillIn(translate("ReferenceCapture", "The A heard is %1 Hz, outside 400 to 499 Hz: the reference stays."),
                          {number(result.a4, "%.0f")});
        break;
    case Outcome::NotAnA:
        //: %1 how far the steady note was from the nearest A, in cents ("98.0").
        message_ = fillIn(translate("ReferenceCapture", "That note is %1 cents from an A. Play an A and try again."),
                          {number(std::fabs(result.cents), "%.1f")});
        break;
    case Outcome::NothingHeard:
        message_ = translate("ReferenceCapture", "No steady A heard. Play an A and hold it for a second.");
        break;
    }
    if (changed_)
        changed_();
}

} // namespace veltra
