// The texts Wwise accepts: object names without control characters, valid
// UTF-8 for every document, and the stricter identifiers of events, banks,
// Work Units, Switch groups and Triggers.
#pragma once

#include <string>
#include <string_view>

namespace ZOLVA_Wwise::Native {

// The text as valid UTF-8 with the control characters (C0 and DEL, tab and
// line breaks included) left out; an invalid byte becomes U+FFFD.
// `changed` tells whether anything was dropped or replaced.
std::string CleanText(std::string_view text, bool& changed);

// Wwise's identifier rule: letters A-Z and a-z, digits and underscores, not
// starting with a digit. Every other character (an accented letter, a blank,
// punctuation) becomes one underscore; a leading digit gets an underscore in
// front; an empty name becomes "_".
std::string WwiseIdentifier(std::string_view name);

}  // namespace ZOLVA_Wwise::Native
