#pragma once

#include "dsp/PdListener.h"

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace veltra {

class PdBase;

// Routes the patch's sends to the listeners registered for each source name.
// Pd's own printed lines go to the diagnostics stream (standard error), so
// the program's console lines stay as they are.
class PdDispatcher : public PdReceiverDelegate {
public:
    explicit PdDispatcher(PdBase& base, std::ostream& diagnostics);

    // Subscribes to the source in the patch on first use of the name.
    void addListener(PdListener* listener, const std::string& source);

    void receiveFloat(float value, const std::string& source) override;
    void receivePrint(const std::string& message) override;

private:
    PdBase& base_;
    std::ostream& diagnostics_;
    std::map<std::string, std::vector<PdListener*>, std::less<>> listeners_;
};

} // namespace veltra
