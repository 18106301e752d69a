#include "kiv/Kit/Findings/Rule.h"

namespace kiv::kit {

std::string_view getExampleSchema() {
    return R"express(SCHEMA IFC4;

TYPE IfcBoolean = BOOLEAN;
END_TYPE;
TYPE IfcIdentifier = STRING(255);
END_TYPE;
TYPE IfcInteger = INTEGER;
END_TYPE;
TYPE IfcLabel = STRING(255);
END_TYPE;
TYPE IfcLogical = LOGICAL;
END_TYPE;
TYPE IfcReal = REAL;
END_TYPE;
TYPE IfcText = STRING;
END_TYPE;
TYPE IfcAreaMeasure = REAL;
END_TYPE;
TYPE IfcCountMeasure = NUMBER;
END_TYPE;
TYPE IfcLengthMeasure = REAL;
END_TYPE;
TYPE IfcMassMeasure = REAL;
END_TYPE;
TYPE IfcPlaneAngleMeasure = REAL;
END_TYPE;
TYPE IfcPositiveLengthMeasure = IfcLengthMeasure;
WHERE
	WR1 : SELF > 0.;
END_TYPE;
TYPE IfcThermalTransmittanceMeasure = REAL;
END_TYPE;
TYPE IfcThermodynamicTemperatureMeasure = REAL;
END_TYPE;
TYPE IfcTimeMeasure = REAL;
END_TYPE;
TYPE IfcVolumeMeasure = REAL;
END_TYPE;

TYPE IfcUnitEnum = ENUMERATION OF
	(AREAUNIT
	,LENGTHUNIT
	,MASSUNIT
	,PLANEANGLEUNIT
	,THERMODYNAMICTEMPERATUREUNIT
	,TIMEUNIT
	,VOLUMEUNIT
	,USERDEFINED);
END_TYPE;
TYPE IfcDerivedUnitEnum = ENUMERATION OF
	(THERMALTRANSMITTANCEUNIT
	,USERDEFINED);
END_TYPE;
TYPE IfcSlabTypeEnum = ENUMERATION OF
	(FLOOR
	,ROOF
	,LANDING
	,BASESLAB
	,USERDEFINED
	,NOTDEFINED);
END_TYPE;
TYPE IfcWallTypeEnum = ENUMERATION OF
	(MOVABLE
	,PARAPET
	,PARTITIONING
	,SOLIDWALL
	,STANDARD
	,USERDEFINED
	,NOTDEFINED);
END_TYPE;

TYPE IfcMeasureValue = SELECT
	(IfcAreaMeasure
	,IfcCountMeasure
	,IfcLengthMeasure
	,IfcMassMeasure
	,IfcPlaneAngleMeasure
	,IfcPositiveLengthMeasure
	,IfcThermodynamicTemperatureMeasure
	,IfcTimeMeasure
	,IfcVolumeMeasure);
END_TYPE;
TYPE IfcDerivedMeasureValue = SELECT
	(IfcThermalTransmittanceMeasure);
END_TYPE;
TYPE IfcSimpleValue = SELECT
	(IfcBoolean
	,IfcIdentifier
	,IfcInteger
	,IfcLabel
	,IfcLogical
	,IfcReal
	,IfcText);
END_TYPE;
TYPE IfcValue = SELECT
	(IfcDerivedMeasureValue
	,IfcMeasureValue
	,IfcSimpleValue);
END_TYPE;
TYPE IfcObjectReferenceSelect = SELECT
	(IfcMaterialDefinition
	,IfcPerson
	,IfcTimeSeries);
END_TYPE;

ENTITY IfcRoot
 ABSTRACT SUPERTYPE OF (ONEOF
	(IfcObject));
	GlobalId : IfcIdentifier;
	Name : OPTIONAL IfcLabel;
END_ENTITY;
ENTITY IfcObject
 ABSTRACT SUPERTYPE OF (ONEOF
	(IfcElement))
 SUBTYPE OF (IfcRoot);
	ObjectType : OPTIONAL IfcLabel;
END_ENTITY;
ENTITY IfcElement
 ABSTRACT SUPERTYPE OF (ONEOF
	(IfcDoor
	,IfcSlab
	,IfcWall))
 SUBTYPE OF (IfcObject);
	Tag : OPTIONAL IfcIdentifier;
END_ENTITY;
ENTITY IfcDoor
 SUBTYPE OF (IfcElement);
	OverallHeight : OPTIONAL IfcPositiveLengthMeasure;
END_ENTITY;
ENTITY IfcSlab
 SUBTYPE OF (IfcElement);
	PredefinedType : OPTIONAL IfcSlabTypeEnum;
END_ENTITY;
ENTITY IfcWall
 SUPERTYPE OF (ONEOF
	(IfcWallStandardCase))
 SUBTYPE OF (IfcElement);
	PredefinedType : OPTIONAL IfcWallTypeEnum;
END_ENTITY;
ENTITY IfcWallStandardCase
 SUBTYPE OF (IfcWall);
END_ENTITY;

ENTITY IfcMaterialDefinition
 ABSTRACT SUPERTYPE OF (ONEOF
	(IfcMaterial));
END_ENTITY;
ENTITY IfcMaterial
 SUBTYPE OF (IfcMaterialDefinition);
	Name : IfcLabel;
END_ENTITY;
ENTITY IfcPerson;
	FamilyName : OPTIONAL IfcLabel;
END_ENTITY;
ENTITY IfcTimeSeries;
	Name : IfcLabel;
END_ENTITY;

ENTITY IfcProperty;
	Name : IfcIdentifier;
END_ENTITY;
ENTITY IfcComplexProperty
 SUBTYPE OF (IfcProperty);
	UsageName : IfcIdentifier;
END_ENTITY;
ENTITY IfcPropertyBoundedValue
 SUBTYPE OF (IfcProperty);
	UpperBoundValue : OPTIONAL IfcValue;
	LowerBoundValue : OPTIONAL IfcValue;
END_ENTITY;
ENTITY IfcPropertyEnumeratedValue
 SUBTYPE OF (IfcProperty);
	EnumerationValues : OPTIONAL LIST [1:?] OF IfcValue;
END_ENTITY;
ENTITY IfcPropertyListValue
 SUBTYPE OF (IfcProperty);
	ListValues : OPTIONAL LIST [1:?] OF IfcValue;
END_ENTITY;
ENTITY IfcPropertyReferenceValue
 SUBTYPE OF (IfcProperty);
	PropertyReference : OPTIONAL IfcObjectReferenceSelect;
END_ENTITY;
ENTITY IfcPropertySingleValue
 SUBTYPE OF (IfcProperty);
	NominalValue : OPTIONAL IfcValue;
END_ENTITY;
ENTITY IfcPropertyTableValue
 SUBTYPE OF (IfcProperty);
	DefiningValues : OPTIONAL LIST [1:?] OF UNIQUE IfcValue;
	DefinedValues : OPTIONAL LIST [1:?] OF IfcValue;
END_ENTITY;

ENTITY IfcPhysicalQuantity;
	Name : IfcLabel;
END_ENTITY;
ENTITY IfcQuantityArea
 SUBTYPE OF (IfcPhysicalQuantity);
	AreaValue : IfcAreaMeasure;
END_ENTITY;
ENTITY IfcQuantityCount
 SUBTYPE OF (IfcPhysicalQuantity);
	CountValue : IfcCountMeasure;
END_ENTITY;
ENTITY IfcQuantityLength
 SUBTYPE OF (IfcPhysicalQuantity);
	LengthValue : IfcLengthMeasure;
END_ENTITY;
ENTITY IfcQuantityTime
 SUBTYPE OF (IfcPhysicalQuantity);
	TimeValue : IfcTimeMeasure;
END_ENTITY;
ENTITY IfcQuantityVolume
 SUBTYPE OF (IfcPhysicalQuantity);
	VolumeValue : IfcVolumeMeasure;
END_ENTITY;
ENTITY IfcQuantityWeight
 SUBTYPE OF (IfcPhysicalQuantity);
	WeightValue : IfcMassMeasure;
END_ENTITY;

END_SCHEMA;
)express";
}

std::string_view getOlderExampleSchema() {
    return R"express(SCHEMA IFC2X3;

TYPE IfcHourInDay = INTEGER;
WHERE
	WR1 : { 0 <= SELF < 24 };
END_TYPE;

ENTITY IfcBuildingElementComponent;
	Tag : STRING;
END_ENTITY;

END_SCHEMA;
)express";
}

} // namespace kiv::kit
