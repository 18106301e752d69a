/// A small schema that has something of everything that sets, configurations and rules ask a schema for.
///
///     const auto schema = sampleSchema();
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <memory>
#include <sstream>

namespace kiv::fuzz {

inline std::unique_ptr<ifc::def::SchemaPset> sampleSchema() {
    std::istringstream stream(R"(SCHEMA FUZZ;
TYPE IfcLabel = STRING(255);
END_TYPE;
TYPE IfcLengthMeasure = REAL;
END_TYPE;
TYPE IfcWallTypeEnum = ENUMERATION OF
  (SOLIDWALL
  ,NOTDEFINED);
END_TYPE;
TYPE IfcChoice = SELECT
  (IfcLabel
  ,IfcWall);
END_TYPE;
ENTITY IfcRoot
  ABSTRACT SUPERTYPE OF (ONEOF
    (IfcWall
    ,IfcDoor));
  Name : OPTIONAL IfcLabel;
 INVERSE
  Walls : SET [0:?] OF IfcWall FOR Neighbours;
END_ENTITY;
ENTITY IfcWall
  SUBTYPE OF (IfcRoot);
  PredefinedType : OPTIONAL IfcWallTypeEnum;
  Neighbours : LIST [0:?] OF IfcRoot;
END_ENTITY;
ENTITY IfcDoor
  SUBTYPE OF (IfcRoot);
  PredefinedType : OPTIONAL STRING;
END_ENTITY;
ENTITY IfcPropertySingleValue;
END_ENTITY;
FUNCTION IfcSize
  (Item : IfcWall) : INTEGER;
END_FUNCTION;
END_SCHEMA;
)");
    return ifc::def::SchemaPset::pStepStreamRead(stream);
}

} // namespace kiv::fuzz
