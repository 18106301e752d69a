/// @file
/// Reader of "cnf:type". What it says is known, and nothing of it is kept.
///
///     Type::vRead(config, schema, element);
///
/// Ownership: nothing.
/// Threads:   as `Config`.
/// Errors:    what is unknown in an element is an assertion report, and reading goes on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Host/Xml/KivXml.h"

namespace kiv::ifc::def {
class SchemaPset;
}

namespace kiv::ifc::def::xmlschema {

class Config;

class KIV_EXPORT Type {
public:
    /// Looks for what is unknown in the element and reports it.
    static void vRead(Config& config, SchemaPset& schema, const kiv::xml::const_Element& element);
};

} // namespace kiv::ifc::def::xmlschema
