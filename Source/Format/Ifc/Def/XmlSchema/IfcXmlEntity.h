/// @file
/// Reader of "cnf:entity": the attributes of one entity.
///
///     Entity::vRead(config, schema, element);
///
/// Ownership: nothing; records belong to the `Config`.
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

class KIV_EXPORT Entity {
public:
    /// Hands the attributes and inverses to their readers. For an entity that the schema does not know they
    /// are skipped, without a report.
    static void vRead(Config& config, SchemaPset& schema, const kiv::xml::const_Element& element);
};

} // namespace kiv::ifc::def::xmlschema
