#include "app/qt/QSettingsPreferenceStore.h"

#include "settings/MemoryPreferenceStore.h"
#include "settings/PreferenceRules.h"

#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringDecoder>

#include <algorithm>
#include <cmath>

namespace veltra {

namespace {

QString keyString(std::string_view key)
{
    return QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size()));
}

// Qt's INI reader accepts almost anything and would rewrite the file from
// what it understood; a file that is not plainly "[section]" and
// "key=value" lines in UTF-8 is treated as someone else's and not touched.
QString problemWithIniFile(const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("it cannot be read");
    const QByteArray bytes = file.readAll();
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(bytes);
    if (decoder.hasError() || bytes.contains('\0'))
        return QStringLiteral("it is not a text file");
    static const QRegularExpression line(QStringLiteral(R"(^\s*(|[;#].*|\[[^\]]*\]|[^=\[]+=.*)\s*$)"));
    const auto lines = text.split(u'\n');
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (!line.match(lines[i]).hasMatch())
            return QStringLiteral("line %1 is not a setting").arg(i + 1);
    return {};
}

// A value as the file spells it. Qt reads "a, b" as a list and "@..." as a
// typed value; neither is what any rule accepts, so their spelling only
// needs to be recognisable in the message.
std::string spelling(const QVariant& value)
{
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QStringLiteral(", ")).toStdString();
    if (value.canConvert<QString>())
        return value.toString().toStdString();
    return std::string("@") + (value.isValid() ? value.typeName() : "Variant");
}

// The text of a value made fit for one line of a message.
std::string forMessage(const std::string& text)
{
    // Longer values are cut: enough to recognise the line in the file.
    constexpr std::size_t kShownCharacters = 40;
    std::string shown = text.substr(0, kShownCharacters);
    std::replace_if(shown.begin(), shown.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return text.size() > kShownCharacters ? shown + "..." : shown;
}

QVariant toVariant(const PreferenceValue& value)
{
    return std::visit([](auto v) { return QVariant::fromValue(v); }, value);
}

} // namespace

std::unique_ptr<PreferenceStore> QSettingsPreferenceStore::open(const QString& path, std::ostream& console)
{
    if (const QString problem = problemWithIniFile(path); !problem.isEmpty()) {
        console << "Preferences file " << path.toStdString() << " is not usable (" << problem.toStdString()
                << "); running on defaults and leaving the file as it is" << std::endl;
        return std::make_unique<MemoryPreferenceStore>();
    }
    return std::unique_ptr<PreferenceStore>(new QSettingsPreferenceStore(path, console));
}

QString QSettingsPreferenceStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/veltra/veltra.ini");
}

QSettingsPreferenceStore::QSettingsPreferenceStore(const QString& path, std::ostream& console)
    : settings_(path, QSettings::IniFormat)
    , console_(console)
{
    // Every change goes to a new file that then replaces the old one, so a
    // crash or power cut mid-write leaves the previous file whole.
    settings_.setAtomicSyncRequired(true);
    // The file's problems are told at start-up, not at the first use.
    for (const PreferenceDefault& d : kPreferenceDefaults)
        usableValue(d.key);
}

QVariant QSettingsPreferenceStore::usableValue(std::string_view key) const
{
    QVariant value = settings_.value(keyString(key));
    const PreferenceRule* rule = preferenceRule(key);
    // A key that is there but whose "@..." value Qt could not load reads as
    // invalid, like a missing key: it is checked all the same.
    if (!rule || !settings_.contains(keyString(key)))
        return value;
    const std::string text = spelling(value);
    if (parsePreference(*rule, text))
        return value;
    reportUnusable(*rule, text);
    return toVariant(defaultValue(*rule));
}

void QSettingsPreferenceStore::reportUnusable(const PreferenceRule& rule, const std::string& text) const
{
    if (!reportedValues_.emplace(std::string(rule.key), text).second)
        return;
    const QVariant fallback = toVariant(defaultValue(rule));
    console_ << "Preferences file " << settings_.fileName().toStdString() << ": " << rule.key << "="
             << forMessage(text) << " is not usable (" << describeRule(rule) << " expected); using "
             << fallback.toString().toStdString()
             << " until the setting is changed" << std::endl;
}

bool QSettingsPreferenceStore::hasValue(std::string_view key) const
{
    return settings_.contains(keyString(key));
}

bool QSettingsPreferenceStore::boolForKey(std::string_view key) const
{
    const QVariant v = usableValue(key);
    if (!v.isValid())
        return false;
    bool isNumber = false;
    const double number = v.toDouble(&isNumber);
    return isNumber ? number != 0.0 : v.toBool();
}

std::int64_t QSettingsPreferenceStore::integerForKey(std::string_view key) const
{
    const double value = doubleForKey(key);
    // A value the integer range cannot hold reads as 0, like a missing key.
    return std::isfinite(value) && std::fabs(value) < 9.2e18 ? static_cast<std::int64_t>(value) : 0;
}

float QSettingsPreferenceStore::floatForKey(std::string_view key) const
{
    return static_cast<float>(doubleForKey(key));
}

double QSettingsPreferenceStore::doubleForKey(std::string_view key) const
{
    const QVariant v = usableValue(key);
    if (!v.isValid())
        return 0.0;
    bool isNumber = false;
    const double number = v.toDouble(&isNumber);
    if (isNumber)
        return number;
    return v.toBool() ? 1.0 : 0.0; // "true" / "false"
}

void QSettingsPreferenceStore::setBool(bool value, std::string_view key)
{
    write(key, value);
}

void QSettingsPreferenceStore::setInteger(std::int64_t value, std::string_view key)
{
    write(key, QVariant::fromValue<qlonglong>(value));
}

void QSettingsPreferenceStore::setFloat(float value, std::string_view key)
{
    // Written with float precision so that 4.5 or 0.1f read back as set.
    write(key, QString::number(static_cast<double>(value), 'g', 9));
}

void QSettingsPreferenceStore::setDouble(double value, std::string_view key)
{
    write(key, QString::number(value, 'g', 17));
}

void QSettingsPreferenceStore::write(std::string_view key, const QVariant& value)
{
    settings_.setValue(keyString(key), value);
    settings_.sync();
    if (settings_.status() != QSettings::NoError && !reportedWriteFailure_) {
        reportedWriteFailure_ = true;
        console_ << "Preferences cannot be saved to " << settings_.fileName().toStdString()
                 << "; changes apply until the program ends" << std::endl;
    }
}

} // namespace veltra
