"""What the examples in headers take for granted. Rows by file name:

namespace         where the example is compiled
parameters        what is there already
includes, before  headers and declarations that it needs
replace           texts of the example that stand for what a reader fills in
isNamespaceScope  the example is a definition, no statement
"""

SCHEMA = "kiv::ifc::def::schema"
DEF = "kiv::ifc::def"
XML = "kiv::ifc::def::xml"
BASE = "kiv"
XMLSCHEMA = "kiv::ifc::def::xmlschema"
TOOL = "kiv::kivifc"

IN = "kiv/Format/Ifc/Def/"
ENTITY = [IN + "Schema/IfcSchemaEntity.h", IN + "Schema/IfcSchema.h", IN + "Schema/IfcSchemaType.h"]

# Blocks that show no code, by how they begin.
PLAIN = {
    "DataTypeJson.h": ['{"object"'],
    "ExpressionJson.h": ["a - b - c"],
    "ProjectFile.h": ["schema =", "[contexts]"],
    "DefinitionsFile.h": ["{languages"],
    "SearchIndex.h": ["{format"],
    "TreeDrawing.h": ["BldUnit"],
}


def row(namespace, parameters="", includes=(), **more):
    return {"namespace": namespace, "parameters": parameters, "includes": list(includes), **more}


SET_PARAMETERS = "const kiv::xml::const_Element& root, const kiv::ifc::def::schema::Schema& schema"
SET_INCLUDES = [IN + "Schema/IfcSchema.h", IN + "Pset/IfcPropertyDef.h", "kiv/Host/Xml/KivXml.h"]
XML_READERS = "Config& config, SchemaPset& schema, const kiv::xml::const_Element& element"
XML_CONFIG = [IN + "SchemaPset.h", IN + "XmlSchema/IfcXmlConfig.h"]
DIAGNOSTICS = ["kivifc/Program/Diagnostics.h"]

