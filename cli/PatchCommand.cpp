#include "Command.h"

#include "dsp/Patch.h"

#include <ostream>

namespace veltra::cli {

int runPatchCommand(const Args& args, std::ostream& out, std::ostream&)
{
    if (!ArgReader(args).positionals().empty())
        throw UsageError("patch takes no arguments");
    out << CommonUtils::patch << std::flush;
    return kExitOk;
}

} // namespace veltra::cli
