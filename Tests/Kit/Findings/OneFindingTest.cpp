// One mistake, one finding: what follows from a mistake is not reported beside it.
#include "Kit/Findings/FindingLines.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

struct Mistake {
    std::string_view name;
    std::string text;
    /// LINE:COLUMN CODE of the finding, with the path before it in several documents.
    std::string_view finding;
};

void PrintTo(const Mistake& mistake, std::ostream* stream) {
    *stream << mistake.name;
}

/// The classes are in line 3; properties begin in line 5.
std::string
sSet(std::string_view properties, std::string_view name = "Pset_Wall",
     std::string_view classes = "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>",
     std::string_view attributes = {}) {
    std::string text = "<PropertySetDef";
    text.append(attributes).append("><IfcVersion version=\"IFC4\"/>\n<Name>").append(name);
    text.append("</Name><Definition>D</Definition>\n").append(classes).append("\n<PropertyDefs>\n");
    return text.append(properties).append("\n</PropertyDefs></PropertySetDef>\n");
}

std::string sProperty(std::string_view kind, std::string_view name = "Mark",
                      std::string_view attributes = {}) {
    std::string text = "<PropertyDef";
    text.append(attributes).append("><Name>").append(name).append("</Name><Definition>D</Definition>\n");
    return text.append("<PropertyType>").append(kind).append("</PropertyType></PropertyDef>");
}

std::string sSingle(std::string_view dataType) {
    return "<TypePropertySingleValue>" + std::string(dataType) + "</TypePropertySingleValue>";
}

std::string sOf(std::string_view type) {
    return sSingle("<DataType type=\"" + std::string(type) + "\"/>");
}

std::string sEnumeration(std::string_view content) {
    return "<TypePropertyEnumeratedValue>" + std::string(content) + "</TypePropertyEnumeratedValue>";
}

std::string sItems(std::string_view first, std::string_view second) {
    std::string list("<EnumList name=\"PEnum_A\"><EnumItem>");
    list.append(first).append("</EnumItem><EnumItem>").append(second).append("</EnumItem></EnumList>");
    return sEnumeration(list);
}

std::string sClasses(std::string_view name, std::string_view value) {
    return "<ApplicableClasses><ClassName>" + std::string(name) +
           "</ClassName></ApplicableClasses><ApplicableTypeValue>" + std::string(value) +
           "</ApplicableTypeValue>";
}

std::string sAlias(std::string_view attribute) {
    return "<PropertyDef><Name>Mark</Name><Definition>D</Definition>\n<NameAliases><NameAlias " +
           std::string(attribute) + ">Marke</NameAlias></NameAliases>\n<PropertyType>" + sOf("IfcLabel") +
           "</PropertyType></PropertyDef>";
}

std::string sQuantities(std::string_view name, std::string_view type) {
    return "<QtoSetDef><IfcVersion version=\"IFC4\"/>\n<Name>" + std::string(name) +
           "</Name><Definition>D</Definition>\n<ApplicableClasses><ClassName>IfcWall</ClassName>"
           "</ApplicableClasses>\n<QtoDefs>\n<QtoDef><Name>Mark</Name><Definition>D</Definition><QtoType>" +
           std::string(type) + "</QtoType></QtoDef>\n</QtoDefs></QtoSetDef>\n";
}

std::string sFiles(const std::vector<std::string>& files) {
    std::string text;
    for (std::size_t i = 0; i != files.size(); ++i)
        text.append("---- ").append(1, static_cast<char>('A' + i)).append(".xml\n").append(files[i]);
    return text;
}

constexpr std::string_view SetGuid = " ifdguid=\"11111111222233334444555555555550\"";
constexpr std::string_view Guid = " ifdguid=\"11111111222233334444555555555551\"";
constexpr std::string_view OtherGuid = " ifdguid=\"11111111222233334444555555555552\"";

std::string sTwoProperties() {
    return sProperty(sOf("IfcLabel"), "Mark", Guid) + "\n" + sProperty(sOf("IfcLabel"), "Other", OtherGuid);
}

class OneFindingTest : public testing::TestWithParam<Mistake> {};