SURROUNDINGS = {
    "KivIfcKit.h": row(BASE, isNamespaceScope=True, replace={"#include <kiv/KivIfcKit.h>": ";"}),
    "KivIfcSchemaPset.h": row(BASE, isNamespaceScope=True, replace={"#include <kiv/KivIfcSchemaPset.h>": ";"}),
    "ExpressPositions.h": row("kiv::kit", "std::string_view text"),
    "ExpressScanner.h": row("kiv::kit", "std::string_view text",
                            before="void vUse(std::string_view, const TextPosition&);"),
    "SchemaFindings.h": row("kiv::kit", "const ifc::def::schema::Schema* schema, std::string_view text, "
                                        "std::span<const assert::AssertRecord> assertions"),
    "SchemaLines.h": row("kiv::kit", "std::string_view text"),
    "SchemaRelease.h": row("kiv::kit", "const ifc::def::schema::Schema& schema", [IN + "Schema/IfcSchema.h"],
                           before="void vWarn();"),
    "SchemaRules.h": row("kiv::kit"),
    "SchemaRun.h": row("kiv::kit", isNamespaceScope=True),
    "ScratchList.h": row(BASE, "WorkMeter* meter, Arena& arena, int entity, int line, int name, int type",
                         before="struct Attribute { Attribute(int, int, int, int); };"),
    "Size32.h": row(BASE, "std::uint32_t& nameSize_, std::string_view name", ["string_view"]),
    "ResolutionOrder.h": row(SCHEMA, "std::uint32_t hash, std::string_view name, std::uint32_t otherHash, "
                                     "std::string_view otherName", ["cstdint", "string_view"]),
    "VisitedDefinitions.h": row(DEF, "const SchemaPset::Visitor& visitor, const SchemaPset::Context& context, "
                                     "const SchemaPropertySetDefinitions& definitions", [IN + "SchemaPset.h"]),
    "IfcDefAliases.h": row(DEF, "const pset::PropertyDef& property", [IN + "Pset/IfcPropertyDef.h"]),
    "IfcDefBase.h": row(XML, includes=[IN + "Pset/IfcPropertyDef.h"], isNamespaceScope=True),
    "IfcDefErrors.h": row(XML, SET_PARAMETERS, SET_INCLUDES, before="namespace pset = kiv::ifc::def::pset;"),
    "IfcDefExtraExportInfo.h": row(XML, "const SetDef& set, kiv::xml::Element& parent", SET_INCLUDES),
    "IfcBudget.h": row(BASE, "std::istream& stream, std::stop_source& stopping",
                       [IN + "SchemaPset.h", IN + "Pset/IfcPropertyDef.h", "kiv/Host/Xml/KivXml.h"]),
    "IfcLimits.h": row(DEF, "std::size_t depth"),
    "PropertyNameSearcher.h": row("kiv::ifc", "const def::SchemaPset& schema", [IN + "SchemaPset.h"]),
    "IfcPropertyDef.h": row(DEF + "::pset", SET_PARAMETERS, SET_INCLUDES),
    "IfcPropertyType.h": row(DEF + "::pset", "const PropertyDef& property",
                             [IN + "Pset/IfcPropertyDef.h", IN + "Pset/IfcPropertyTypeDerived.h"]),
    "IfcPropertyTypeDerived.h": row(DEF + "::pset", "const PropertyDef& property", [IN + "Pset/IfcPropertyDef.h"]),
    "IfcQuantityDef.h": row(DEF + "::qto", SET_PARAMETERS.replace("const_Element", "Element"), SET_INCLUDES),
    "IfcQuantityType.h": row(DEF + "::qto", "const QuantityDef& quantity", [IN + "Qto/IfcQuantityDef.h"]),
    "IfcSchema.h": row(SCHEMA, "std::istream& stream"),
    "IfcSchemaAttribute.h": row(SCHEMA, "const Entity& wall", ENTITY),
    "IfcSchemaDataType.h": row(SCHEMA, "const Attribute& attribute", ENTITY),
    "IfcSchemaAggregate.h": row(SCHEMA, "const Attribute& attribute", ENTITY),
    "IfcSchemaDataTypeBase.h": row(SCHEMA, "const Attribute& attribute", ENTITY),
    "IfcSchemaEnumeration.h": row(SCHEMA, "", ENTITY),
    "IfcSchemaSimpleType.h": row(SCHEMA, "const Attribute& attribute", ENTITY),
    "IfcSchemaSelect.h": row(SCHEMA, "const DataTypeSelect& select, const Entity& wall", ENTITY),
    "IfcSchemaEntity.h": row(SCHEMA, "const Schema& schema", ENTITY),
    "IfcSchemaObjectBase.h": row(SCHEMA, "const Schema& schema", ENTITY),
    "IfcSchemaType.h": row(SCHEMA, "const Schema& schema", ENTITY),
    "IfcSchemaWhere.h": row(SCHEMA, "const Entity& wall", ENTITY),
    "IfcSchemaReadLineHelper.h": row(SCHEMA, "std::istream& stream"),
    "SchemaContextAndPropertySetDefinitions.h": row(
        DEF, "SchemaPropertySetDefinitions standardSets, SchemaPropertySetDefinitions officeSets"),
    "SchemaLoader.h": row("kiv::ifc"),
    "SchemaPropertySetDefinitions.h": row(
        DEF, "const SchemaPset& schema, std::unique_ptr<xml::SetDef> set, xml::XmlSetErrors& errors",
        [IN + "SchemaPset.h"]),
    "SchemaPset.h": row(DEF, "std::istream& stream", ENTITY),
    "IfcXmlConfig.h": row(DEF, "SchemaPset& schema, const schema::Entity* wall, std::istream& stream",
                          [IN + "SchemaPset.h", IN + "XmlSchema/IfcXmlAttribute.h", *ENTITY],
                          replace={"schema::AttributeName": "kiv::ifc::def::schema::AttributeName"}),
    "Exception.h": row(BASE),
    "IfcDefApplicableClasses.h": row(XML),
    "IfcSchemaAttributeInverse.h": row(SCHEMA, "const AttributeInverse& inverse", ENTITY),
    "IfcSchemaDerive.h": row(SCHEMA, "const Entity& entity", ENTITY),
    "IfcSchemaFunction.h": row(SCHEMA, "const ObjectBase* object"),
    "IfcSchemaUnique.h": row(SCHEMA, "const Entity& entity", ENTITY),
    "IfcXmlCommon.h": row(XMLSCHEMA),
    "IfcXmlEntity.h": row(XMLSCHEMA, XML_READERS, XML_CONFIG),
    "IfcXmlNamespace.h": row(XMLSCHEMA, "const Namespace& settings"),
    "IfcXmlAttribute.h": row(XMLSCHEMA, "const kiv::ifc::def::schema::Attribute& attribute", ENTITY),
    "IfcXmlOption.h": row(XMLSCHEMA, "const Option& option"),
    "IfcXmlSchema.h": row(XMLSCHEMA, "const Config& config", XML_CONFIG),
    "IfcXmlType.h": row(XMLSCHEMA, XML_READERS, XML_CONFIG),
    "IfcXmlUosElement.h": row(XMLSCHEMA, "const Config& config", XML_CONFIG),
    "KivAssert.h": row(BASE),
    "KivId.h": row(BASE),
    "KivLocale.h": row(BASE),
    "KivXml.h": row(BASE, "std::iostream& stream"),
    # kivifc
    "Baseline.h": row(TOOL, "std::vector<kit::Finding>& findings, const std::vector<std::string>& paths, "
                           "const Selection& selection"),
    "CheckFindings.h": row(TOOL, "const SchemaFile& schema, const std::vector<ContextPaths>& contexts, "
                                 "const CheckOptions& options, Console& console"),
    "CheckFixes.h": row(TOOL, "std::vector<kit::Finding>& findings, const std::map<std::string, CheckedText>& texts, "
                              "Console& console"),
    "CheckListing.h": row(TOOL, "const SchemaFile& schema, const CheckOptions& options, Console& console",
                          ["kivifc/Documents/SetPaths.h"]),
    "CheckOptions.h": row(TOOL, "CLI::App& app, int argc, char** argv, Diagnostics& diagnostics", ["CLI/CLI.hpp"]),
    "CheckRun.h": row(TOOL, "const SchemaFile& schemaFile, SourceLines& sources"),
    "CodePoints.h": row(TOOL, "std::string_view line, std::size_t width, std::string_view text, std::string& shown"),
    "Excerpt.h": row(TOOL),
    "FindingCounts.h": row(TOOL, "const kit::Finding& finding"),
    "FindingWriter.h": row(TOOL, "Console& console, SourceLines& sources, const TextFindingOptions& options, "
                                 "const std::vector<kit::Finding>& findings, const CheckResult& result",
                           ["kivifc/Program/Program.h"]),
    "Fixes.h": row(TOOL, "const std::string& text, const std::vector<kit::Finding>& findings, Output& output",
                   ["kivifc/Findings/UnifiedDiff.h", "kivifc/Program/Output.h"]),
    "JoinedFindings.h": row(TOOL, "std::vector<kit::Finding>& findings"),
    "NumberText.h": row(TOOL, "CLI::App& app, std::size_t& jobs", ["CLI/CLI.hpp"]),
    "Options.h": row(TOOL, "CLI::App& app, std::string& schemaPath_, bool& isJson_"),
    "OrderedJobs.h": row(TOOL, "const std::vector<std::string>& paths", ["string"],
                         before="struct Document {}; Document documentRead(const std::string&);"),
    "Environment.h": row(TOOL, "std::string& text", before="inline void vColour(std::string&) {}"),
    "ProjectFile.h": row(TOOL),
    "ProjectInput.h": row(TOOL, "const std::string& path, Diagnostics& diagnostics, std::string& schemaPath, "
                                "std::vector<std::string>& setPaths"),
    "SiteOptions.h": row(TOOL, "CLI::App& app, int argc, char** argv, Diagnostics& diagnostics", ["CLI/CLI.hpp"]),
    "RuleText.h": row(TOOL, "Output& output", ["kivifc/Program/Output.h"]),
    "Selection.h": row(TOOL, "std::vector<kit::Finding>& findings"),
    "SourceLines.h": row(TOOL),
    "UnifiedDiff.h": row(TOOL, "Output& output, const std::string& before, const std::string& after",
                         ["kivifc/Program/Output.h"]),
    "AsciiText.h": row(TOOL),
    "Version.h": row(TOOL),
    "Command.h": row(TOOL, "CLI::App& app, int argc, char** argv, Console& console",
                     ["kivifc/Commands/CommandTable.h", "CLI/CLI.hpp"]),
    "CommandLine.h": row(TOOL, isNamespaceScope=True),
    "CommandTable.h": row(TOOL, "CLI::App& app", ["CLI/CLI.hpp"]),
    "CommandTexts.h": row(TOOL, includes=["kivifc/Manual/ManPages.h"]),
    "Completions.h": row(TOOL),
    "ManPages.h": row(TOOL, "const ProgramTexts& texts"),
    "SchemaWithSets.h": row(TOOL, "Diagnostics& diagnostics"),
    "ApplicableSets.h": row(TOOL, "const ifc::def::SchemaPset& schema, const ifc::def::schema::Entity& wall"),
    "CheckReport.h": row(
        TOOL, "const CheckContext& context, const SetDocument& document, std::chrono::nanoseconds elapsed, "
              "bool showsWarnings"),
    "CheckSummary.h": row(TOOL, "const SetDocument& document, Output& output"),
    "ConfigFile.h": row(TOOL, "SchemaFile& file, Diagnostics& diagnostics", ["kivifc/Documents/SchemaFile.h"]),
    "ExportFile.h": row(TOOL, "bool isForced, const std::filesystem::path& folder, const std::string& text, "
                              "const kiv::ifc::def::xml::SetDef& set", [IN + "IfcDefBase.h"]),
    "Folder.h": row(TOOL, "const std::string& text"),
    "UnfinishedFile.h": row(TOOL, "int folder, int file, const char* name", ["fcntl.h"]),
    "BytesJson.h": row(TOOL, "Json& json, const std::string& name, const std::string& path"),
    "Json.h": row(TOOL, "Output& output"),
    "LookUpArguments.h": row(TOOL, "CLI::App& app"),
    "MissingName.h": row(TOOL, "const ifc::def::schema::Schema& schema"),
    "Program.h": row(TOOL, isNamespaceScope=True),
    "SchemaFile.h": row(TOOL, "Diagnostics& diagnostics"),
    "SetDocument.h": row(TOOL, "const ifc::def::schema::Schema& schema"),
    "ShownFailure.h": row(TOOL, "const kit::SetDocument& document", ["kiv/Kit/Documents/SetDocument.h"]),
    "ReadingLimits.h": row(TOOL, "const ifc::def::BudgetExceeded& exceeded"),
    "SetPaths.h": row(TOOL, "Diagnostics& diagnostics", ["kivifc/Documents/SetDocument.h"]),
    "TextFile.h": row(TOOL, "Diagnostics& diagnostics", DIAGNOSTICS),
    "TextTable.h": row(TOOL, "std::chrono::nanoseconds elapsed"),
    "RepositoryPaths.h": row(TOOL),
    "DataTypeJson.h": row(
        TOOL, "const ifc::def::schema::Schema& schema, const ifc::def::schema::Attribute& attribute, JsonWriter& writer", ENTITY),
    "JsonWriter.h": row(TOOL, "Output& output", ["kivifc/Program/Output.h"]),
    "EntityPicture.h": row(TOOL, "const ifc::def::schema::Entity& wall, Output& output", ["kivifc/Program/Output.h"]),
    "ExpressionJson.h": row(TOOL),
    "TreeDrawing.h": row(TOOL),
    "InheritanceTree.h": row(TOOL, "const ifc::def::schema::Schema& schema"),
    "OutputStream.h": row(TOOL, "Output& output, const kiv::ifc::def::xml::XmlSetsErrors& errors",
                          ["ostream", IN + "IfcDefErrors.h"]),
    "Output.h": row(TOOL),
    "Progress.h": row(TOOL, "const std::vector<std::string>& paths, std::size_t done",
                      replace={"for (...)": "for (int i = 0; i < 2; ++i)"}),
    "SchemaJson.h": row(TOOL, "const SchemaFile& file, Output& output", ["kivifc/Program/Output.h"]),
    "SchemaSummary.h": row(TOOL, "const SchemaFile& file, Output& output", ["kivifc/Program/Output.h"]),
}
SURROUNDINGS["Diagnostics.h"] = row(TOOL, "Output& output", replace={
    "return diagnostics.getStatus();": "use(diagnostics.getStatus());"})

