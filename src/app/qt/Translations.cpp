#include "app/qt/Translations.h"

#include "settings/Localization.h"

#include <QCoreApplication>
#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
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

// The faces for Chinese and Japanese text, ones with a bold weight first
// (Debian's fonts-noto-cjk), then those without (fonts-wqy-microhei), which
// are emboldened only for bold text.
QStringList cjkFaces(const QString& language)
{
    if (language.startsWith(QLatin1String("ja")))
        return {QStringLiteral("Noto Sans CJK JP"), QStringLiteral("WenQuanYi Micro Hei")};
    if (language.startsWith(QLatin1String("zh")))
        return {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("WenQuanYi Micro Hei")};
    return {};
}

// A Chinese or Japanese desktop's own font is a CJK face, whose Latin
// letters and full-width ♯ and ♭ set a note name apart ("C ♯"): there the
// screens take DejaVu Sans (the face of the app's titles) for everything
// it draws and the installed CJK faces for the rest. Every other language
// keeps the desktop's font.
void useFontFor(const QString& language)
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return;
    static const QFont desktops = QGuiApplication::font();
    QFont font = desktops;
    const QStringList installed = QFontDatabase::families();
    QStringList faces;
    for (const QString& face : cjkFaces(language))
        if (installed.contains(face))
            faces << face;
    if (!faces.isEmpty()) {
        faces.prepend(QStringLiteral("DejaVu Sans"));
        font.setFamilies(faces);
    }
    QGuiApplication::setFont(font);
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
        useFontFor({});
        return QStringLiteral("en");
    }
    useFontFor(language);
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