TEST_P(OneFindingTest, OfOneMistake) {
    const auto findings = test::exampleFindings(GetParam().text);
    std::string found;
    for (const auto& finding : findings) {
        const auto& position = finding.place.position;
        const bool isAcross = GetParam().text.starts_with("---- ");
        found += (found.empty() ? "" : ", ") + (isAcross ? finding.place.path + ":" : std::string()) +
                 std::to_string(position.line) + ":" + std::to_string(position.column) + " " +
                 std::string(finding.code);
    }
    EXPECT_EQ(found, GetParam().finding) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Classes, OneFindingTest,
    testing::Values(
        Mistake{"an illegal predefined type",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall", sClasses("IfcWall/SOLID", "IfcWall/SOLIDWALL")),
                "3:31 C008"},
        Mistake{"a predefined type of an entity without",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall", sClasses("IfcDoor/SOLIDWALL", "IfcDoor/GATE")),
                "3:31 C009"},
        Mistake{"an illegal predefined type in both places",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall", sClasses("IfcWall/SOLID", "IfcWall/SOLID")),
                "3:31 C008"}));

INSTANTIATE_TEST_SUITE_P(
    Attributes, OneFindingTest,
    testing::Values(
        Mistake{"a misspelt language", sSet(sAlias("lan=\"de\"")), "6:25 S002"},
        Mistake{"a language in another letter case", sSet(sAlias("Lang=\"de\"")), "6:25 S003"},
        Mistake{"another word for the language", sSet(sAlias("language=\"de\"")), "6:25 S002"},
        Mistake{"the language attribute of XML", sSet(sAlias("xml:lang=\"de\"")), "6:15 L002"},
        Mistake{"a misspelt type", sSet(sProperty(sSingle("<DataType tpe=\"IfcLabel\"/>"))), "6:50 S002"},
        Mistake{"another word for the type", sSet(sProperty(sSingle("<DataType name=\"IfcLabel\"/>"))),
                "6:50 S002"},
        Mistake{"another word for what is referred to",
                sSet(sProperty("<TypePropertyReferenceValue entity=\"IfcPerson\"/>")), "6:43 S002"},
        Mistake{
            "an item as an attribute",
            sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\"><EnumItem>A</EnumItem><EnumItem "
                                        "value=\"B\"/></EnumList><ConstantList><ConstantDef><Name>B</Name>"
                                        "</ConstantDef></ConstantList>"))),
            "6:101 S002"},
        Mistake{
            "the only item as an attribute",
            sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\"><EnumItem value=\"B\"/></EnumList>"))),
            "6:79 S002"}));

INSTANTIATE_TEST_SUITE_P(
    Members, OneFindingTest,
    testing::Values(Mistake{"one member twice",
                            sFiles({sSet(sProperty(sOf("IfcLabel")) + "\n" + sProperty(sOf("IfcText")))}),
                            "A.xml:7:20 N006"},
                    Mistake{"one member twice with its GUID",
                            sSet(sProperty(sOf("IfcLabel"), "Mark", Guid) + "\n" +
                                 sProperty(sOf("IfcLabel"), "Mark", Guid)),
                            "7:63 N006"}));

/// A property with all that is needed, of which one thing is written as this.
std::string sPropertyOf(std::string_view name, std::string_view definition, std::string_view type) {
    std::string text = "<PropertyDef>";
    text.append(name).append("\n").append(definition).append("\n").append(type);
    return text.append("</PropertyDef>");
}

const std::string LabelType = "<PropertyType>" + sOf("IfcLabel") + "</PropertyType>";

INSTANTIATE_TEST_SUITE_P(
    OtherNames, OneFindingTest,
    testing::Values(
        Mistake{"a name", sSet(sPropertyOf("<Title>A</Title>", "<Definition>D</Definition>", LabelType)),
                "5:15 S001"},
        Mistake{"a definition",
                sSet(sPropertyOf("<Name>A</Name>", "<Description>D</Description>", LabelType)), "6:2 S001"},
        Mistake{"a type",
                sSet(sPropertyOf("<Name>A</Name>", "<Definition>D</Definition>",
                                 "<Type>" + sOf("IfcLabel") + "</Type>")),
                "7:2 S001"},
        Mistake{"the name of a property as its own",
                sSet(sPropertyOf("<PropertyName>A</PropertyName>", "<Definition>D</Definition>", LabelType)),
                "5:15 S001"},
        Mistake{"the list of classes",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall",
                     "<Classes><ClassName>IfcWall</ClassName></Classes>"),
                "3:2 S001"},
        Mistake{"a class",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall",
                     "<ApplicableClasses><ClassName>IfcDoor</ClassName><Class>IfcWall</Class>"
                     "</ApplicableClasses><ApplicableTypeValue>IfcWall</ApplicableTypeValue>"),
                "3:51 S001"},
        Mistake{"the items",
                sSet(sProperty(sEnumeration("<EnumerationList name=\"PEnum_A\"><EnumItem>A</EnumItem>"
                                            "</EnumerationList>"))),
                "6:45 S001"}));