# Private headers of the library.
SURROUNDINGS.update({
    "Ascii.h": row(BASE, "std::string_view line"),
    "IfcReports.h": row(DEF, "const void* underlying"),
    "IfcSchemaLimits.h": row(SCHEMA, "std::size_t depth"),
    "Arena.h": row(BASE, "std::string_view line", before="struct Record { explicit Record(std::string_view) {} };"),
    "WorkMeter.h": row(BASE, isNamespaceScope=True),
    "Metered.h": row(BASE, "std::vector<std::string_view>& names, std::string_view name, WorkMeter* meter"),
    "HashKeys.h": row(BASE, "std::uint64_t first, std::uint64_t second, std::uint64_t third, std::uint64_t fourth",
                      ["Base/Words8.h", "Base/NameTable.h"]),
    "HashSort.h": row(BASE, "std::vector<Entry>& entries", before="struct Entry { std::uint32_t hash = 0; };"),
    "NameDirectory.h": row(BASE, "const Attribute* name",
                           before="struct Attribute { std::string_view getName() const, getNameUpper() const; };"),
    "NameHash.h": row(BASE),
    "NameTable.h": row(BASE, "ObjectBase* wall", before="struct ObjectBase {};"),
    "UpperCase.h": row(BASE),
    "Words8.h": row(BASE),
    "IfcPropertyTypeMemory.h": row("kiv::ifc::def::pset", "kiv::WorkMeter& meter, const PropertyType* replaced"),
    "IfcDefXmlNodes.h": row(XML, "const kiv::xml::const_Element& element, std::string& name", SET_INCLUDES,
                            before='constexpr const char* NameTag = "Name";'),
    "OrderedSets.h": row(DEF, "const xml::SetDef& set, const OrderedSets& others, std::vector<const xml::SetDef*>& answer",
                         [IN + "IfcDefBase.h"]),
    "SetsByClass.h": row(DEF, "SetsByClass& index, const xml::SetDef& set, const schema::Entity& entity",
                         [IN + "IfcDefBase.h", *ENTITY]),
    # What is found is another variable than what was added.
    "GuidTable.h": row(DEF, "const kiv::Guid& guid, const xml::Def& def", [IN + "IfcDefBase.h"],
                       replace={"const auto* def": "const auto* found"}),
    "BloomBits.h": row(BASE, "std::string_view name, std::string_view other", ["array"],
                       replace={"return nullptr;": "return;"}),
    "ProbeTable.h": row(BASE, "Object* object, std::string_view name, std::string_view asked", ["Base/NameTable.h"],
                        before="struct Object {};"),
    "IfcSchemaBuilder.h": row(
        SCHEMA, "Schema& self, std::istream& stream, const std::string& headerLine, std::size_t schemaPos", ENTITY,
        replace={"(*this, nullptr)": "(self, nullptr)"}),
    "ExpressExpression.h": row(SCHEMA, "const ParsedRule& rule, ExpressionVisitor& printer",
                               [IN + "Schema/IfcSchemaWhere.h"],
                               replace={"struct NamePrinter : ExpressionVisitor { ... };": "struct NamePrinter;"}),
    "ExpressParser.h": row(SCHEMA, "const Schema& schema", ENTITY),
    "ExpressTokenizer.h": row(SCHEMA),
    "IfcSchemaAttributeSearch.h": row(SCHEMA, "const Entity& wall", ENTITY),
    "IfcSchemaKeyword.h": row(SCHEMA, "std::string_view line"),
    "IfcSchemaUnsigned.h": row(SCHEMA),
})

