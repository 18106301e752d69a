/// @file
/// Room Pictures: what kivifc knows, drawn for a person to read (and the same facts as JSON beside it).
///
/// One entity as a person wants to see it: with all that it inherits.
///
///     vEntityPictureWrite(wall, output);
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kivifc/Json/Json.h"
#include "kivifc/Program/Output.h"

namespace kiv::kivifc {

void vEntityPictureWrite(const ifc::def::schema::Entity& entity, Output& output);

/// The same facts as JSON.
Json entityPictureJson(const ifc::def::schema::Entity& entity);

} // namespace kiv::kivifc
