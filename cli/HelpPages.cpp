// Build-time tool: fills the manual page's and the bash completion's
// templates from the help table, so that they list exactly the commands and
// options the tool takes.
//
//   veltra-help-pages man|bash TEMPLATE OUTPUT
//
// The templates mark the generated parts as {{NAME}}.
#include "Help.h"
#include "classify/SoundCategories.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>

using namespace veltra::cli;

namespace {

// Text as roff reads it: backslashes and hyphens escaped, characters
// beyond ASCII (the sharp and flat signs) named by their code point, which
// every groff reads whatever its input encoding, and no line starting with
// a control character. The help table is our own UTF-8.
std::string roff(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else if (c < 0x80) {
            out += static_cast<char>(c);
        } else {
            // A lead byte 110xxxxx, 1110xxxx or 11110xxx, then 10xxxxxx each.
            const std::size_t length = c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
            unsigned point = c & (0x7Fu >> length);
            for (std::size_t k = 1; k < length && i + 1 < text.size(); ++k)
                point = (point << 6) | (static_cast<unsigned char>(text[++i]) & 0x3Fu);
            char name[16];
            std::snprintf(name, sizeof name, "\\[u%04X]", point);
            out += name;
        }
    }
    if (!out.empty() && (out[0] == '.' || out[0] == '\''))
        out.insert(0, "\\&");
    return out;
}

std::string manCommands()
{
    std::ostringstream out;
    for (const CommandHelp& command : commandHelp()) {
        out << ".SS \"" << roff(command.name) << (command.operands.empty() ? "" : " ") << roff(command.operands)
            << "\"\n"
            << roff(description(command)) << '\n';
        for (const OptionHelp& option : command.options) {
            out << ".TP\n.B " << roff(option.name);
            if (!option.value.empty())
                out << " \\fI" << roff(option.value) << "\\fR";
            out << '\n' << roff(option.text) << '\n';
        }
    }
    return out.str();
}

std::string words(const std::vector<std::string_view>& list)
{
    std::string out;
    for (std::string_view word : list)
        out += (out.empty() ? "" : " ") + std::string(word);
    return out;
}

std::vector<std::string_view> optionNames(const CommandHelp& command, const std::function<bool(const OptionHelp&)>& keep)
{
    std::vector<std::string_view> names;
    for (const OptionHelp& option : command.options)
        if (keep(option))
            names.push_back(option.name);
    return names;
}

// One case arm per command, setting the variables the completion function reads.
std::string bashCases()
{
    std::ostringstream out;
    for (const CommandHelp& command : commandHelp()) {
        const auto all = [](const OptionHelp&) { return true; };
        const auto valued = [](const OptionHelp& o) { return !o.value.empty(); };
        const auto completes = [](Completion kind) { return [kind](const OptionHelp& o) { return o.completion == kind; }; };
        out << "        " << command.name << ")\n"
            << "            options=\"" << words(optionNames(command, all)) << "\"\n"
            << "            value_options=\"" << words(optionNames(command, valued)) << "\"\n"
            << "            file_options=\"" << words(optionNames(command, completes(Completion::Files))) << "\"\n"
            << "            sound_options=\"" << words(optionNames(command, completes(Completion::Sounds))) << "\"\n"
            << "            operand_files=" << (command.operandCompletion == Completion::Files ? "yes" : "no") << " ;;\n";
    }
    return out.str();
}

std::string bashCommands()
{
    std::vector<std::string_view> names;
    for (const CommandHelp& command : commandHelp())
        names.push_back(command.name);
    return words(names);
}

// The names the sound lists take, as the commands parse them.
std::string soundNames()
{
    std::string out;
    for (const veltra::SoundCategory& category : veltra::kSoundCategories) {
        std::string name(category.title);
        std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
        out += (out.empty() ? "" : " ") + name;
    }
    return out;
}

std::string fill(std::string text, const std::map<std::string, std::string>& parts)
{
    for (const auto& [name, value] : parts) {
        const std::string mark = "{{" + name + "}}";
        for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size()))
            text.replace(at, mark.size(), value);
    }
    return text;
}

} // namespace

int main(int argc, char** argv)
{
    const std::map<std::string, std::map<std::string, std::string>> kinds{
        {"man", {{"COMMANDS", manCommands()}}},
        {"bash", {{"COMMANDS", bashCommands()}, {"CASES", bashCases()}, {"SOUNDS", soundNames()}}},
    };
    if (argc != 4 || !kinds.count(argv[1])) {
        std::cerr << "usage: veltra-help-pages man|bash TEMPLATE OUTPUT\n";
        return 2;
    }
    std::ifstream in(argv[2]);
    std::stringstream text;
    text << in.rdbuf();
    std::ofstream out(argv[3]);
    out << fill(text.str(), kinds.at(argv[1]));
    if (!in || !out) {
        std::cerr << "veltra-help-pages: cannot turn " << argv[2] << " into " << argv[3] << '\n';
        return 1;
    }
    return 0;
}
