pragma ComponentBehavior: Bound
import QtQuick
import QtQuick.Controls
import QtQuick.Layouts
import VeltraUi

// Every choice of the tuner, one per section, each explained below it.
Page {
    id: page
    objectName: "settingsPage"
    title: Screens.settings.title
    background: Rectangle { color: Theme.background }

    readonly property var settings: Screens.settings
    function footerText(section: int): string { return page.settings.footers[section] ?? "" }

    Component.onCompleted: {
        settings.load()
        settings.layout(Tuner.pad)
    }
    StackView.onActivated: settings.layout(Tuner.pad)
    onWidthChanged: settings.layout(Tuner.pad)

    FocusScrollView {
        id: scroll
        anchors.fill: parent

        ColumnLayout {
            width: Math.min(scroll.availableWidth - 24, Theme.listWidth)
            x: (scroll.availableWidth - width) / 2
            spacing: 4

            Item { Layout.preferredHeight: 12 }

            SettingsSection {
                footer: page.footerText(0)
                LinkRow {
                    objectName: "referenceFrequency"
                    text: qsTr("Reference A\u2084")
                    value: page.settings.frequency
                    onClicked: Screens.navigation.push("FrequencyPicker")
                }
            }
            SettingsSection {
                footer: page.footerText(1)
                SwitchRow {
                    objectName: "toneGenerator"
                    text: qsTr("Tone Generator")
                    on: page.settings.toneGenerator
                    onToggled: (on) => page.settings.setSwitch(1, on)
                }
            }
            SettingsSection {
                footer: page.footerText(2)
                SwitchRow {
                    objectName: "greenOverlay"
                    text: qsTr("Green Overlay")
                    on: page.settings.greenOverlay
                    onToggled: (on) => page.settings.setSwitch(2, on)
                }
            }
            SettingsSection {
                footer: page.footerText(3)
                SwitchRow {
                    objectName: "sharpsOnly"
                    text: qsTr("Sharps Only")
                    on: page.settings.sharpsOnly
                    onToggled: (on) => page.settings.setSwitch(3, on)
                }
            }
            SettingsSection {
                footer: page.footerText(4)
                SwitchRow {
                    objectName: "continuousDisplay"
                    text: qsTr("Continuous Display")
                    on: page.settings.continuousDisplay
                    onToggled: (on) => page.settings.setSwitch(4, on)
                }
            }
            SettingsSection {
                footer: page.footerText(5)
                ColumnLayout {
                    Layout.fillWidth: true
                    Layout.margins: 14
                    spacing: 8
                    Label {
                        text: qsTr("In-Tune Bar")
                        color: Theme.text
                        font.pixelSize: 16
                    }
                    SegmentedControl {
                        objectName: "centerBarWidth"
                        Layout.fillWidth: true
                        segments: [qsTr("Wide \u00B115\u00A2"), qsTr("Medium \u00B110\u00A2"), qsTr("Narrow \u00B15\u00A2")]
                        accessibleNames: [qsTr("Wide, 15 cents either side"), qsTr("Medium, 10 cents either side"),
                                          qsTr("Narrow, 5 cents either side")]
                        currentIndex: page.settings.centerBarWidth
                        onSelected: (index) => page.settings.setCenterBarWidth(index)
                    }
                }
            }
            SettingsSection {
                footer: page.footerText(6)
                SliderRow {
                    objectName: "latency"
                    title: qsTr("Latency")
                    // One step is one more redraw (1/60 s) that a note must win.
                    //: A time in seconds, as "0.25 s".
                    valueText: qsTr("%1 s").arg(Number(value / 60).toLocaleString(Qt.locale(), "f", 2))
                    fromText: qsTr("Fast")
                    toText: qsTr("Steady")
                    from: page.settings.latencyMinimum
                    to: page.settings.latencyMaximum
                    stepSize: 1
                    value: page.settings.latency
                    onMoved: (value) => page.settings.setLatency(value)
                }
            }
            SettingsSection {
                footer: page.footerText(7)
                SwitchRow {
                    objectName: "pianoView"
                    text: qsTr("Piano Keyboard")
                    on: page.settings.pianoView
                    onToggled: (on) => page.settings.setSwitch(7, on)
                }
            }
            SettingsSection {
                footer: page.footerText(8)
                SliderRow {
                    objectName: "lineThickness"
                    title: qsTr("Line Thickness")
                    valueText: value.toFixed(0)
                    fromText: qsTr("Thin")
                    toText: qsTr("Bold")
                    from: page.settings.lineThicknessMinimum
                    to: page.settings.lineThicknessMaximum
                    stepSize: 1
                    value: page.settings.lineThickness
                    onMoved: (value) => page.settings.setLineThickness(value)
                }
                Item {
                    Layout.fillWidth: true
                    Layout.preferredHeight: 28
                    Rectangle {
                        objectName: "thicknessPreview"
                        anchors.verticalCenter: parent.verticalCenter
                        x: 14
                        width: parent.width - 28
                        height: page.settings.previewHeight
                        radius: height / 2
                        color: Theme.text
                        Accessible.ignored: true
                    }
                }
            }
            SettingsSection {
                footer: page.footerText(9)
                SwitchRow {
                    objectName: "clock"
                    text: qsTr("Clock")
                    on: page.settings.showClock
                    onToggled: (on) => page.settings.setSwitch(9, on)
                }
            }
            SettingsSection {
                visible: page.settings.sectionCount > 10
                footer: page.footerText(10)
                SwitchRow {
                    objectName: "soundClassification"
                    text: qsTr("Sound Classification")
                    on: page.settings.useML
                    onToggled: (on) => page.settings.setSwitch(10, on)
                }
                LinkRow {
                    objectName: "selectSounds"
                    visible: page.settings.soundRowCount > 1
                    text: qsTr("Select Sounds")
                    onClicked: Screens.navigation.push("SelectSounds")
                }
            }
            TuningSections {}
            InputSection {}
        }
    }
}