INSTANTIATE_TEST_SUITE_P(
    LeftOut, OneFindingTest,
    testing::Values(
        Mistake{"the type of a property",
                sSet(sPropertyOf("<Name>A</Name>", "<Definition>D</Definition>", sOf("IfcLabel"))),
                "7:2 S001"},
        Mistake{"the list of items",
                sSet(sProperty(sEnumeration("<EnumItem>A</EnumItem><EnumItem>B</EnumItem>"))), "6:45 S001"},
        Mistake{"the list of classes",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall",
                     "<ClassName>IfcWall</ClassName><ClassName>IfcDoor</ClassName>"),
                "3:2 S001"},
        Mistake{"the list of constants",
                sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\"><EnumItem>A</EnumItem></EnumList>"
                                            "<ConstantDef><Name>A</Name></ConstantDef>"
                                            "<ConstantDef><Name>A</Name></ConstantDef>"))),
                "6:103 S001"},
        Mistake{"the list of translations",
                sSet(sPropertyOf("<Name>A</Name><NameAlias lang=\"de\">A</NameAlias>"
                                 "<NameAlias lang=\"fr\">A</NameAlias>",
                                 "<Definition>D</Definition>", LabelType)),
                "5:29 S001"},
        Mistake{"the range of bounds",
                sSet(sProperty("<TypePropertyBoundedValue><LowerBoundValue value=\"1.0\"/>"
                               "<UpperBoundValue value=\"2.0\"/><DataType type=\"IfcReal\"/>"
                               "</TypePropertyBoundedValue>")),
                "6:42 S001"},
        Mistake{"the value of a list",
                sSet(sProperty("<TypePropertyListValue><DataType type=\"IfcReal\"/><UnitType "
                               "type=\"TIMEUNIT\"/></TypePropertyListValue>")),
                "6:39 S001"}));

INSTANTIATE_TEST_SUITE_P(
    Elsewhere, OneFindingTest,
    testing::Values(
        Mistake{"a name as an attribute",
                sSet(sPropertyOf("<Name name=\"A\"/>", "<Definition>D</Definition>", LabelType)),
                "5:20 S002"},
        Mistake{"a name inside another element",
                sSet(sPropertyOf("<Name><Text>A</Text></Name>", "<Definition>D</Definition>", LabelType)),
                "5:21 S001"},
        Mistake{"a name as text", sSet(sPropertyOf("A", "<Definition>D</Definition>", LabelType)),
                "5:14 S016"},
        Mistake{"a definition as text", sSet(sPropertyOf("<Name>A</Name>", "D", LabelType)), "6:1 S016"},
        Mistake{"a type as text",
                sSet(sPropertyOf("<Name>A</Name>", "<Definition>D</Definition>",
                                 "<PropertyType>IfcLabel</PropertyType>")),
                "7:15 S016"},
        Mistake{"items as text", sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\">A, B</EnumList>"))),
                "6:69 S016"},
        Mistake{"a type as an attribute of its value",
                sSet(sProperty("<TypePropertySingleValue type=\"IfcLabel\"/>")), "6:40 S002"},
        Mistake{"a class as an attribute",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall",
                     "<ApplicableClasses><ClassName>IfcDoor</ClassName><ClassName name=\"IfcWall\"/>"
                     "</ApplicableClasses><ApplicableTypeValue>IfcWall</ApplicableTypeValue>"),
                "3:61 S002"},
        Mistake{"a quantity type as an attribute",
                "<QtoSetDef><IfcVersion version=\"IFC4\"/><Name>Qto_A</Name><Definition>D</Definition>"
                "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses><QtoDefs>\n<QtoDef>"
                "<Name>A</Name><Definition>D</Definition><QtoType type=\"Q_LENGTH\"/></QtoDef>"
                "</QtoDefs></QtoSetDef>",
                "2:58 S002"}));

INSTANTIATE_TEST_SUITE_P(
    Consequences, OneFindingTest,
    testing::Values(
        Mistake{"an item twice in the place of a constant",
                sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\"><EnumItem>A</EnumItem>"
                                            "<EnumItem>A</EnumItem></EnumList><ConstantList>"
                                            "<ConstantDef><Name>A</Name></ConstantDef>"
                                            "<ConstantDef><Name>B</Name></ConstantDef></ConstantList>"))),
                "6:101 T010"},
        Mistake{"the root of the other kind of set",
                "<QtoSetDef xmlns=\"http://buildingSMART-tech.org/xml/psd/PSD_IFC4.xsd\" "
                "templatetype=\"PSET_TYPEDRIVENONLY\"><IfcVersion version=\"IFC4\"/><Name>Pset_A</Name>"
                "<Definition>D</Definition><ApplicableClasses><ClassName>IfcWall</ClassName>"
                "</ApplicableClasses><PropertyDefs/><PsetDefinitionAliases/></QtoSetDef>",
                "1:2 S018"},
        Mistake{"a class in two letter cases",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall",
                     "<ApplicableClasses><ClassName>ifcWall</ClassName><ClassName>IfcWall</ClassName>"
                     "</ApplicableClasses>"),
                "3:31 C004"},
        Mistake{"a comment inside a class",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall",
                     "<ApplicableClasses><ClassName>Ifc<!-- x -->Wall</ClassName></ApplicableClasses>"),
                "3:44 S017"}));

