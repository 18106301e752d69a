/// @file
/// Why a document is no XML, in plain words and with what was expected.
///
///     vXmlMistakeExplain(finding, XmlPositions(document.text)); // the message is that of the parser before
///
/// Private to the kit.
///
/// Ownership: none.
/// Threads:   any number of threads, each with a finding of its own.
/// Errors:    std::bad_alloc; a message that is not known stays as it is.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kiv/Kit/Positions/XmlPositions.h"

namespace kiv::kit {

/// The message and the place of the finding are those of the parser, whose words become a note.
void vXmlMistakeExplain(Finding& finding, const XmlPositions& xml);

} // namespace kiv::kit
