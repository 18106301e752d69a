/// @file
/// From a stream to a document, by way of libexpat.
///
/// Private to the XML library.
///
/// Ownership: the caller owns the document.
/// Threads:   one at a time for a stream.
/// Errors:    a text that cannot be read is null and a `ParseError`; std::bad_alloc is passed on.
#pragma once

#include "kiv/Host/Xml/KivXml.h"

#include <cstddef>
#include <iosfwd>
#include <memory>

namespace kiv::xml {

/// Reads the stream to its end. Null when it cannot be read as a document; `error` then has reason and place.
///
/// A tag, comment or the like of more than `largestTokenSize` bytes is refused. That is looked at between two
/// blocks of the stream only, so a token that is longer by less than a block may pass.
///
/// A meter hears of what is read and made; null for none. The memory of a document stays taken.
///
/// Errors: `std::bad_alloc`, and what the meter throws, is passed on.
std::unique_ptr<DocumentRecords> pDocumentRead(std::istream& stream, ParseError& error,
                                               std::size_t largestTokenSize = maxTokenSize,
                                               WorkMeter* meter = nullptr);

} // namespace kiv::xml
