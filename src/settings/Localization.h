#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace veltra {

// The words and numbers a person reads, in that person's language. The
// screens' logic writes English and numbers with a '.'; the window installs
// a localization for the user's language. Where none is installed (the
// command-line tool, the logic's tests) every text stays the English
// source text and every number keeps its '.'.
struct Localization {
    // The translation of an English source text in its context, or the text.
    std::function<std::string(const char* context, const char* text)> translate;
    // A number written with a '.' (and perhaps a sign), as the locale writes it.
    std::function<std::string(std::string_view number)> number;
};

// Replaces the localization for the whole program; an empty one restores
// the English texts.
void installLocalization(Localization localization);

std::string translate(const char* context, const char* text);
std::string localNumber(std::string_view number);

// The pattern with %1, %2 ... replaced by the values, in one pass, so a
// value that itself holds "%2" stays as it is. A translation may put the
// placeholders in any order.
std::string fillIn(std::string_view pattern, std::initializer_list<std::string_view> values);

} // namespace veltra

// Marks a text for translation where a table defines it; translate() gives
// it in the user's language where it is shown. The translation tools read
// it as Qt's QT_TRANSLATE_NOOP (make translations).
#define VELTRA_TEXT(context, text) text
