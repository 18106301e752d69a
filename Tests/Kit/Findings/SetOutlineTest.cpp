#include "Kit/Findings/SetOutline.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace kiv::kit {

namespace {

/// A document and its outline.
struct Outlined {
    explicit Outlined(std::string text) : xml(std::move(text)), outline(xml) {}

    /// The tag of an element; "-" for none.
    std::string_view tagOf(XmlIndex element) const {
        return element == NoXmlElement ? "-" : xml.getElement(element).name;
    }

    XmlPositions xml;
    SetOutline outline;
};

std::string sSet(std::string_view parts) {
    return "<PropertySetDef>" + std::string(parts) + "</PropertySetDef>";
}

std::string sProperty(std::string_view name, std::string_view type) {
    return "<PropertyDef><Name>" + std::string(name) + "</Name><PropertyType>" + std::string(type) +
           "</PropertyType></PropertyDef>";
}

std::string sProperties(std::string_view properties) {
    return sSet("<PropertyDefs>" + std::string(properties) + "</PropertyDefs>");
}

TEST(SetOutline, TheRootElementSaysWhichKindItIs) {
    EXPECT_EQ(Outlined("<PropertySetDef/>").outline.kind, SetKind::PropertySet);
    EXPECT_EQ(Outlined("<QtoSetDef/>").outline.kind, SetKind::QuantitySet);
    for (const auto* text : {"", "<Other/>", "<propertySetDef/>", "no XML", "<r><PropertySetDef/></r>"}) {
        const Outlined none(text);
        EXPECT_EQ(none.outline.kind, SetKind::None) << text;
        EXPECT_EQ(none.outline.setName(), "");
        EXPECT_TRUE(none.outline.members.empty());
    }
}

TEST(SetOutline, ASetWithAPrefixHasNoParts) {
    const Outlined prefixed("<p:QtoSetDef><Name>A</Name></p:QtoSetDef>");
    EXPECT_EQ(prefixed.outline.kind, SetKind::QuantitySet);
    EXPECT_TRUE(prefixed.outline.isPrefixed);
    EXPECT_EQ(prefixed.outline.name, NoXmlElement);
    EXPECT_FALSE(Outlined("<QtoSetDef/>").outline.isPrefixed);
}

TEST(SetOutline, OfPartsThatAreRepeatedTheLastOneCounts) {
    const Outlined set(
        sSet("<Name>A</Name><Definition/><IfcVersion/><ApplicableTypeValue/><Name> B </Name>"));
    EXPECT_EQ(set.outline.setName(), "B");
    EXPECT_EQ(set.outline.textOf(set.outline.name), " B ");
    EXPECT_EQ(set.tagOf(set.outline.definition), "Definition");
    EXPECT_EQ(set.tagOf(set.outline.ifcVersion), "IfcVersion");
    EXPECT_EQ(set.tagOf(set.outline.applicableTypeValue), "ApplicableTypeValue");
    EXPECT_EQ(set.tagOf(set.outline.applicableClasses), "-");
    EXPECT_EQ(set.outline.textOf(NoXmlElement), "");
}

TEST(SetOutline, ClassesAreCutAtTheFirstSlash) {
    const Outlined set(sSet("<ApplicableClasses><ClassName> IfcWall/SOLID/X </ClassName><ClassName>IfcSlab"
                            "</ClassName><ClassName>  </ClassName><Other>IfcDoor</Other><ClassName>\tA/"
                            "</ClassName></ApplicableClasses>"));
    const auto& classes = set.outline.classes;
    ASSERT_EQ(classes.size(), 3U);
    EXPECT_EQ(classes[0].text, "IfcWall/SOLID/X");
    EXPECT_EQ(classes[0].name, "IfcWall");
    EXPECT_EQ(classes[0].predefinedType, "SOLID/X");
    EXPECT_EQ(classes[1].name, "IfcSlab");
    EXPECT_EQ(classes[1].predefinedType, "");
    EXPECT_EQ(classes[2].name, "\tA"); // of white space, blanks alone are taken away
    EXPECT_EQ(classes[2].predefinedType, "");
}

TEST(SetOutline, MembersAreThoseOfTheKindOfSet) {
    const Outlined quantities(
        "<QtoSetDef><QtoDefs><QtoDef><Name>W</Name><QtoType>Q_LENGTH</QtoType></QtoDef>"
        "<PropertyDef/></QtoDefs><PropertyDefs><PropertyDef/></PropertyDefs></QtoSetDef>");
    ASSERT_EQ(quantities.outline.members.size(), 1U);
    const auto& member = quantities.outline.members[0];
    EXPECT_EQ(quantities.outline.memberName(member), "W");
    EXPECT_EQ(quantities.outline.textOf(member.type), "Q_LENGTH");
    EXPECT_EQ(member.kindElement, NoXmlElement);
    EXPECT_EQ(member.owner, -1);
}

TEST(SetOutline, TheKindOfAPropertyIsThatOfTheFirstElement) {
    struct Row {
        std::string_view type;
        PropertyKind kind;
    };
    const Row rows[] = {
        {"<TypePropertySingleValue/>", PropertyKind::SingleValue},
        {"<TypePropertyEnumeratedValue/>", PropertyKind::EnumeratedValue},
        {"<TypePropertyBoundedValue/>", PropertyKind::BoundedValue},
        {"<TypePropertyTableValue/>", PropertyKind::TableValue},
        {"<TypePropertyReferenceValue/>", PropertyKind::ReferenceValue},
        {"<TypePropertyListValue/>", PropertyKind::ListValue},
        {"<TypeComplexProperty/>", PropertyKind::Complex},
        {"<TypeSimpleProperty/>", PropertyKind::Simple},
        {"<Other/><TypePropertySingleValue/>", PropertyKind::None},
        {"<TypePropertyListValue/><TypePropertySingleValue/>", PropertyKind::ListValue},
        {"", PropertyKind::None},
    };
    for (const auto& row : rows) {
        const Outlined set(sProperties(sProperty("P", row.type)));
        ASSERT_EQ(set.outline.members.size(), 1U);
        EXPECT_EQ(set.outline.members[0].kind, row.kind) << row.type;
    }
}

TEST(SetOutline, TypesAreFoundWhereTheReadersLook) {
    const Outlined set(sProperties(
        sProperty("A", "<TypePropertySingleValue><DataType type='R'/><UnitType/></TypePropertySingleValue>") +
        sProperty("B", "<TypePropertyTableValue><DefiningValue><DataType type='S'/><Values/></DefiningValue>"
                       "<Other><DataType type='no'/></Other><DefinedValue><DataType/></DefinedValue>"
                       "</TypePropertyTableValue>") +
        sProperty("C", "<TypePropertyReferenceValue reftype='T'><DataType type='U'/>"
                       "</TypePropertyReferenceValue>") +
        sProperty("D", "<TypeSimpleProperty><DataType type='V'/></TypeSimpleProperty>") +
        sProperty("E", "<TypePropertyEnumeratedValue><DataType type='no'/></TypePropertyEnumeratedValue>")));
    std::string all;
    for (const auto& type : set.outline.types) {
        all += std::to_string(type.member) + std::to_string(static_cast<int>(type.use));
        all += type.attribute ? std::string(type.attribute->value) : "-";
        all.append(type.unit == NoXmlElement ? "" : "u").append(type.values == NoXmlElement ? "" : "v");
        all += ' ';
    }
    // The uses: 0 a value, 1 the data type of a reference, 2 a reference, 3 of an older document.
    EXPECT_EQ(all, "00Ru 10Sv 10- 22T 21U 33V ");
}

TEST(SetOutline, PropertiesInsideAComplexOneComeAfterIt) {
    const Outlined set(
        sProperties(sProperty("A", "<TypeComplexProperty>" +
                                       sProperty("B", "<TypeComplexProperty>" + sProperty("C", "") +
                                                          "</TypeComplexProperty>") +
                                       sProperty("D", "") + "</TypeComplexProperty>") +
                    sProperty("E", "")));
    std::string all;
    for (const auto& member : set.outline.members)
        all += std::string(set.outline.memberName(member)) + std::to_string(member.owner) + ' ';
    EXPECT_EQ(all, "A-1 B0 C1 D0 E-1 ");
    EXPECT_EQ(set.outline.subjectOf(set.outline.members[2]), ".A.B.C");
}

TEST(SetOutline, PartsOfBoundedAndEnumeratedValues) {
    const Outlined set(sProperties(
        sProperty("A", "<TypePropertyBoundedValue><ValueRangeDef/><ValueRangeDef n='2'/>"
                       "</TypePropertyBoundedValue>") +
        sProperty("B",
                  "<TypePropertyEnumeratedValue><EnumList/><ConstantList/></TypePropertyEnumeratedValue>")));
    const auto& bounded = set.outline.members[0];
    EXPECT_NE(set.xml.pAttribute(set.outline.elementOf(bounded.range), "n"), nullptr);
    const auto& enumerated = set.outline.members[1];
    EXPECT_EQ(set.tagOf(enumerated.enumeration), "EnumList");
    EXPECT_EQ(set.tagOf(enumerated.constants), "ConstantList");
}

TEST(SetOutline, AliasesAreFoundInSetsMembersAndConstants) {
    const Outlined set(
        sSet("<PsetDefinitionAliases><PsetDefinitionAlias lang='de'/></PsetDefinitionAliases>"
             "<QtoDefinitionAliases><QtoDefinitionAlias lang='no'/></QtoDefinitionAliases>"
             "<PropertyDefs><PropertyDef><NameAliases><NameAlias lang='fr'/><Other/></NameAliases>"
             "<DefinitionAliases><DefinitionAlias/></DefinitionAliases><PropertyType>"
             "<TypePropertyEnumeratedValue><ConstantList><ConstantDef><NameAliases><NameAlias lang='it'/>"
             "</NameAliases></ConstantDef></ConstantList></TypePropertyEnumeratedValue></PropertyType>"
             "</PropertyDef></PropertyDefs>"));
    std::string all;
    for (const auto& alias : set.outline.aliases) {
        all += alias.language ? std::string(alias.language->value) : "-";
        all.append(" in ").append(set.tagOf(alias.list)).append("; ");
    }
    EXPECT_EQ(all,
              "de in PsetDefinitionAliases; fr in NameAliases; - in DefinitionAliases; it in NameAliases; ");
}

TEST(SetOutline, SubjectsAreTheNamesAndNotLongerThanNeeded) {
    const Outlined set(sSet("<Name>Pset_A</Name><PropertyDefs>" + sProperty("P", "") + "</PropertyDefs>"));
    EXPECT_EQ(set.outline.setSubject(), "Pset_A");
    EXPECT_EQ(set.outline.subjectOf(set.outline.members[0]), "Pset_A.P");
    const Outlined longName(sSet("<Name>" + std::string(500, 'x') + "</Name>"));
    EXPECT_EQ(longName.outline.setSubject(), std::string(120, 'x'));
}

} // namespace

} // namespace kiv::kit
