/// @file
/// The EXPRESS data types that attributes and defined types refer to: simple types, ENUMERATION and SELECT,
/// and the aggregates ARRAY, LIST and SET.
///
///     const auto* list = DataTypeListInterface::pFrom(attribute.pFirstType());
///     if (list && list->getUpperBound().state == Bound::State::Unbounded) ...
///
/// Ownership: every data type belongs to its schema; simple types without a width exist once per schema.
/// Threads:   read-only once the schema is built; readable from any number of threads.
/// Errors:    names that a type cannot resolve are assertion reports; the pointer stays null.
#pragma once

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaAggregate.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaDataTypeBase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEnumeration.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSimpleType.h"
