#include "Help.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace veltra::cli {

namespace {

// The options that the commands showing the tuner's readout share.
const OptionHelp kA4{"--a4", "HZ", "reference A, 400 to 499 (default 440)"};
const OptionHelp kFlats{"--flats", "", "name B flat, E flat and A flat instead of sharps"};
const OptionHelp kTemperament{
    "--temperament", "NAME",
    "the tuning system: equal (default), pythagorean, quarter-comma-meantone, sixth-comma-meantone, "
    "werckmeister-iii, kirnberger-iii, vallotti, young, just; the reference A stays in tune in each"};
const OptionHelp kScala{"--scala", "FILE",
                        "the tuning system of a Scala file (.scl) of 12 notes repeating at the octave",
                        Completion::Files};
const OptionHelp kTonic{"--tonic", "NOTE", "the note the tuning system starts from, C to B (default C)"};
const OptionHelp kTranspose{"--transpose", "KEY",
                            "name written notes for an instrument in C (default), Bb, Eb (alto saxophone) or F "
                            "(horn), or any key as the semitones its written C sounds from concert C, -12 to 12"};
const OptionHelp kUseMl{"--use-ml", "",
                        "show pitch only while the sound classifier hears an accepted sound, as the app's gate does"};
const OptionHelp kSounds{
    "--sounds", "LIST",
    "the accepted sounds for --use-ml, a comma-separated list of guitar, violin, piano, voice (default guitar)",
    Completion::Sounds};

// Terminal layout of the help texts: names in a column this wide, the
// descriptions beside them wrapped to fit an 80-column terminal.
constexpr std::size_t kNameColumn = 25;
constexpr std::size_t kLineWidth = 79;

// Breaks text into lines of at most `width` characters at spaces.
std::vector<std::string> wrap(std::string_view text, std::size_t width)
{
    std::vector<std::string> lines{""};
    std::istringstream words{std::string(text)};
    for (std::string word; words >> word;) {
        if (!lines.back().empty() && lines.back().size() + 1 + word.size() > width)
            lines.emplace_back();
        lines.back() += (lines.back().empty() ? "" : " ") + word;
    }
    return lines;
}

// "  name      text" with the text wrapped in its column; a name too long for
// the column puts the text on the lines below.
void writeEntry(std::ostream& out, const std::string& name, std::string_view text)
{
    const std::string indent(kNameColumn, ' ');
    std::string first = "  " + name;
    if (first.size() + 1 > kNameColumn) {
        out << first << '\n';
        first.clear();
    }
    first.resize(kNameColumn, ' ');
    bool isFirst = true;
    for (const std::string& line : wrap(text, kLineWidth - kNameColumn)) {
        out << (isFirst ? first : indent) << line << '\n';
        isFirst = false;
    }
}

std::string optionName(const OptionHelp& option)
{
    return std::string(option.name) + (option.value.empty() ? "" : " " + std::string(option.value));
}

} // namespace

