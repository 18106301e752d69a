/// Reader of "cnf:entity": the attributes of one entity.
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
    /// Hands the attributes and inverses to their readers. For an entity that the schema does not know they are skipped,
    /// without a report.
    static void vRead(Config& config, SchemaPset& schema, const kiv::xml::const_Element& element);
};

} // namespace kiv::ifc::def::xmlschema
