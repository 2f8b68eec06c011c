#include "app/qt/Translations.h"

#include "settings/Localization.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QTranslator>

#include <memory>

namespace veltra {

namespace {

// Where the build puts the compiled translations, in the program's resources.
const QString kResourceDirectory = QStringLiteral(":/i18n");

std::unique_ptr<QTranslator> gOurs;
std::unique_ptr<QTranslator> gQts;

void removeInstalled()
{
    for (std::unique_ptr<QTranslator>* translator : {&gOurs, &gQts}) {
        if (*translator)
            QCoreApplication::removeTranslator(translator->get());
        translator->reset();
    }
}

// The shipped language that serves a language of the user's list: its file
// exactly ("pt_BR"), else the language alone ("de" for "de_AT"), else the
// shipped one of that language and script ("zh_CN" for "zh_SG").
QString shippedFor(const QLocale& wanted)
{
    const QStringList shipped = Translations::shipped();
    const QString name = wanted.name(); // "de_AT", "zh_CN"
    if (shipped.contains(name))
        return name;
    const QString language = name.section(QLatin1Char('_'), 0, 0);
    if (shipped.contains(language))
        return language;
    for (const QString& candidate : shipped) {
        const QLocale locale(candidate);
        if (locale.language() == wanted.language() && locale.script() == wanted.script())
            return candidate;
    }
    return {};
}

} // namespace

QStringList Translations::shipped()
{
    QStringList names;
    for (const QString& file : QDir(kResourceDirectory).entryList({QStringLiteral("veltra_*.qm")}, QDir::Files))
        names << file.mid(7, file.size() - 7 - 3); // veltra_<name>.qm
    return names;
}

QString Translations::use(const QLocale& locale)
{
    removeInstalled();
    QString language;
    QLocale numbers(QLocale::English, QLocale::UnitedStates);
    for (const QString& tag : locale.uiLanguages()) {
        const QLocale wanted(tag);
        if (wanted.language() == QLocale::English)
            break;
        language = shippedFor(wanted);
        if (!language.isEmpty()) {
            numbers = wanted;
            break;
        }
    }
    auto ours = std::make_unique<QTranslator>();
    if (language.isEmpty() || !ours->load(QStringLiteral("veltra_") + language, kResourceDirectory)) {
        QLocale::setDefault(numbers);
        installLocalization({});
        return QStringLiteral("en");
    }
    gOurs = std::move(ours);
    QCoreApplication::installTranslator(gOurs.get());
    // Qt's own texts, where Debian's translations of Qt are installed.
    auto qts = std::make_unique<QTranslator>();
    if (qts->load(QStringLiteral("qt_") + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        gQts = std::move(qts);
        QCoreApplication::installTranslator(gQts.get());
    }
    QLocale::setDefault(numbers);
    installLocalization({
        .translate = [](const char* context, const char* text) {
            return QCoreApplication::translate(context, text).toStdString();
        },
        .number = [](std::string_view number) {
            return QString::fromUtf8(number.data(), static_cast<qsizetype>(number.size()))
                .replace(QLatin1Char('.'), QLocale().decimalPoint())
                .toStdString();
        },
    });
    return language;
}

} // namespace veltra
