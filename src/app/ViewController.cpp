#include "app/ViewController.h"

#include "dsp/AudioSession.h"
#include "dsp/Patch.h"
#include "dsp/PatchFile.h"
#include "settings/NotificationCenter.h"
#include "settings/Preferences.h"

namespace veltra {

ViewController::ViewController(Dependencies dependencies)
    : d_(std::move(dependencies))
{
}

ViewController::~ViewController()
{
    // The patch stays open for the life of the process; the subscriptions
    // must not call into a screen that is gone.
    if (updateUIObserver_)
        d_.notifications.removeObserver(updateUIObserver_);
    if (dispatcher_)
        dispatcher_->removeListener(this, kFrequencySource);
}

void ViewController::viewDidLoad()
{
    CommonUtils::setDefaultPreferences(d_.preferences);
    title_ = kTitle;

    d_.audioSession.requestRecordPermission([this](bool granted) {
        d_.console << (granted ? "Record permission granted." : "Record permission denied.") << std::endl;
        d_.mainQueue([this, granted] {
            if (granted) {
                accessoryImage_ = "gearshape.fill";
            } else {
                accessoryImage_ = "mic.slash.fill";
                accessoryEnabled_ = true;
            }
            notifyChanged();
        });
    });

    if (const auto error = d_.audioSession.setPreferredIOBufferDuration(kPreferredIOBufferDuration))
        d_.console << *error << std::endl;

    dispatcher_ = std::make_unique<PdDispatcher>(d_.pdBase, d_.diagnostics);
    dispatcher_->addListener(this, kFrequencySource);
    d_.pdBase.setDelegate(dispatcher_.get());

    openPatch();

    updateUIObserver_ = d_.notifications.addObserver(Notification::UpdateUI, [this](const void*) {
        // The display preferences are re-applied by the readout.
    });
    notifyChanged();
}

void ViewController::openPatch()
{
    // A new file on every load; old ones are left to the cache's owner.
    const std::string name = makeUuidString();
    const std::filesystem::path directory = d_.cachesDirectory.value_or(std::filesystem::path());
    patchFilePath_ = directory / name;
    if (writeFileAtomically(patchFilePath_, std::string(CommonUtils::patch)))
        patch_ = d_.pdBase.openFile(name, directory.string());
    d_.console << (patch_ ? "Patch opened" : "Failed to open patch!") << std::endl;
}

void ViewController::accessoryTapped()
{
    d_.audioSession.requestRecordPermission([this](bool granted) {
        d_.mainQueue([this, granted] {
            if (granted) {
                if (pushSettings_)
                    pushSettings_();
            } else if (presentAlert_) {
                presentAlert_({"Microphone Access Required",
                               "This app requires access to the microphone to work. Go to Settings -> Privacy -> "
                               "Microphone and enable Veltra to give access.",
                               "Dismiss"});
            }
        });
    });
}

void ViewController::receiveFloat(float, const std::string&)
{
}

void ViewController::notifyChanged()
{
    if (changed_)
        changed_();
}

} // namespace veltra
