// What properties and quantities have in common. Where they differ, each has tests of its own.

#include "Support/AssertCollector.h"
#include "Support/ErrorRecords.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

using ifc::def::pset::PropertyDef;
using ifc::def::pset::PropertySetDef;
using ifc::def::pset::PropertyType;
using ifc::def::qto::QuantityDef;
using ifc::def::qto::QuantitySetDef;
using ifc::def::qto::QuantityType;
using ifc::def::xml::Def;
using ifc::def::xml::ExtraExportInfo;
using ifc::def::xml::XmlSetErrors;
using kiv::assert::AssertRecord;
using AssertRecords = std::vector<AssertRecord>;

/// A type whose check finds something wrong, but for what only one of the two kinds asks of it.
template <class Base>
class FaultyTypeBase : public Base {
public:
    explicit FaultyTypeBase(bool passes) : passes_(passes) {}

    std::string sEntityName() const override {
        ++entityNamesAsked;
        return "IfcFaulty";
    }
    bool checkForErrors(const ifc::def::schema::Schema&, XmlSetErrors& errors) const override {
        errors.vErrorAdd(ifc::def::xml::ErrorKind::Error, "type", "Faulty", 7);
        return passes_;
    }

    /// How often the name of the entity was asked for, of any object of the class.
    inline static int entityNamesAsked = 0;

private:
    bool passes_;
};

struct Property {
    using Member = PropertyDef;
    using Set = PropertySetDef;
    using Type = PropertyType;

    class FaultyType final : public FaultyTypeBase<PropertyType> {
    public:
        using FaultyTypeBase::FaultyTypeBase;
        void vExport(kiv::xml::Element&, ExtraExportInfo*) const override {}
    };

    static PropertyDef memberOf(const Set& set, const kiv::xml::const_Element& element,
                                XmlSetErrors& errors) {
        return PropertyDef(&set, element, errors);
    }

    static constexpr std::string_view SetTag = "PropertySetDef";
    static constexpr std::string_view ListTag = "PropertyDefs";
    static constexpr std::string_view Tag = "PropertyDef";
    static constexpr std::string_view TypeTag = "PropertyType";
    /// A type, as it is read and as it is written, with its entity and the type of its values.
    static constexpr std::string_view TypeContent =
        "<TypePropertySingleValue><DataType type=\"IfcLabel\"/></TypePropertySingleValue>";
    static constexpr std::string_view EntityName = "IfcPropertySingleValue";
    static constexpr std::string_view ValueType = "IfcLabel";
    static constexpr std::string_view ValueTypeReporter =
        "kiv::ifc::def::pset::TypePropertyReferenceValue::checkForErrors";
    /// Another type.
    static constexpr std::string_view OtherTypeContent = "<TypePropertyListValue/>";
    static constexpr std::string_view OtherEntityName = "IfcPropertyListValue";
    /// One that nobody knows.
    static constexpr std::string_view UnknownTypeContent = "<TypeOddProperty/>";
    /// All tags that a member may have.
    static std::set<std::string> knownTags() {
        return {"Name", "Definition", "NameAliases", "DefinitionAliases", "PropertyType", "ValueDef"};
    }
    static AssertRecord entityNotFound() {
        return {0, "Entity not found", "kiv::ifc::def::pset::PropertyDef::checkForErrors",
                "Source/Format/Ifc/Def/Pset/IfcPropertyDef", 83};
    }
};

struct Quantity {
    using Member = QuantityDef;
    using Set = QuantitySetDef;
    using Type = QuantityType;

    class FaultyType final : public FaultyTypeBase<QuantityType> {
    public:
        using FaultyTypeBase::FaultyTypeBase;
        const char* pTypeCode() const override { return "Q_FAULTY"; }
        std::string sValueAttributeName() const override { return "FaultyValue"; }
        std::string sMeasureTypeName() const override { return "IfcFaultyMeasure"; }
    };

