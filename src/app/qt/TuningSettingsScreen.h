#pragma once

#include "app/TuningSettingsController.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace veltra {

// The settings' tuning sections for QML: the tuning system, its tonic, the
// Scala import and the instrument key.
class TuningSettingsScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(TuningSettings)
    QML_UNCREATABLE("made by the application")

    Q_PROPERTY(QStringList texts READ texts NOTIFY changed)
    Q_PROPERTY(QStringList temperamentNames READ temperamentNames NOTIFY changed)
    Q_PROPERTY(QStringList tonicNames READ tonicNames CONSTANT)
    Q_PROPERTY(QStringList keyNames READ keyNames NOTIFY changed)
    Q_PROPERTY(QStringList spokenKeyNames READ spokenKeyNames NOTIFY changed)
    Q_PROPERTY(int temperament READ temperament NOTIFY changed)
    Q_PROPERTY(int tonic READ tonic NOTIFY changed)
    Q_PROPERTY(int transpose READ transpose NOTIFY changed)
    Q_PROPERTY(int keySegment READ keySegment NOTIFY changed)
    Q_PROPERTY(int temperamentCount READ temperamentCount NOTIFY changed)
    Q_PROPERTY(QString importProblem READ importProblem NOTIFY changed)

public:
    explicit TuningSettingsScreen(PreferenceStore& preferences, QObject* parent = nullptr);

    // The titles and footers, in this order: tuning system, tonic, import,
    // its path field, instrument key, transposition, the two footers.
    QStringList texts() const;
    QStringList temperamentNames() const;
    QStringList tonicNames() const;
    QStringList keyNames() const;
    QStringList spokenKeyNames() const;
    int temperament() const { return controller_.temperament(); }
    int tonic() const { return controller_.tonic(); }
    int transpose() const { return controller_.transpose(); }
    int keySegment() const { return controller_.keySegment(); }
    // The imported scale is offered once there is one.
    int temperamentCount() const;
    QString importProblem() const { return QString::fromStdString(controller_.importProblem()); }

    Q_INVOKABLE void load() { emit changed(); }
    Q_INVOKABLE void setTemperament(int index);
    Q_INVOKABLE void setTonic(int pitchClass);
    Q_INVOKABLE void setTranspose(int semitones);
    Q_INVOKABLE void setKeySegment(int segment);
    // A path, or a file: URL as a file chooser gives it.
    Q_INVOKABLE void importScala(const QString& file);

signals:
    void changed();

private:
    TuningSettingsController controller_;
};

} // namespace veltra