INSTANTIATE_TEST_SUITE_P(
    Repeated, OneFindingTest,
    testing::Values(
        Mistake{"an empty name after that of a property",
                sSet(sPropertyOf("<Name>A</Name><Name/>", "<Definition>D</Definition>", LabelType)),
                "5:29 S006"},
        Mistake{"an empty name after that of a set", sSet(sProperty(sOf("IfcLabel")), "A</Name><Name>"),
                "2:16 S006"},
        Mistake{"an empty definition",
                sSet(sPropertyOf("<Name>A</Name>", "<Definition>D</Definition><Definition/>", LabelType)),
                "6:28 S006"},
        Mistake{"an empty type of a value",
                sSet(sProperty(sSingle("<DataType type=\"IfcLabel\"/><DataType type=\"\"/>"))), "6:68 S006"},
        Mistake{"an empty unit",
                sSet(sProperty(sSingle("<DataType type=\"IfcLengthMeasure\"/><UnitType "
                                       "type=\"LENGTHUNIT\"/><UnitType type=\"\"/>"))),
                "6:105 S006"},
        Mistake{"the unit of another measure",
                sSet(sProperty(sSingle("<DataType type=\"IfcLengthMeasure\"/><UnitType "
                                       "type=\"LENGTHUNIT\"/><UnitType type=\"TIMEUNIT\"/>"))),
                "6:105 S006"},
        Mistake{"another name of a constant",
                sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\"><EnumItem>A</EnumItem></EnumList>"
                                            "<ConstantList><ConstantDef><Name>A</Name><Name>B</Name>"
                                            "</ConstantDef></ConstantList>"))),
                "6:144 S006"},
        Mistake{
            "an empty type of a property before it",
            sSet(sPropertyOf("<Name>A</Name>", "<Definition>D</Definition>", "<PropertyType/>" + LabelType)),
            "7:17 S006"},
        Mistake{
            "an empty type of a property after it",
            sSet(sPropertyOf("<Name>A</Name>", "<Definition>D</Definition>", LabelType + "<PropertyType/>")),
            "7:109 S006"},
        Mistake{"an empty type of a quantity before it", sQuantities("Qto_A", "</QtoType><QtoType>Q_LENGTH"),
                "5:72 S006"},
        Mistake{"an empty type of a quantity after it", sQuantities("Qto_A", "Q_LENGTH</QtoType><QtoType>"),
                "5:80 S006"},
        Mistake{"another enumeration",
                sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\"><EnumItem>A</EnumItem></EnumList>"
                                            "<EnumList name=\"PEnum_B\"><EnumItem>B</EnumItem></EnumList>"
                                            "<ConstantList><ConstantDef><Name>A</Name></ConstantDef>"
                                            "<ConstantDef><Name>B</Name></ConstantDef></ConstantList>"))),
                "6:103 S006"}));

