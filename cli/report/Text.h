#pragma once

#include <string>
#include <string_view>

namespace veltra::report {

// The text with every byte that is not part of well-formed UTF-8 (a file
// name from an older system, a damaged one) replaced by U+FFFD, so a page
// or a JSON document made with it is well-formed whatever a user names a file.
std::string validUtf8(std::string_view text);

// A JSON string literal of the text: valid UTF-8, control characters escaped.
std::string jsonQuoted(std::string_view text);

} // namespace veltra::report
