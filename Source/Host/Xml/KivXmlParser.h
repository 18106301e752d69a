/// From a stream to a document, by way of libexpat.
///
/// Private to the XML library.
#pragma once

#include "Host/Xml/KivXml.h"

#include <iosfwd>
#include <memory>

namespace kiv::xml {

/// Reads the stream to its end. Null when it cannot be read as a document; `error` then has reason and place.
/// Errors: `std::bad_alloc` is passed on.
std::unique_ptr<DocumentRecords> pDocumentRead(std::istream& stream, ParseError& error);

} // namespace kiv::xml