    static QuantityDef memberOf(const Set& set, const kiv::xml::const_Element& element,
                                XmlSetErrors& errors) {
        return QuantityDef(set, element, errors);
    }

    static constexpr std::string_view SetTag = "QtoSetDef";
    static constexpr std::string_view ListTag = "QtoDefs";
    static constexpr std::string_view Tag = "QtoDef";
    static constexpr std::string_view TypeTag = "QtoType";
    static constexpr std::string_view TypeContent = "Q_AREA";
    static constexpr std::string_view EntityName = "IfcQuantityArea";
    static constexpr std::string_view ValueType = "IfcAreaMeasure";
    static constexpr std::string_view ValueTypeReporter =
        "kiv::ifc::def::qto::QuantityTypeSimple::checkForErrors";
    static constexpr std::string_view OtherTypeContent = "Q_TIME";
    static constexpr std::string_view OtherEntityName = "IfcQuantityTime";
    static constexpr std::string_view UnknownTypeContent = "Q_ODD";
    static std::set<std::string> knownTags() {
        return {"Name", "Definition", "NameAliases", "DefinitionAliases", "QtoType"};
    }
    static AssertRecord entityNotFound() {
        return {0, "Entity not found", "kiv::ifc::def::qto::QuantityDef::checkForErrors",
                "Source/Format/Ifc/Def/Qto/IfcQuantityDef", 79};
    }
};

std::string sElement(std::string_view tag, std::string_view content, std::string_view attributes = "") {
    const auto name = std::string(tag);
    return "<" + name + std::string(attributes) + ">" + std::string(content) + "</" + name + ">";
}

template <class Kind>
class MemberDef : public testing::Test {
protected:
    /// A member of the set Set_A, with the records of its reading.
    struct Read {
        explicit Read(const std::string& content, std::string_view attributes = "") :
            member(
                Kind::memberOf(set, XmlFromText(sElement(Kind::Tag, content, attributes)).root(), errors)) {}

        XmlSetErrors errors;
        typename Kind::Set set{XmlFromText(sElement(Kind::SetTag, "<Name>Set_A</Name>")).root(), errors};
        typename Kind::Member member;
    };

    static std::string sType(std::string_view content) { return sElement(Kind::TypeTag, content); }
    static std::string sTypeOf() { return sType(Kind::TypeContent); }

    static std::string sExport(const typename Kind::Member& member, ExtraExportInfo* info = nullptr) {
        XmlTarget target(Kind::ListTag);
        member.vExport(target.root(), info);
        return target.sText();
    }

    /// A list of one member, as it is written.
    static std::string sWritten(std::string_view content, std::string_view attributes = "") {
        return sElement(Kind::ListTag, sElement(Kind::Tag, content, attributes));
    }

    /// A schema with the entity of the type, or with a type of that name, and with the type of the values.
    static std::string sEntity() { return "ENTITY " + std::string(Kind::EntityName) + ";\nEND_ENTITY;\n"; }
    static std::string sTypeNamed(std::string_view name) {
        return "TYPE " + std::string(name) + " = STRING;\nEND_TYPE;\n";
    }

    /// The reports of a check, which passes and adds no record.
    static AssertRecords checkReportsOf(Read& read, const std::string& schemaText) {
        const auto schema = schemaFromText(schemaText);
        const AssertCollector reports;
        EXPECT_TRUE(read.member.checkForErrors(*schema, read.errors));
        EXPECT_EQ(read.errors.getRecords(), Records());
        return reports.getRecords();
    }
};

struct KindNames {
    template <class Kind>
    static std::string GetName(int) {
        return std::string(Kind::Tag);
    }
};

using MemberKinds = testing::Types<Property, Quantity>;
TYPED_TEST_SUITE(MemberDef, MemberKinds, KindNames);

constexpr std::string_view GuidAttribute = " ifdguid=\"e098e980d1bc11e1800000215ad4efdf\"";