# The kit.
KIT = "kiv::kit"
KIT_DOCUMENT = "kiv/Kit/Documents/SetDocument.h"
KIT_RUN = row(KIT, "RuleRun& run", ["Kit/Findings/RuleRun.h"])
KIT_ELEMENT = row(KIT, "RuleRun& run, XmlIndex element", ["Kit/Findings/RuleRun.h"])
SCHEMA_PARAMETER = "const kiv::ifc::def::schema::Schema& schema"
SITE = TOOL + "::site"
SITE_WRITE = "template <class... T> void write(T&&...) {}"


def site_row(parameters, before=SITE_WRITE, **more):
    """All of a site is there, as far as a page needs it."""
    return row(SITE, parameters,
               ["kivifc/Site/Addresses.h", "kivifc/Site/Elements.h", "kivifc/Site/RowIds.h", "kivifc/Site/SiteFolder.h",
                "kivifc/Site/SiteModel.h", IN + "IfcDefBase.h", *ENTITY],
               before=before, **more)


SITE_PAGES = site_row("const SiteModel& model, SiteFolder& folder")
SITE_OF_WALL = site_row("const SiteModel& model, const ifc::def::schema::Entity& wall, RowIds& ids, Html& html")
SITE_SURROUNDINGS = {
    "Address.h": site_row("const Addresses& addresses, const ifc::def::schema::Entity& wall, Html& html"),
    "Addresses.h": site_row("const ifc::def::schema::Entity* wall"),
    "Assets.h": site_row("SiteFolder& folder"),
    "Declarations.h": site_row("const SchemaFile& file, const ifc::def::schema::ObjectBase* function, "
                               "const ifc::def::schema::Entity* entity"),
    "DeclaredNames.h": site_row("const ifc::def::schema::Schema& schema, const Declarations& declarations"),
    "DefinitionsFile.h": SITE_PAGES,
    "Diagram.h": SITE_OF_WALL,
    "DistinctRules.h": site_row("const ifc::def::schema::Type& type"),
    "Elements.h": site_row("const std::string& name, Html& html"),
    "EntityAttributes.h": SITE_OF_WALL,
    "EntityPage.h": SITE_PAGES,
    "EntitySets.h": SITE_OF_WALL,
    "EnumeratedItems.h": site_row("const ifc::def::pset::TypePropertyEnumeratedValue& type"),
    "ExpressHtml.h": SITE_OF_WALL,
    "ExpressKeywords.h": site_row(""),
    "ExpressWords.h": site_row("std::string_view text"),
    "ExpressionLayout.h": site_row("const ifc::def::schema::Expression& expression"),
    "GuidIndexPages.h": SITE_PAGES,
    "GuidNotations.h": site_row("const Guid& guid"),
    "Html.h": site_row("const std::string& name"),
    "IndexElements.h": site_row("const std::vector<const ifc::def::schema::Entity*>& entities, Html& html"),
    "IndexPages.h": site_row("const SiteModel& model, Html& html"),
    "LanguageIndexPages.h": SITE_PAGES,
    "LocalNames.h": row(SITE, "std::string_view text", ["kivifc/Site/ExpressWords.h"],
                        before="inline void use(std::string_view) {}"),
    "MemberList.h": site_row("const Addresses& addresses, const ifc::def::xml::SetDef& set"),
    "MemberType.h": site_row("const SiteModel& model, const ifc::def::xml::Def& def, Html& html"),
    "MemberUses.h": site_row("const ifc::def::schema::Schema& schema, "
                             "const std::vector<const ifc::def::xml::SetDef*>& sets, "
                             "const ifc::def::schema::ObjectBase* label"),
    "MemberTable.h": site_row("const SiteModel& model"),
    "NameGroups.h": site_row("const std::vector<std::string_view>& names"),
    "ObjectIndexPages.h": SITE_PAGES,
    "Page.h": site_row("const SiteModel& model, const Addresses& addresses, "
                       "const ifc::def::schema::Entity& wall, const std::string& text, SiteFolder& folder"),
    "PropertyIndexPages.h": SITE_PAGES,
    "RedeclaredName.h": site_row(""),
    "RowIds.h": site_row("Html& html"),
    "RuleHtml.h": SITE_OF_WALL,
    "ScriptText.h": site_row("std::string& script, const std::string& name"),
    "SearchIndex.h": site_row(""),
    "SearchIndexFile.h": SITE_PAGES,
    "SetClasses.h": site_row("const SiteModel& model, const SiteSet& set, Html& html"),
    "SetFindings.h": site_row("const SiteModel& model, const SiteSet& set"),
    "SetIndexPage.h": SITE_PAGES,
    "SetMembers.h": site_row("const SiteModel& model, const SiteSet* set, Html& html"),
    "SetPage.h": SITE_PAGES,
    "SiteFolder.h": site_row("const Addresses& addresses, const ifc::def::schema::Entity& wall, "
                             "const std::string& text, bool isForced"),
    "SiteMark.h": site_row("const std::filesystem::path& folder",
                           replace={"return reason; // somebody else has files there": "use(reason);"}),
    "SiteModel.h": site_row("const SchemaWithSets& loaded"),
    "SitePages.h": SITE_PAGES,
    "StartPage.h": SITE_PAGES,
    "TextPage.h": SITE_PAGES,
    "Translations.h": site_row("const ifc::def::xml::Def& def, Html& html"),
    "TypeHtml.h": site_row("const SiteModel& model, const ifc::def::schema::Attribute& attribute, Html& html"),
    "TypePage.h": SITE_PAGES,
    "Uses.h": site_row("const ifc::def::schema::Schema& schema, const Declarations& declarations, "
                       "const DeclaredNames& names, const ifc::def::schema::ObjectBase* label"),
    "UsesHtml.h": site_row("const SiteModel& model, const ifc::def::schema::ObjectBase& label, Html& html"),
    "ValueMembers.h": SITE_OF_WALL,
    "WrittenGuids.h": site_row("const ifc::def::xml::Def& member, Html& html"),
}

