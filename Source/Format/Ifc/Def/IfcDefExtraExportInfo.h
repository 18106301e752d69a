/// @file
/// What a host may ask for when definitions are written as XML.
///
///     ExtraExportInfo info;
///     info.generateGuids = true;
///     set.exportDef(parent, &info);
///
/// Ownership: refers to the schema, which must outlive its use.
/// Threads:   may be used by several exports at once if the hook may run in several threads.
/// Errors:    what the hook throws passes through the export.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Host/Xml/KivXml.h"

#include <functional>

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::ifc::def::xml {

class Def;

struct KIV_EXPORT ExtraExportInfo {
    /// When set, called for each property and quantity of a set with its new element, which is still empty.
    std::function<void(const Def&, kiv::xml::Element&)> hook;
    /// Write a new GUID for each definition that has none. The definition itself stays without.
    bool generateGuids = false;
    /// When given, the data types of properties are looked up here, and the underlying data type of a defined
    /// type is written as "basetype".
    const schema::Schema* schemaForBaseTypes = nullptr;
};

} // namespace kiv::ifc::def::xml