TYPED_TEST(MemberDef, ReadsTextsGuidAliasesAndType) {
    const typename TestFixture::Read read(
        "\n<Name>N</Name><Definition>D</Definition>"
        "<NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases>"
        "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias></DefinitionAliases>" +
            TestFixture::sTypeOf(),
        GuidAttribute);
    EXPECT_EQ(read.member.getName(), "N");
    EXPECT_EQ(read.member.getDefinition(), "D");
    EXPECT_EQ(read.member.getIfdGuid().toString(false), "e098e980d1bc11e1800000215ad4efdf");
    ASSERT_EQ(read.member.getNameAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.member.getNameAliases().getEntries()[0].text, "n");
    ASSERT_EQ(read.member.getDefinitionAliases().getEntries().size(), 1U);
    EXPECT_EQ(read.member.getDefinitionAliases().getEntries()[0].text, "d");
    EXPECT_EQ(read.member.getEntityName(), TypeParam::EntityName);
    EXPECT_EQ(read.member.pOwner(), &read.set);
    EXPECT_EQ(read.member.getConcept(), "Set_A.N");
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TYPED_TEST(MemberDef, KnowsItsLine) {
    XmlSetErrors errors;
    const typename TypeParam::Set set(XmlFromText("<s/>").root(), errors);
    const auto element = "\n\n" + sElement(TypeParam::Tag, "\n");
    EXPECT_EQ(TypeParam::memberOf(set, XmlFromText(element).root(), errors).getLine(), 3U);
}

TYPED_TEST(MemberDef, IllegalGuidIsRecordedOnItsLine) {
    XmlSetErrors errors;
    const typename TypeParam::Set set(XmlFromText("<s/>").root(), errors);
    const auto element = "\n" + sElement(TypeParam::Tag, "", " ifdguid='?'");
    TypeParam::memberOf(set, XmlFromText(element).root(), errors);
    EXPECT_EQ(errors.getRecords(), (Records{error("?", "Illegal ifdguid in xml file", 2)}));
}

TYPED_TEST(MemberDef, KeepsTheLastOfItsTypes) {
    const typename TestFixture::Read read(TestFixture::sTypeOf() +
                                          TestFixture::sType(TypeParam::OtherTypeContent));
    EXPECT_EQ(read.member.getEntityName(), TypeParam::OtherEntityName);
}

TYPED_TEST(MemberDef, LastTypeThatMakesNoneLeavesNone) {
    for (const auto content : {std::string_view(), TypeParam::UnknownTypeContent}) {
        SCOPED_TRACE(content);
        const typename TestFixture::Read read(TestFixture::sTypeOf() + TestFixture::sType(content));
        EXPECT_EQ(read.member.pType(), nullptr);
        EXPECT_EQ(read.errors.getRecords(), Records());
    }
}

TYPED_TEST(MemberDef, UnknownChildrenAreRecordedAndTheRestIsRead) {
    const typename TestFixture::Read read("\n<Odd/>\n<name/><Name>N</Name>");
    EXPECT_EQ(read.member.getName(), "N");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("Odd", "Unknown xml node", 2), error("name", "Unknown xml node", 3)}));
}

