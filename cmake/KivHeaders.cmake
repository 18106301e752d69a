# The public headers: the one list of what hosts may include, as <kiv/...>.
#
# What is not listed here is private: it is not installed, and a host that builds us as a subproject cannot include it either.
set(kivPublicHeaders
    KivIfcKit.h
    KivIfcSchemaPset.h
    Base/Exception.h
    Base/WorkMeter.h
    Host/Assert/KivAssert.h
    Host/Id/KivId.h
    Host/Locale/KivLocale.h
    Host/Xml/KivXml.h
    Format/Ifc/Def/IfcBudget.h
    Format/Ifc/Def/IfcDefAliases.h
    Format/Ifc/Def/IfcDefApplicableClasses.h
    Format/Ifc/Def/IfcDefBase.h
    Format/Ifc/Def/IfcDefErrors.h
    Format/Ifc/Def/IfcDefExtraExportInfo.h
    Format/Ifc/Def/IfcLimits.h
    Format/Ifc/Def/PropertyNameSearcher.h
    Format/Ifc/Def/Pset/IfcPropertyDef.h
    Format/Ifc/Def/Pset/IfcPropertyType.h
    Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h
    Format/Ifc/Def/Qto/IfcQuantityDef.h
    Format/Ifc/Def/Qto/IfcQuantityType.h
    Format/Ifc/Def/Schema/ExpressExpression.h
    Format/Ifc/Def/Schema/ExpressParser.h
    Format/Ifc/Def/Schema/ExpressTokenizer.h
    Format/Ifc/Def/Schema/IfcSchema.h
    Format/Ifc/Def/Schema/IfcSchemaAggregate.h
    Format/Ifc/Def/Schema/IfcSchemaAttribute.h
    Format/Ifc/Def/Schema/IfcSchemaAttributeInverse.h
    Format/Ifc/Def/Schema/IfcSchemaDataType.h
    Format/Ifc/Def/Schema/IfcSchemaDataTypeBase.h
    Format/Ifc/Def/Schema/IfcSchemaDerive.h
    Format/Ifc/Def/Schema/IfcSchemaEntity.h
    Format/Ifc/Def/Schema/IfcSchemaEnumeration.h
    Format/Ifc/Def/Schema/IfcSchemaFunction.h
    Format/Ifc/Def/Schema/IfcSchemaObjectBase.h
    Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h
    Format/Ifc/Def/Schema/IfcSchemaSelect.h
    Format/Ifc/Def/Schema/IfcSchemaSimpleType.h
    Format/Ifc/Def/Schema/IfcSchemaType.h
    Format/Ifc/Def/Schema/IfcSchemaUnique.h
    Format/Ifc/Def/Schema/IfcSchemaWhere.h
    Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h
    Format/Ifc/Def/SchemaLoader.h
    Format/Ifc/Def/SchemaPropertySetDefinitions.h
    Format/Ifc/Def/SchemaPset.h
    Format/Ifc/Def/XmlSchema/IfcXmlAttribute.h
    Format/Ifc/Def/XmlSchema/IfcXmlCommon.h
    Format/Ifc/Def/XmlSchema/IfcXmlConfig.h
    Format/Ifc/Def/XmlSchema/IfcXmlEntity.h
    Format/Ifc/Def/XmlSchema/IfcXmlNamespace.h
    Format/Ifc/Def/XmlSchema/IfcXmlOption.h
    Format/Ifc/Def/XmlSchema/IfcXmlSchema.h
    Format/Ifc/Def/XmlSchema/IfcXmlType.h
    Format/Ifc/Def/XmlSchema/IfcXmlUosElement.h
    Kit/Documents/Assertion.h
    Kit/Documents/ReadFailure.h
    Kit/Documents/ReadOptions.h
    Kit/Documents/SchemaFile.h
    Kit/Documents/SetCollection.h
    Kit/Documents/SetDocument.h
    Kit/Documents/SetMembers.h
    Kit/Documents/SetPaths.h
    Kit/Documents/TextFile.h
    Kit/Express/DataTypeKinds.h
    Kit/Express/ExpressTypeText.h
    Kit/Express/ExpressionOperators.h
    Kit/Express/ExpressionText.h
    Kit/Express/ExpressionWalk.h
    Kit/Findings/AcrossDocuments.h
    Kit/Findings/Finding.h
    Kit/Findings/Findings.h
    Kit/Findings/IgnoreComments.h
    Kit/Findings/Rule.h
    Kit/Findings/SchemaFindings.h
    Kit/Findings/SetCheckContext.h
    Kit/Names/KnownNames.h
    Kit/Names/NearestName.h
    Kit/Names/SchemaRelease.h
    Kit/Positions/ExpressPositions.h
    Kit/Positions/XmlDecoding.h
    Kit/Positions/XmlPositions.h
    Kit/Text/ByteOrderMark.h
    Kit/Text/InvisibleCharacters.h
    Kit/Text/TextLines.h
    Kit/Text/TextPosition.h)

# Hosts write the same includes whether they build us or find us installed: <build>/include/kiv holds a link to each header.
set(kivIncludeFolder ${PROJECT_BINARY_DIR}/include)
file(REMOVE_RECURSE ${kivIncludeFolder})
function(kiv_link_header header name)
    cmake_path(GET name PARENT_PATH folder)
    file(MAKE_DIRECTORY ${kivIncludeFolder}/kiv/${folder})
    file(CREATE_LINK ${header} ${kivIncludeFolder}/kiv/${name} SYMBOLIC)
endfunction()
foreach(header IN LISTS kivPublicHeaders)
    kiv_link_header(${PROJECT_SOURCE_DIR}/Source/${header} ${header})
endforeach()

# kiv/Version.h: the version in project() for the preprocessor.
set(kivGeneratedFolder ${PROJECT_BINARY_DIR}/generated)
configure_file(${PROJECT_SOURCE_DIR}/cmake/Version.h.in ${kivGeneratedFolder}/Version.h @ONLY)
kiv_link_header(${kivGeneratedFolder}/Version.h Version.h)

# KIV_EXPORT, the mark of every exported class and function. One macro serves all six libraries: with ELF it says "visible",
# whether a library is being made or used. Windows would need one macro for each library, as there the two cases differ.
include(GenerateExportHeader)
function(kiv_export_header target)
    set(header ${kivGeneratedFolder}/Base/Export.h)
    generate_export_header(${target} BASE_NAME KIV EXPORT_FILE_NAME ${header})
    kiv_link_header(${header} Base/Export.h)
endfunction()