const std::vector<CommandHelp>& commandHelp()
{
    static const std::vector<CommandHelp> commands{
        {"patch", "", "write the pitch-detection patch to standard output",
         "The Pure Data patch that the tuner runs, byte for byte.", {}},
        {"analyze", "FILE", "what the tuner shows over an audio file",
         "Plays the file through the tuner's engine as if it came from the microphone and prints a line "
         "(time, note, deviation in cents, frequency, and with --transpose the concert note that sounds) each "
         "time the readout changes, then the note that sounded longest: how long it sounded, how long the "
         "readout showed it (the readout keeps a note through the silence after it) and its median deviation. WAV, FLAC, OGG and AIFF files are read, mixed to mono; a rate "
         "outside 8 to 192 kHz is converted first. FILE - reads standard input, piped or redirected (FLAC only "
         "redirected from a file, since a pipe cannot be read back).",
         {
             {"--raw", "", "instead, every frequency the patch reports: \"<seconds> <hertz>\" per analysis frame"},
             {"--json", "", "JSON Lines instead of text"},
             kA4,
             kFlats,
             kTemperament,
             kScala,
             kTonic,
             kTranspose,
             kUseMl,
             kSounds,
         },
         Completion::Files},
        {"report", "FILE -o OUT.html", "a practice report: how in tune each note was",
         "Plays the file through the tuner's engine and writes one self-contained HTML page: the pitch over "
         "time on a note grid, and for every note and pitch class how often and how long it was shown, its "
         "median deviation and spread. Notes shown too briefly are listed apart.",
         {
             {"-o", "OUT.html", "the file to write, - for standard output (which --json alone also writes to)",
              Completion::Files},
             {"--json", "", "the same figures as JSON"},
             kA4,
             kFlats,
             kTemperament,
             kScala,
             kTonic,
             kTranspose,
             kUseMl,
             kSounds,
         },
         Completion::Files},
        {"tone", "NOTE -o OUT.wav", "render a reference tone as the tone buttons play it",
         "Writes the tone for NOTE as a 16-bit WAV file. NOTE is a letter A to G in either case, then # or b "
         "(or the signs \u266F and \u266D) for sharp or flat, then the octave, C4 being middle C: A4, E2, "
         "c#, Bb1, F\u266F3. Every note the tuner reads can be rendered, Bb1 to B8.",
         {
             {"-o", "OUT.wav", "the file to write, - for standard output", Completion::Files},
             {"--octave", "N", "the octave of a NOTE written without one, 1 to 8 (default 4, the octave of middle C)"},
             {"--seconds", "S", "how long the button is held (default 2)"},
             kA4,
             kTemperament,
             kScala,
             kTonic,
             kTranspose,
         }},
        {"listen", "", "the tuner on the default microphone, until Ctrl-C",
         "Shows the note, the deviation and the frequency in the terminal as the window would, and with "
         "--transpose the concert note that sounds. Piped or redirected, it writes one line per reading "
         "instead; messages go to standard error.",
         {kA4, kFlats, kTemperament, kScala, kTonic, kTranspose, kUseMl, kSounds,
          {"--json", "", "one JSON object per reading: time, note, octave, cents, frequency, the concert note, the "
                     "gate's category"},
          {"--input", "NAME",
           "listen to this input, by its name on the sound server or its description as devices lists it "
           "(default: the system default); while it is away the default stands in"}}},
        {"classify", "FILE", "the sound classifier's best labels per window",
         "Prints, for every 0.975 s window of the file, the labels the sound classifier is most sure of "
         "with their confidence.",
         {
             {"--top", "N", "how many labels per window, 1 to 100 (default 3)"},
             {"--gate", "LIST", "also the gate's state with these sounds accepted (guitar, violin, piano, voice)",
              Completion::Sounds},
             {"--model", "FILE", "read the classifier's weights from FILE instead of the installed ones",
              Completion::Files},
         },
         Completion::Files},
        {"devices", "", "list the audio devices", "Every input and output device the sound system offers.", {}},
    };
    return commands;
}

const CommandHelp* findCommandHelp(std::string_view name)
{
    const auto& commands = commandHelp();
    const auto found = std::find_if(commands.begin(), commands.end(), [&](const CommandHelp& c) { return c.name == name; });
    return found == commands.end() ? nullptr : &*found;
}

std::string synopsis(const CommandHelp& command)
{
    std::string text(command.name);
    if (!command.operands.empty())
        text += " " + std::string(command.operands);
    if (!command.options.empty())
        text += " [OPTIONS]";
    return text;
}

std::string description(const CommandHelp& command)
{
    std::string text = std::string(command.summary) + ". " + std::string(command.details);
    text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

std::string programUsage()
{
    std::ostringstream out;
    out << "usage: veltra-cli COMMAND [ARGS]\n"
           "       veltra-cli COMMAND --help\n\n"
           "The Veltra tuner's engine on the command line.\n\n"
           "commands:\n";
    for (const CommandHelp& command : commandHelp())
        writeEntry(out, std::string(command.name) + " " + std::string(command.operands), command.summary);
    out << "\noptions:\n";
    writeEntry(out, "--help", "this text; after a command, that command's options");
    writeEntry(out, "--version", "the program's version");
    return out.str();
}

std::string commandUsage(const CommandHelp& command)
{
    std::ostringstream out;
    out << "usage: veltra-cli " << synopsis(command) << "\n\n";
    for (const std::string& line : wrap(description(command), kLineWidth))
        out << line << '\n';
    out << "\noptions:\n";
    for (const OptionHelp& option : command.options)
        writeEntry(out, optionName(option), option.text);
    writeEntry(out, "--help", "this text");
    return out.str();
}

} // namespace veltra::cli
