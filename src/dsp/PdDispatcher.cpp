#include "dsp/PdDispatcher.h"

#include "dsp/PdBase.h"


namespace veltra {

PdDispatcher::PdDispatcher(PdBase& base, std::ostream& diagnostics)
    : base_(base)
    , diagnostics_(diagnostics)
{
}

void PdDispatcher::addListener(PdListener* listener, const std::string& source)
{
    auto [it, isNew] = listeners_.try_emplace(source);
    if (isNew)
        base_.subscribe(source);
    it->second.push_back(listener);
}

void PdDispatcher::receiveFloat(float value, const std::string& source)
{
    const auto it = listeners_.find(source);
    if (it == listeners_.end())
        return;
    // A listener may unregister itself while being called.
    const std::vector<PdListener*> snapshot = it->second;
    for (PdListener* listener : snapshot)
        listener->receiveFloat(value, source);
}

void PdDispatcher::receivePrint(const std::string& message)
{
    // Pd announces itself and its objects on start; only its errors matter here.
    if (message.starts_with("error"))
        diagnostics_ << "pd: " << message << '\n';
}

} // namespace veltra
