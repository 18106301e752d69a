/// @file
/// Texts of documents and schemas, made fit for one line of a terminal.
///
/// Threads:   free function without state.
/// Errors:    std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

namespace kiv::kivifc {

/// The text with its control characters spelt out: "\n", "\r", "\t", and "\xNN" for every other one, those
/// that UTF-8 writes in two bytes (U+0080 to U+009F) included, since terminals obey them as well. Characters
/// that turn the direction of writing or end a line (U+202E, U+2028), and those that cannot be seen (U+200B),
/// are "\u{202E}". Every other byte stays; a backslash too, as names such as SELF\IfcRoot.Name have to be
/// readable.
std::string sOneLine(std::string_view text);

} // namespace kiv::kivifc
