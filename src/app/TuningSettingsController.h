#pragma once

#include "settings/Localization.h"
#include "settings/PreferenceStore.h"

#include <filesystem>
#include <string>
#include <vector>

namespace veltra {

// The settings' tuning sections as logic: the tuning system with its tonic
// and an imported Scala scale, and the instrument's key. Every choice is
// written to the preferences at once; the readout, the graph, the keyboard
// and the tone buttons read them with their next reading or press.
class TuningSettingsController {
public:
    explicit TuningSettingsController(PreferenceStore& preferences);

    // The choices as the controls show them.
    int temperament() const;
    int tonic() const;
    int transpose() const;
    // The instrument key's segment: C, B flat, E flat or F, or -1 for
    // another transposition.
    int keySegment() const;
    // Whether a scale has been imported, so that it may be chosen again.
    bool hasImportedScale() const;
    // The line about the last import that failed; empty otherwise.
    const std::string& importProblem() const { return importProblem_; }

    void setTemperament(int index);
    void setTonic(int pitchClass);
    void setTranspose(int semitones);
    void setKeySegment(int segment);
    // Reads a Scala file and, when the tuner can use it, makes it the tuning
    // system; otherwise keeps every choice and says why in importProblem().
    void importScala(const std::filesystem::path& file);

    // The names in the user's language.
    static std::vector<std::string> temperamentNames();
    static std::vector<std::string> tonicNames();
    static std::vector<std::string> keyNames();
    // The same as a screen reader says them: "B flat" rather than "B♭".
    static std::vector<std::string> spokenKeyNames();
    static std::string tuningFooter();
    static std::string keyFooter();

    static constexpr const char* kTuningTitle = VELTRA_TEXT("TuningSettings", "Tuning System");
    static constexpr const char* kTonicTitle = VELTRA_TEXT("TuningSettings", "Tonic");
    static constexpr const char* kImportTitle = VELTRA_TEXT("TuningSettings", "Import Scala File\u2026");
    static constexpr const char* kKeyTitle = VELTRA_TEXT("TuningSettings", "Instrument Key");
    static constexpr const char* kTransposeTitle = VELTRA_TEXT("TuningSettings", "Transposition");

private:
    PreferenceStore& preferences_;
    std::string importProblem_;
};

} // namespace veltra