// Beside those that are known: the tags of other elements and of the other kind of member, those that are
// written, the known ones in other letter cases and numbers, and what people might add.
TYPED_TEST(MemberDef, KnowsItsTagsAndNoOther) {
    const auto known = TypeParam::knownTags();
    for (const std::string tag : {"Name",
                                  "Definition",
                                  "NameAliases",
                                  "DefinitionAliases",
                                  "PropertyType",
                                  "QtoType",
                                  "ValueDef",
                                  "NameAlias",
                                  "DefinitionAlias",
                                  "nameAliases",
                                  "nameAlias",
                                  "definitionAliases",
                                  "name",
                                  "definition",
                                  "DEFINITION",
                                  "propertyType",
                                  "qtoType",
                                  "valueDef",
                                  "QtoTypes",
                                  "PropertyTypes",
                                  "PropertyDef",
                                  "PropertyDefs",
                                  "QtoDef",
                                  "QtoDefs",
                                  "PropertySetDef",
                                  "QtoSetDef",
                                  "QuantityType",
                                  "Applicability",
                                  "ApplicableClasses",
                                  "ApplicableTypeValue",
                                  "ClassName",
                                  "IfcVersion",
                                  "PsetDefinitionAliases",
                                  "PsetDefinitionAlias",
                                  "QtoDefinitionAliases",
                                  "QtoDefinitionAlias",
                                  "TypePropertySingleValue",
                                  "TypeSimpleProperty",
                                  "DataType",
                                  "UnitType",
                                  "ValueRangeDef",
                                  "EnumList",
                                  "ConstantList",
                                  "Expression",
                                  "Values",
                                  "ListValue",
                                  "MethodOfMeasurement",
                                  "Description",
                                  "Unit",
                                  "Value",
                                  "Type",
                                  "Odd"}) {
        SCOPED_TRACE(tag);
        const typename TestFixture::Read read("<" + tag + "/>");
        EXPECT_EQ(read.errors.getRecords(),
                  known.contains(tag) ? Records() : Records{error(tag, "Unknown xml node", 1)});
    }
}

TYPED_TEST(MemberDef, MadeInCodeTakesTheType) {
    const typename TestFixture::Read read("");
    std::unique_ptr<typename TypeParam::Type> type = std::make_unique<typename TypeParam::FaultyType>(true);
    const auto* given = type.get();
    const typename TypeParam::Member member(read.set, "N", std::move(type));
    EXPECT_EQ(type, nullptr); // NOLINT(bugprone-use-after-move): that it is left empty is promised
    EXPECT_EQ(member.pType(), given);
    EXPECT_EQ(member.getEntityName(), "IfcFaulty");
    EXPECT_EQ(member.pOwner(), &read.set);
    EXPECT_EQ(member.getConcept(), "Set_A.N");
}

TYPED_TEST(MemberDef, WithoutTypeHasNoEntityNameAndPassesWithoutALookUp) {
    typename TestFixture::Read read("");
    EXPECT_EQ(read.member.pType(), nullptr);
    EXPECT_EQ(read.member.getEntityName(), "");
    EXPECT_EQ(TestFixture::checkReportsOf(read, ""), AssertRecords());
}

TYPED_TEST(MemberDef, CheckReportsATypeWhoseEntityTheSchemaLacks) {
    typename TestFixture::Read read(TestFixture::sTypeOf());
    const auto valueType = TestFixture::sTypeNamed(TypeParam::ValueType);
    EXPECT_EQ(TestFixture::checkReportsOf(read, valueType), AssertRecords{TypeParam::entityNotFound()});
}

/// Without anybody who listens, what the report depends on is not looked at: its entity is not even asked
/// for.
TYPED_TEST(MemberDef, CheckLooksNoEntityUpWhileNobodyListens) {
    using FaultyType = typename TypeParam::FaultyType;
    const auto schema = schemaFromText("");
    const typename TestFixture::Read read("");
    const typename TypeParam::Member member(read.set, "N", std::make_unique<FaultyType>(true));
    XmlSetErrors errors;
    FaultyType::entityNamesAsked = 0;
    EXPECT_TRUE(member.checkForErrors(*schema, errors));
    EXPECT_EQ(FaultyType::entityNamesAsked, 0);
    EXPECT_EQ(errors.getRecords().size(), 1U) << "the check itself runs all the same";
    const AssertCollector reports;
    EXPECT_TRUE(member.checkForErrors(*schema, errors));
    EXPECT_EQ(FaultyType::entityNamesAsked, 1);
}

TYPED_TEST(MemberDef, CheckTakesNothingButAnEntityForTheEntityOfAType) {
    typename TestFixture::Read read(TestFixture::sTypeOf());
    const auto types =
        TestFixture::sTypeNamed(TypeParam::ValueType) + TestFixture::sTypeNamed(TypeParam::EntityName);
    EXPECT_EQ(TestFixture::checkReportsOf(read, types), AssertRecords{TypeParam::entityNotFound()});
}