INSTANTIATE_TEST_SUITE_P(
    Kinds, OneFindingTest,
    testing::Values(
        Mistake{"the parts after the kind",
                sSet(sProperty("<TypePropertySingleValue/><DataType type=\"IfcLengthMeasure\"/><UnitType "
                               "type=\"LENGTHUNIT\"/>")),
                "6:42 S001"},
        Mistake{"the parts of another kind",
                sSet(sProperty(sSingle("<EnumList name=\"PEnum_A\"><EnumItem>A</EnumItem></EnumList>"
                                       "<ConstantList/>"))),
                "6:41 S001"},
        Mistake{"a kind inside itself", sSet(sProperty(sSingle(sOf("IfcLabel")))), "6:41 S001"},
        Mistake{
            "the name of an enumeration at its kind",
            sSet(sProperty("<TypePropertyEnumeratedValue name=\"PEnum_A\"><EnumList><EnumItem>A</EnumItem>"
                           "</EnumList></TypePropertyEnumeratedValue>")),
            "6:44 S002"},
        Mistake{"an older kind before the one that was meant",
                sSet(sProperty("<TypeSimpleProperty/>" + sOf("IfcLabel"))), "6:37 S006"},
        Mistake{"a misspelt first element of a list",
                sSet(sProperty("<TypePropertyListValue><ListValue><UnitTyp type=\"LENGTHUNIT\"/><DataType "
                               "type=\"IfcLengthMeasure\"/></ListValue></TypePropertyListValue>")),
                "6:50 S001"},
        Mistake{"an empty class, which was to be that of the type value",
                sSet(sProperty(sOf("IfcLabel")), "Pset_Wall",
                     "<ApplicableClasses><ClassName/><ClassName>IfcWall</ClassName></ApplicableClasses>"
                     "<ApplicableTypeValue>IfcDoor</ApplicableTypeValue>"),
                "3:21 C006"},
        Mistake{"all items in one",
                sSet(sProperty(sEnumeration("<EnumList name=\"PEnum_A\"><EnumItem>NEW, OLD</EnumItem>"
                                            "</EnumList><ConstantList><ConstantDef><Name>NEW</Name>"
                                            "</ConstantDef><ConstantDef><Name>OLD</Name></ConstantDef>"
                                            "</ConstantList>"))),
                "6:79 T027"}));

INSTANTIATE_TEST_SUITE_P(
    Between, OneFindingTest,
    testing::Values(
        Mistake{
            "a type that does not exist",
            sFiles({sSet(sProperty(sOf("IfcLabel")), "Pset_A"), sSet(sProperty(sOf("IfcLable")), "Pset_B")}),
            "B.xml:6:56 T001"},
        Mistake{
            "a type in another letter case",
            sFiles({sSet(sProperty(sOf("IfcLabel")), "Pset_A"), sSet(sProperty(sOf("IFCLABEL")), "Pset_B")}),
            "B.xml:6:56 T006"},
        Mistake{
            "an entity as a type",
            sFiles({sSet(sProperty(sOf("IfcLabel")), "Pset_A"), sSet(sProperty(sOf("IfcWall")), "Pset_B")}),
            "B.xml:6:56 T003"},
        Mistake{"no type",
                sFiles({sSet(sProperty(sOf("IfcLabel")), "Pset_A"), sSet(sProperty(sOf("")), "Pset_B")}),
                "B.xml:6:50 T008"},
        Mistake{"an item twice in place of another",
                sFiles({sSet(sProperty(sItems("X", "Y")), "Pset_A"),
                        sSet(sProperty(sItems("X", "X")), "Pset_B")}),
                "B.xml:6:101 T010"},
        Mistake{"another type in a set that hides one of its name",
                "---- standard/A.xml\n" + sSet(sProperty(sOf("IfcLabel")), "Pset_A") + "---- office/A.xml\n" +
                    sSet(sProperty(sOf("IfcText")), "Pset_A"),
                "office/A.xml:2:7 X002"},
        Mistake{"an unknown type of one member does not hide another",
                sFiles({sSet(sProperty(sOf("IfcLabel")) + sProperty(sOf("IfcText"), "X"), "Pset_A"),
                        sSet(sProperty(sOf("IfcText")) + sProperty(sOf("IfcTxt"), "Y"), "Pset_B")}),
                "B.xml:7:56 T001, B.xml:5:20 D003"},
        // Of a set with such a class the library looks at no type.
        Mistake{"an unknown type in two sets, one of which has a mistake of another kind",
                sFiles({sSet(sProperty(sOf("IfcLabel")), "Pset_A"),
                        sSet(sProperty(sOf("IfcLable")), "Pset_B", sClasses("IfcWall/SOLID", "")),
                        sSet(sProperty(sOf("IfcLable")), "Pset_C")}),
                "B.xml:3:31 C008, B.xml:6:56 T001, C.xml:6:56 T001"},
        Mistake{"a quantity type that does not exist",
                sFiles({sQuantities("Qto_A", "Q_LENGTH"), sQuantities("Qto_B", "LENGTH")}),
                "B.xml:5:61 S009"},
        Mistake{"a property and a quantity of one name are no mistake",
                sFiles({sSet(sProperty(sOf("IfcLabel")), "Pset_A"), sQuantities("Qto_B", "Q_LENGTH")}), ""},
        Mistake{
            "a copied set with its GUIDs",
            sFiles({sSet(sTwoProperties(), "Pset_A",
                         "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>", SetGuid),
                    sSet(sTwoProperties(), "Pset_B",
                         "<ApplicableClasses><ClassName>IfcWall</ClassName></ApplicableClasses>", SetGuid)}),
            "B.xml:1:26 G101"}));

} // namespace

} // namespace kiv::kit
