#pragma once

#include "tuning/Temperament.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <variant>

namespace veltra {

// A tuning read from a Scala file (.scl), the exchange format of tuning
// tables: a description line, the number of notes, then one pitch a line
// above the tonic (a ratio such as 9/8 or 3, or cents with a '.', such as
// 203.91); the last pitch is the period. Lines starting with '!' are
// comments, and anything after a pitch on its line is ignored.
//
// The tuner takes twelve-note scales that repeat at the octave (2/1 or
// 1200.0 cents) and whose pitches rise within it; everything else is
// refused with one line saying why.
struct ScalaScale {
    std::string description;
    CentsTable cents{}; // from equal temperament, degree 0 is the tonic
};

// The scale in text, or the reason it is refused ("line 4: ...").
std::variant<ScalaScale, std::string> parseScala(std::string_view text);

// The scale in a file, or the reason, with the file's name in front.
std::variant<ScalaScale, std::string> readScalaFile(const std::filesystem::path& path);

} // namespace veltra