KIT_SURROUNDINGS = {
    "AcrossDocuments.h": row(KIT, "const std::vector<SetDocument>& documents, const ifc::def::schema::Schema* schema",
                             [KIT_DOCUMENT, "kiv/Kit/Findings/Findings.h"]),
    "AcrossRules.h": row(KIT, "const SetDocument& document, const SetOutline& outline, std::string_view context",
                         [KIT_DOCUMENT, "Kit/Findings/SetOutline.h"]),
    "AsciiText.h": row(KIT),
    "ByteOrderMark.h": row(KIT, "std::string_view text"),
    "ClassRules.h": KIT_RUN,
    "ClassText.h": row(KIT),
    "DataTypeKinds.h": row(KIT, "const kiv::ifc::def::schema::DataTypeBase& dataType"),
    "DocumentationRules.h": KIT_RUN,
    "ElementAttributes.h": KIT_ELEMENT,
    "ElementCounts.h": KIT_ELEMENT,
    "ElementTexts.h": KIT_ELEMENT,
    "EightBytes.h": row(KIT, "std::string_view text, std::size_t& codePoints", ["string_view"]),
    "EnumerationItems.h": row(KIT, "RuleRun& run, const MemberOutline& member"),
    "ExampleDocuments.h": row(KIT),
    "ExpressPositions.h": row(KIT, "const std::string& text"),
    "ExpressScanner.h": row(KIT, "const std::string& text"),
    "ExpressTypeText.h": row(KIT, "const kiv::ifc::def::schema::Attribute& attribute", ENTITY),
    "ExpressionOperators.h": row(KIT, "const kiv::ifc::def::schema::BinaryExpression& node",
                                 [IN + "Schema/ExpressExpression.h"]),
    "ExpressionText.h": row(KIT, "const kiv::ifc::def::schema::ParsedRule& rule, "
                                 "const kiv::ifc::def::schema::Schema& schema",
                            [IN + "Schema/IfcSchema.h", IN + "Schema/IfcSchemaWhere.h"]),
    "ExpressionWalk.h": row(KIT, "const kiv::ifc::def::schema::ParsedRule& rule", [IN + "Schema/IfcSchemaWhere.h"]),
    "FileKind.h": row(KIT),
    "Finding.h": row(KIT, "const std::vector<Finding>& findings"),
    "Findings.h": row(KIT, SCHEMA_PARAMETER, [KIT_DOCUMENT]),
    "FixedValues.h": KIT_ELEMENT,
    "IgnoreComments.h": row(KIT, "const SetDocument& document, std::vector<Finding>& findings",
                            [KIT_DOCUMENT, "kiv/Kit/Positions/XmlPositions.h"]),
    "InvisibleCharacters.h": row(KIT),
    "KnownNames.h": row(KIT, SCHEMA_PARAMETER),
    "IgnoreText.h": row(KIT),
    "KeywordSet.h": row(KIT, includes=["array"]),
    "KeptLists.h": row(KIT, "const std::vector<double>& found", ["vector"]),
    "LookAlikeNotes.h": KIT_RUN,
    "LookAlikes.h": row(KIT),
    "NameIndex.h": row(KIT, "const std::vector<std::string>& names, std::size_t hash", ["string", "vector"]),
    "NameKeys.h": row(KIT, includes=["unordered_set"]),
    "LegalNames.h": row(KIT, replace={'{"PropertyDef", "Name"}': "names"},
                        before='inline constexpr std::string_view names[] = {"PropertyDef", "Name"};'),
    "LibraryReports.h": row(KIT, "RuleRun& run", ["Kit/Findings/RuleRun.h"]),
    "MissingChild.h": KIT_RUN,
    "MisspeltKeyword.h": row(KIT, "std::span<const std::string_view> keywords"),
    "NearestName.h": row(KIT, SCHEMA_PARAMETER, ["kiv/Kit/Names/KnownNames.h"]),
    "ReadFailure.h": row(KIT, "const SetDocument& document", [KIT_DOCUMENT]),
    "ReadOptions.h": row(KIT, includes=[KIT_DOCUMENT]),
    "Assertion.h": row(KIT, "const kiv::assert::AssertInfo& info, kiv::WorkMeter& meter"),
    "MeteredRoom.h": row(KIT, "std::vector<int>& elements, int element, kiv::WorkMeter* meter", ["vector"]),
    "PositionAfter.h": row(KIT),
    "PredefinedTypes.h": row(KIT, "const kiv::ifc::def::schema::Entity& entity"),
    "Reading.h": row(KIT, "SetDocument& file, std::string& text, kiv::ifc::def::BudgetMeter& meter", [KIT_DOCUMENT, "new"],
                     before="inline void vRead(SetDocument&, TextFile) {}"),
    "ReleaseRules.h": KIT_RUN,
    "Rule.h": row(KIT),
    "RuleNames.h": row(KIT, "RuleRun& run, FindingDraft& draft", ["Kit/Findings/RuleRun.h"]),
    "RuleRun.h": row(KIT, isNamespaceScope=True),
    "SchemaFile.h": row(KIT),
    "SchemaFindings.h": row(KIT, SCHEMA_PARAMETER + ", const std::vector<kiv::assert::AssertRecord>& assertions, "
                                 "const std::string& text"),
    "SchemaLines.h": row(KIT, "const std::string& text"),
    "SchemaRelease.h": row(KIT, SCHEMA_PARAMETER, [IN + "Schema/IfcSchema.h"], before="inline void vWarn() {}"),
    "SchemaRules.h": row(KIT),
    "SchemaRun.h": row(KIT, isNamespaceScope=True),
    "SchemaValues.h": row(KIT, SCHEMA_PARAMETER + ", const kiv::ifc::def::schema::Type& measure", ENTITY),
    "SetCheckContext.h": row(KIT, SCHEMA_PARAMETER + ", const kiv::ifc::def::schema::Schema& ifc2x3, "
                                  "const SetDocument& document", [KIT_DOCUMENT, "kiv/Kit/Findings/Findings.h"]),
    "SetCollection.h": row(KIT, "const kiv::ifc::def::SchemaPset* schema, "
                                "kiv::ifc::def::SchemaContextAndPropertySetDefinitions& registry",
                           [IN + "SchemaPset.h", IN + "SchemaContextAndPropertySetDefinitions.h",
                            "kiv/Kit/Documents/SetPaths.h"]),
    "SetDocument.h": row(KIT, SCHEMA_PARAMETER),
    "SetMembers.h": row(KIT, "const kiv::ifc::def::xml::SetDef& set"),
    "SetOutline.h": row(KIT, "const SetDocument& document", [KIT_DOCUMENT]),
    "SetPaths.h": row(KIT, includes=[KIT_DOCUMENT]),
    "SetVocabulary.h": row(KIT, "const XmlPositions& xml, const SetOutline& outline, XmlIndex element"),
    "TextFile.h": row(KIT, "const kiv::ifc::def::Budget& budget", [IN + "IfcBudget.h"]),
    "TextLines.h": row(KIT, "const std::string& text", ["iostream", "string"]),
    "TextPosition.h": row(KIT),
    "ThreadSink.h": row(KIT, before="template <class... T> void vKeep(T&&...) {}\ninline void vRead() {}"),
    "TypeRules.h": KIT_RUN,
    "TypedValues.h": row(KIT, "RuleRun& run, const TypeOutline& type, const kiv::ifc::def::schema::Type& measure"),
    "UnknownElements.h": KIT_ELEMENT,
    "Utf8.h": row(KIT),
    "ViewStream.h": row(KIT, "kiv::xml::File& file, std::string_view text", ["kiv/Host/Xml/KivXml.h"]),
    "XmlChildren.h": row(KIT, "const XmlPositions& xml, XmlIndex element"),
    "WellFormedXml.h": row(KIT, "std::string_view text", before="inline void vUse(std::string_view) {}"),
    "XmlMistake.h": row(KIT, "Finding& finding, const SetDocument& document", [KIT_DOCUMENT]),
    "XmlDecoding.h": row(KIT, "const std::string& bytes"),
    "XmlPositions.h": row(KIT, "std::string& bytes"),
    "XmlTagScanner.h": row(KIT, "std::string_view text, std::size_t nameEnd, std::size_t tagEnd"),
}