TYPED_TEST(MemberDef, CheckIsSilentWhenTheSchemaHasEverything) {
    typename TestFixture::Read read(TestFixture::sTypeOf());
    const auto all = TestFixture::sTypeNamed(TypeParam::ValueType) + TestFixture::sEntity();
    EXPECT_EQ(TestFixture::checkReportsOf(read, all), AssertRecords());
}

TYPED_TEST(MemberDef, CheckGoesOnToTheType) {
    typename TestFixture::Read read(TestFixture::sTypeOf());
    const auto reports = TestFixture::checkReportsOf(read, TestFixture::sEntity());
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_EQ(reports[0].function, TypeParam::ValueTypeReporter);
}

TYPED_TEST(MemberDef, CheckGoesOnToTheTypeAfterAMissingEntity) {
    typename TestFixture::Read read(TestFixture::sTypeOf());
    const auto reports = TestFixture::checkReportsOf(read, "");
    ASSERT_EQ(reports.size(), 2U);
    EXPECT_EQ(reports[0], TypeParam::entityNotFound());
    EXPECT_EQ(reports[1].function, TypeParam::ValueTypeReporter);
}

TYPED_TEST(MemberDef, CheckPassesWhateverTheTypeFinds) {
    const auto schema = schemaFromText("ENTITY IfcFaulty;\nEND_ENTITY;\n");
    const typename TestFixture::Read read("");
    for (const bool typePasses : {false, true}) {
        SCOPED_TRACE(typePasses);
        const typename TypeParam::Member member(read.set, "N",
                                                std::make_unique<typename TypeParam::FaultyType>(typePasses));
        XmlSetErrors errors;
        EXPECT_TRUE(member.checkForErrors(*schema, errors));
        EXPECT_EQ(errors.getRecords(), (Records{error("type", "Faulty", 7)}));
    }
}

// Also the first letters of the name aliases are small, which they are not when they are read.
TYPED_TEST(MemberDef, IsWrittenInFixedOrder) {
    const typename TestFixture::Read read(
        TestFixture::sTypeOf() +
            "<DefinitionAliases><DefinitionAlias lang='fr'>d</DefinitionAlias></DefinitionAliases>"
            "<NameAliases><NameAlias lang='de'>n</NameAlias></NameAliases>"
            "<Definition>D</Definition><Name>N</Name>",
        GuidAttribute);
    EXPECT_EQ(TestFixture::sExport(read.member),
              TestFixture::sWritten(
                  "<Name>N</Name><Definition>D</Definition>"
                  "<nameAliases><nameAlias lang=\"de\">n</nameAlias></nameAliases><DefinitionAliases>"
                  "<DefinitionAlias lang=\"fr\">d</DefinitionAlias></DefinitionAliases>" +
                      TestFixture::sTypeOf(),
                  GuidAttribute));
}

TYPED_TEST(MemberDef, WithoutTypeIsWrittenWithAnEmptyOne) {
    const typename TestFixture::Read read("");
    EXPECT_EQ(TestFixture::sExport(read.member),
              TestFixture::sWritten("<Name/><Definition/><" + std::string(TypeParam::TypeTag) + "/>"));
}

TYPED_TEST(MemberDef, HookSeesTheEmptyElementAndMayWriteIntoIt) {
    const typename TestFixture::Read read("<Name>N</Name>", GuidAttribute);
    ExtraExportInfo info;
    info.hook = [&](const Def& def, kiv::xml::Element& element) {
        EXPECT_EQ(&def, &read.member);
        EXPECT_EQ(sXmlText(element), "<" + std::string(TypeParam::Tag) + "/>");
        element.ElementNodeAppend("Extra");
    };
    EXPECT_EQ(
        TestFixture::sExport(read.member, &info),
        TestFixture::sWritten("<Extra/><Name>N</Name><Definition/><" + std::string(TypeParam::TypeTag) + "/>",
                              GuidAttribute));
}

} // namespace

} // namespace kiv::test
