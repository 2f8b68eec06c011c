#pragma once

#include <QLocale>
#include <QString>
#include <QStringList>

namespace veltra {

// The app in the user's language: our own translations (built from
// translations/*.ts into the program), Qt's for its controls and dialogs,
// and the screens' logic's texts and numbers (settings/Localization.h).
// English is the source language and needs no translation.
class Translations {
public:
    // Every language the app ships, as its translation files are named.
    static QStringList shipped();

    // Installs the first of the locale's languages (QLocale::uiLanguages:
    // LANGUAGE, then LC_ALL, LC_MESSAGES and LANG for the system's locale)
    // that the app ships; English where an English one comes first or none
    // is shipped. Numbers a person reads follow the language installed: a
    // decimal comma in German, a point in English, as they always were.
    // Returns the language installed ("de", "pt_BR"), or "en". Call it
    // before the screens are made; a later call replaces it.
    static QString use(const QLocale& locale);
};

} // namespace veltra
