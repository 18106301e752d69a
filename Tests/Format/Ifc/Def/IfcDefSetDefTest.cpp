#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include "Format/Ifc/Def/DefDoubles.h"
#include "Support/ErrorRecords.h"
#include "Support/Growth.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

namespace {

using ifc::def::xml::ErrorKind;
using ifc::def::xml::TemplateType;
using ifc::def::xml::XmlSetErrors;

constexpr const char* NotInSchema = "Applicable class in xml set is not defined in schema (contain spaces?)";
constexpr const char* NoAttribute =
    "Predefined type set on xml set, but no \"PredefinedType\" attribute found on entity";
constexpr const char* NoDefinedType = "Attribute predefinedType is doesnt exist on entity";
constexpr const char* NoSuchItem =
    "Predefined type set on xml set, but the value is illegal for this enumeration";

PlainSet setOf(std::string_view xml, XmlSetErrors& errors) {
    return PlainSet(XmlFromText(xml).root(), errors);
}

/// A set that applies to these classes, one a line from line 2 on.
std::string sSetText(const std::vector<std::string>& classes) {
    std::string xml = "<s><Name>Set</Name><ApplicableClasses>";
    for (const auto& name : classes)
        xml += "\n<ClassName>" + name + "</ClassName>";
    return xml + "</ApplicableClasses></s>";
}

std::vector<std::string> classesOf(std::string_view xml) {
    XmlSetErrors errors;
    const auto set = setOf(xml, errors);
    std::vector<std::string> classes;
    for (const auto& applicable : set.getApplicableClasses())
        classes.push_back(applicable.getClassName() + "|" + applicable.getPredefinedType());
    return classes;
}

using Texts = std::vector<std::string>;

TEST(SetDef, MadeInCodeHasANameAndNothingElse) {
    const PlainSet set("Set");
    EXPECT_EQ(set.getName(), "Set");
    EXPECT_EQ(set.getDefinition(), "");
    EXPECT_EQ(set.getIfcVersion(), "");
    EXPECT_EQ(set.getTemplateType(), TemplateType::NOTDEFINED);
    EXPECT_TRUE(set.getApplicableClasses().empty());
    EXPECT_EQ(set.getApplicableTypeValue(), "");
}

struct TemplateRow {
    const char* text;
    int number;
};

TEST(SetDef, TemplateTypeIsReadByItsText) {
    const TemplateRow rows[] = {
        {"PSET_TYPEDRIVENONLY", 0},   {"PSET_TYPEDRIVENOVERRIDE", 1},
        {"PSET_OCCURRENCEDRIVEN", 2}, {"PSET_PERFORMANCEDRIVEN", 3},
        {"PSET_MATERIALDRIVEN", 4},   {"PSET_PROFILEDRIVEN", 5},
        {"QTO_TYPEDRIVENONLY", 6},    {"QTO_TYPEDRIVENOVERRIDE", 7},
        {"QTO_OCCURRENCEDRIVEN", 8},  {"NOTDEFINED", 9},
    };
    for (const TemplateRow& row : rows) {
        SCOPED_TRACE(row.text);
        XmlSetErrors errors;
        const auto set = setOf("<s templatetype='" + std::string(row.text) + "'/>", errors);
        EXPECT_EQ(static_cast<int>(set.getTemplateType()), row.number);
        EXPECT_EQ(ifc::def::xml::sTemplateTypeText(set.getTemplateType()), row.text);
        EXPECT_EQ(errors.getRecords(), Records());
    }
}

TEST(SetDef, TemplateTypeInLowerCaseIsRecordedAndNotDefined) {
    XmlSetErrors errors;
    const auto set = setOf("<!-- c -->\n<s templatetype='pset_typedrivenonly'/>", errors);
    EXPECT_EQ(set.getTemplateType(), TemplateType::NOTDEFINED);
    EXPECT_EQ(errors.getRecords(), (Records{error("pset_typedrivenonly", "Illegal templatetype used", 2)}));
}

TEST(SetDef, EmptyAndAbsentTemplateTypesAreNotDefinedInSilence) {
    for (const char* xml : {"<s/>", "<s templatetype=''/>"}) {
        SCOPED_TRACE(xml);
        XmlSetErrors errors;
        EXPECT_EQ(setOf(xml, errors).getTemplateType(), TemplateType::NOTDEFINED);
        EXPECT_EQ(errors.getRecords(), Records());
    }
}

TEST(SetDef, IllegalGuidIsRecordedBeforeIllegalTemplateType) {
    XmlSetErrors errors;
    setOf("<s templatetype='x' ifdguid='y'/>", errors);
    EXPECT_EQ(errors.getRecords(), (Records{error("y", "Illegal ifdguid in xml file", 1),
                                            error("x", "Illegal templatetype used", 1)}));
}

TEST(SetDef, VersionIsTheAttribute) {
    XmlSetErrors errors;
    const auto set = setOf("<s><IfcVersion version='2x4'>ignored</IfcVersion></s>", errors);
    EXPECT_EQ(set.getIfcVersion(), "2x4");
    EXPECT_EQ(set.refusedTags, Texts());
}

TEST(SetDef, VersionWithoutItsAttributeIsLeftToTheDerivedClass) {
    XmlSetErrors errors;
    const auto set = setOf("<s><IfcVersion version='2x4'/><IfcVersion>IFC4</IfcVersion></s>", errors);
    EXPECT_EQ(set.getIfcVersion(), "2x4");
    EXPECT_EQ(set.refusedTags, Texts{"IfcVersion"});
}

TEST(SetDef, ApplicableTypeValueIsTakenAsItStands) {
    XmlSetErrors errors;
    const auto set =
        setOf("<s><ApplicableTypeValue> IfcWall </ApplicableTypeValue><ApplicableTypeValue/></s>", errors);
    EXPECT_EQ(set.getApplicableTypeValue(), " IfcWall ");
    EXPECT_EQ(set.refusedTags, Texts());
}

TEST(SetDef, UnknownTagsAreLeftToTheDerivedClass) {
    XmlSetErrors errors;
    const auto set = setOf("<s><NameAliases/><applicableClasses/><ApplicableClass/></s>", errors);
    EXPECT_EQ(set.refusedTags, (Texts{"NameAliases", "applicableClasses", "ApplicableClass"}));
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(SetDef, BlanksAroundAnApplicableClassAreRemoved) {
    EXPECT_EQ(classesOf(sSetText({"  IfcWall/SOLIDWALL  "})), Texts{"IfcWall|SOLIDWALL"});
}

TEST(SetDef, SecondSlashBelongsToThePredefinedType) {
    EXPECT_EQ(classesOf(sSetText({"IfcWall//X"})), Texts{"IfcWall|/X"});
}

TEST(SetDef, ApplicableClassOfBlanksOnlyIsDropped) {
    EXPECT_EQ(classesOf(sSetText({"   "})), Texts());
}

TEST(SetDef, TabsAndLineBreaksStayInTheApplicableClass) {
    EXPECT_EQ(classesOf(sSetText({"\tIfcWall ", " \n", "IfcWall\n"})),
              (Texts{"\tIfcWall|", "\n|", "IfcWall\n|"}));
}

TEST(SetDef, ApplicableClassesKeepOrderAndRepetitions) {
    EXPECT_EQ(classesOf(sSetText({"IfcWall", "IfcBeam", "IfcWall"})),
              (Texts{"IfcWall|", "IfcBeam|", "IfcWall|"}));
}

TEST(SetDef, SecondListOfApplicableClassesIsAdded) {
    EXPECT_EQ(classesOf("<s><ApplicableClasses><ClassName>A</ClassName></ApplicableClasses>"
                        "<ApplicableClasses><ClassName>B</ClassName></ApplicableClasses></s>"),
              (Texts{"A|", "B|"}));
}

TEST(SetDef, OtherElementsAndEmptyClassNamesAreSkippedInSilence) {
    XmlSetErrors errors;
    const auto set = setOf("<s><ApplicableClasses><Other>A</Other><className>B</className><ClassName/>"
                           "<ClassName><b>C</b></ClassName></ApplicableClasses></s>",
                           errors);
    EXPECT_TRUE(set.getApplicableClasses().empty());
    EXPECT_EQ(set.refusedTags, Texts());
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(SetDef, ReadingTwiceAsManyApplicableClassesTakesAboutTwiceAsLong) {
    const double growth = growthFrom(100'000, [](std::size_t count) {
        auto document = std::make_shared<XmlFromText>(sSetText(Texts(count, "IfcWall/SOLIDWALL")));
        return [count, document] {
            XmlSetErrors errors;
            EXPECT_EQ(PlainSet(document->root(), errors).getApplicableClasses().size(), count);
        };
    });
    EXPECT_LE(growth, ProportionalGrowth);
}

TEST(SetDef, IsWrittenWithEmptyElements) {
    XmlTarget target("s");
    PlainSet("").vExportCommon(target.root());
    EXPECT_EQ(target.sText(), "<s><Name/><Definition/><ApplicableClasses/><ApplicableTypeValue/></s>");
}

TEST(SetDef, IsWrittenInFixedOrderWithoutGuidTemplateTypeVersionAndAliases) {
    XmlSetErrors errors;
    const auto set =
        setOf("<s ifdguid='e098e980d1bc11e1800000215ad4efdf' templatetype='PSET_TYPEDRIVENONLY'>"
              "<ApplicableTypeValue>V</ApplicableTypeValue>"
              "<ApplicableClasses><ClassName> IfcWall/SOLIDWALL</ClassName><ClassName>IfcBeam</ClassName>"
              "</ApplicableClasses><IfcVersion version='IFC4'/>"
              "<Definition>D</Definition><Name>N</Name></s>",
              errors);
    XmlTarget target("s");
    set.vExportCommon(target.root());
    EXPECT_EQ(target.sText(), "<s><Name>N</Name><Definition>D</Definition><ApplicableClasses>"
                              "<ClassName>IfcWall/SOLIDWALL</ClassName><ClassName>IfcBeam</ClassName>"
                              "</ApplicableClasses><ApplicableTypeValue>V</ApplicableTypeValue></s>");
}

constexpr std::string_view Schema = "TYPE IfcLabel = STRING;\n"
                                    "END_TYPE;\n"
                                    "TYPE IfcWallTypeEnum = ENUMERATION OF\n"
                                    "\t(SOLIDWALL\n"
                                    "\t,PARTITIONING);\n"
                                    "END_TYPE;\n"
                                    "TYPE IfcSameAsWallTypeEnum = IfcWallTypeEnum;\n"
                                    "END_TYPE;\n"
                                    "ENTITY IfcElement;\n"
                                    "\tName : OPTIONAL IfcLabel;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcWall\n"
                                    " SUBTYPE OF (IfcElement);\n"
                                    "\tPredefinedType : OPTIONAL IfcWallTypeEnum;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcWallElementedCase\n"
                                    " SUBTYPE OF (IfcWall);\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcOddWall\n"
                                    " SUBTYPE OF (IfcWall);\n"
                                    "\tPREDEFINEDtype : IfcLabel;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcChain;\n"
                                    "\tPredefinedType : IfcSameAsWallTypeEnum;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcToEntity;\n"
                                    "\tPredefinedType : IfcWall;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcToString;\n"
                                    "\tPredefinedType : STRING;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcToList;\n"
                                    "\tPredefinedType : LIST [1:?] OF IfcWallTypeEnum;\n"
                                    "END_ENTITY;\n"
                                    "ENTITY IfcToNothing;\n"
                                    "\tPredefinedType : IfcMissing;\n"
                                    "END_ENTITY;\n"
                                    "FUNCTION IfcSomeFunction;\n"
                                    "END_FUNCTION;\n";

struct CheckRow {
    const char* className;
    /// Null when there is no record.
    const char* message;
    const char* item;
    bool passes;
};

TEST(SetDef, CheckComparesEachApplicableClassWithTheSchema) {
    const CheckRow rows[] = {
        {"IfcElement", nullptr, "", true},
        {"ifcELEMENT", nullptr, "", true},
        {"IfcWall", nullptr, "", true},
        {"IfcWall/SOLIDWALL", nullptr, "", true},
        {"ifcwall/PARTITIONING", nullptr, "", true},
        {"IfcWallElementedCase/SOLIDWALL", nullptr, "", true},
        {"IfcChain/SOLIDWALL", nullptr, "", true},
        {"IfcToEntity", nullptr, "", true},
        {"IfcWal", NotInSchema, "IfcWal", true},
        {"IfcWal/SOLIDWALL", NotInSchema, "IfcWal", true},
        {"IfcWall\t", NotInSchema, "IfcWall\t", true},
        {"Ifc Wall", NotInSchema, "Ifc Wall", true},
        {"/SOLIDWALL", NotInSchema, "", true},
        {"IfcLabel", NotInSchema, "IfcLabel", true},
        {"IfcSomeFunction", NotInSchema, "IfcSomeFunction", true},
        {"IfcElement/SOLIDWALL", NoAttribute, "IfcElement/SOLIDWALL", true},
        {"IfcElement//", NoAttribute, "IfcElement//", true},
        {"IfcToEntity/A", NoDefinedType, "IfcToEntity/A", false},
        {"IfcToString/A", NoDefinedType, "IfcToString/A", false},
        {"IfcToList/SOLIDWALL", NoDefinedType, "IfcToList/SOLIDWALL", false},
        {"IfcToNothing/A", NoDefinedType, "IfcToNothing/A", false},
        {"IfcWall/solidwall", NoSuchItem, "IfcWall", true},
        {"IfcWall/SOLIDWALL ", nullptr, "", true},
        {"IfcWall/ SOLIDWALL", NoSuchItem, "IfcWall", true},
        {"IfcOddWall/SOLIDWALL", NoSuchItem, "IfcOddWall", true},
    };
    const auto schema = schemaFromText(Schema);
    for (const CheckRow& row : rows) {
        SCOPED_TRACE(row.className);
        XmlSetErrors errors;
        const auto set = setOf(sSetText({row.className}), errors);
        EXPECT_EQ(set.checkForErrors(*schema, errors), row.passes);
        EXPECT_EQ(errors.getRecords(), row.message ? Records{error(row.item, row.message, 2)} : Records());
        EXPECT_EQ(errors.getSetName(), row.message ? "Set" : "");
    }
}

TEST(SetDef, CheckOfOneClassDoesNotChangeThatOfTheNext) {
    const auto schema = schemaFromText(Schema);
    XmlSetErrors errors;
    const auto set = setOf(sSetText({"IfcElement/A", "IfcWallElementedCase/SOLIDWALL", "IfcWall/SOLIDWALL",
                                     "IfcOddWall/SOLIDWALL", "IfcWallElementedCase/A", "IfcElement/SOLIDWALL",
                                     "IfcWall/PARTITIONING", "IfcOddWall/PARTITIONING"}),
                           errors);
    EXPECT_TRUE(set.checkForErrors(*schema, errors));
    EXPECT_EQ(errors.getRecords(),
              (Records{error("IfcElement/A", NoAttribute, 2), error("IfcOddWall", NoSuchItem, 5),
                       error("IfcWallElementedCase", NoSuchItem, 6),
                       error("IfcElement/SOLIDWALL", NoAttribute, 7), error("IfcOddWall", NoSuchItem, 9)}));
}

/// A line of that many entities, E0 at its top with an attribute for the predefined type.
std::string sLineSchema(std::size_t count) {
    std::string text = "TYPE Kind = ENUMERATION OF\n\t(A);\nEND_TYPE;\n"
                       "ENTITY E0;\n\tPredefinedType : Kind;\nEND_ENTITY;\n";
    for (std::size_t i = 1; i < count; ++i)
        text +=
            "ENTITY E" + std::to_string(i) + "\n SUBTYPE OF (E" + std::to_string(i - 1) + ");\nEND_ENTITY;\n";
    return text;
}

/// How the check of as many classes as the line has entities grows; `classAt` names the class at an index.
template <typename ClassAt>
double checkGrowthOf(std::size_t size, const ClassAt& classAt) {
    return growthFrom(size, [&](std::size_t count) {
        Texts classes;
        for (std::size_t i = 0; i != count; ++i)
            classes.push_back("E" + std::to_string(classAt(i, count)) + "/A");
        const XmlFromText document(sSetText(classes));
        XmlSetErrors none;
        return [set = std::make_shared<PlainSet>(document.root(), none),
                schema = std::shared_ptr(schemaFromText(sLineSchema(count)))] {
            XmlSetErrors errors;
            EXPECT_TRUE(set->checkForErrors(*schema, errors));
            EXPECT_EQ(errors.getRecords(), Records());
        };
    });
}

TEST(SetDef, ClassThatIsNamedAgainAndAgainIsNotSearchedThroughItsSupertypesAgain) {
    EXPECT_LE(checkGrowthOf(10'000, [](std::size_t, std::size_t count) { return count - 1; }),
              ProportionalGrowth);
}

TEST(SetDef, ClassesOfOneLineAreNotSearchedThroughSupertypesThatWereSearched) {
    EXPECT_LE(checkGrowthOf(10'000, [](std::size_t i, std::size_t) { return i; }), ProportionalGrowth);
}

TEST(SetDef, CheckWithoutApplicableClassesPassesWithoutRecord) {
    const auto schema = schemaFromText(Schema);
    XmlSetErrors errors;
    EXPECT_TRUE(setOf("<s><Name>Set</Name></s>", errors).checkForErrors(*schema, errors));
    EXPECT_EQ(errors.getRecords(), Records());
    EXPECT_EQ(errors.getSetName(), "");
}

struct ResultRow {
    Texts classes;
    bool passes;
};

TEST(SetDef, CheckFailsOnlyWhenTheLastRecordIsAboutADefinedType) {
    const ResultRow rows[] = {
        {{"IfcToString/A"}, false},
        {{"IfcToString/A", "IfcWall"}, false},
        {{"IfcWal", "IfcToString/A"}, false},
        {{"IfcToString/A", "IfcWal"}, true},
        {{"IfcToString/A", "IfcElement/A"}, true},
        {{"IfcToString/A", "IfcWall/A"}, true},
        {{"IfcToString/A", "IfcWal", "IfcToEntity/A"}, false},
    };
    const auto schema = schemaFromText(Schema);
    for (const ResultRow& row : rows) {
        SCOPED_TRACE(sSetText(row.classes));
        XmlSetErrors errors;
        EXPECT_EQ(setOf(sSetText(row.classes), errors).checkForErrors(*schema, errors), row.passes);
    }
}

TEST(SetDef, CheckRecordsEachClassOnItsOwnLine) {
    const auto schema = schemaFromText(Schema);
    XmlSetErrors errors;
    setOf(sSetText({"A", "IfcWall", "A"}), errors).checkForErrors(*schema, errors);
    EXPECT_EQ(errors.getRecords(), (Records{error("A", NotInSchema, 2), error("A", NotInSchema, 4)}));
}

TEST(SetDef, CheckNamesTheCollectorAlsoForRecordsOfReading) {
    const auto schema = schemaFromText(Schema);
    XmlSetErrors errors;
    const auto set = setOf("<s templatetype='x'><Name>Set</Name></s>", errors);
    EXPECT_EQ(errors.getSetName(), "");
    EXPECT_TRUE(set.checkForErrors(*schema, errors));
    EXPECT_EQ(errors.getSetName(), "Set");
    EXPECT_EQ(errors.getRecords(), (Records{error("x", "Illegal templatetype used", 1)}));
}

} // namespace

} // namespace kiv::test
