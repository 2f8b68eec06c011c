#pragma once

#include "app/InputChoiceController.h"
#include "app/ReferenceCapture.h"

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace veltra {

// The settings' choice of sound input for QML.
class InputSettingsScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(InputSettings)
    QML_UNCREATABLE("made by the application")

    Q_PROPERTY(QStringList rows READ rows NOTIFY changed)
    Q_PROPERTY(int selectedRow READ selectedRow NOTIFY changed)
    Q_PROPERTY(QString footer READ footer CONSTANT)

public:
    InputSettingsScreen(InputChoiceController& inputs, QObject* parent = nullptr);

    QStringList rows() const;
    int selectedRow() const { return inputs_.selectedRow(); }
    QString footer() const;

    Q_INVOKABLE void load();
    Q_INVOKABLE void select(int row);

signals:
    void changed();

private:
    InputChoiceController& inputs_;
};

// The reference picker's "listen for an A" for QML.
class HeardReferenceScreen : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(HeardReference)
    QML_UNCREATABLE("made by the application")

    Q_PROPERTY(bool listening READ listening NOTIFY changed)
    Q_PROPERTY(QString message READ message NOTIFY changed)

public:
    // hear: puts the capture among the patch's listeners, once the patch is open.
    HeardReferenceScreen(ReferenceCapture& capture, std::function<void()> hear, QObject* parent = nullptr);

    bool listening() const { return capture_.listening(); }
    QString message() const { return QString::fromStdString(capture_.message()); }

    Q_INVOKABLE void start();
    Q_INVOKABLE void cancel() { capture_.cancel(); }

signals:
    void changed();

private:
    ReferenceCapture& capture_;
    std::function<void()> hear_;
};

} // namespace veltra
