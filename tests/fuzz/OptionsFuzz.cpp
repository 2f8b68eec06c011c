// The option parser on any command line: the input's NUL-separated pieces
// are the arguments, and every command's options from the help table are
// read from them as the commands read theirs, the operands as tone's note
// names. A bad command line must be a UsageError, never a crash or another
// exception.
#include "Command.h"
#include "Help.h"
#include "NoteName.h"
#include "SoundOptions.h"
#include "TunerOptions.h"

#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace veltra::cli;
    Args args;
    std::string piece;
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == 0) {
            args.push_back(piece);
            piece.clear();
        } else {
            piece += static_cast<char>(data[i]);
        }
    }
    args.push_back(piece);
    for (const CommandHelp& command : commandHelp()) {
        (void)commandUsage(command);
        try {
            ArgReader reader(args);
            veltra::MemoryPreferenceStore preferences = tunerPreferences(reader);
            (void)soundGateOptions(reader, preferences);
            for (const OptionHelp& option : command.options) {
                const std::string name(option.name);
                if (option.value.empty())
                    (void)reader.flag(name);
                else
                    (void)reader.numberOption(name, 0, 1e6);
            }
            for (const std::string& operand : reader.positionals())
                (void)parseNoteName(operand).midiNote(4);
        } catch (const UsageError&) {
            // What a bad command line must come to.
        }
    }
    return 0;
}
