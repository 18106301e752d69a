/// @file
/// Room Pictures: what kivifc knows, drawn for a person to read (and the same facts as JSON beside it).
///
/// One entity as a person wants to see it: with all that it inherits.
///
///     vEntityPictureWrite(wall, output);
///
/// Threads:   one thread for each output.
/// Errors:    std::bad_alloc; what cannot be written is known to the output.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Kit/Express/ExpressionText.h"
#include "kivifc/Json/Json.h"
#include "kivifc/Program/Output.h"

namespace kiv::kivifc {

/// Rules are written in the given style.
void vEntityPictureWrite(const ifc::def::schema::Entity& entity, Output& output,
                         const kit::ExpressionStyle& style = {});

/// The same facts as members of the JSON object that is open. Written one by one, as each attribute names its
/// entity, whose name may be as long as the schema.
void vEntityPictureWrite(const ifc::def::schema::Entity& entity, JsonWriter& writer,
                         const kit::ExpressionStyle& style = {});

} // namespace kiv::kivifc
