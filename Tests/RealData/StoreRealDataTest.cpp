#include "RealData/StoreRealData.h"
#include "Support/AssertCollector.h"
#include "Support/SchemaFromText.h"
#include "Support/SetFromText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/PropertyNameSearcher.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>
#include <vector>

namespace kiv::test {

namespace {

namespace defs = ifc::def::xml;
namespace express = ifc::def::schema;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;
namespace xmlschema = ifc::def::xmlschema;
using ifc::findPropertyTypeName;
using ifc::def::SchemaPropertySetDefinitions;
using ifc::def::SchemaPset;
using TypeName = std::optional<std::string>;
using Names = std::vector<std::string>;
using Sets = StoreRealDataTest::Sets;

/// An answer of `findPropertyTypeName` and how many reports it makes.
struct Answer {
    TypeName type;
    int reports = 0;

    bool operator==(const Answer&) const = default;
};

void PrintTo(const Answer& answer, std::ostream* stream) {
    *stream << answer.type.value_or("no value") << ", reports: " << answer.reports;
}

Answer found(const std::string& name, const SchemaPset& schema) {
    AssertCollector reports;
    auto type = findPropertyTypeName(name, schema);
    return {std::move(type), static_cast<int>(reports.getRecords().size())};
}

template <class Type>
bool isExactly(const defs::TypeBase* type) {
    return type && typeid(*type) == typeid(Type);
}

Answer answerOfProperty(const pset::PropertyDef& property) {
    const auto* const type = property.pType();
    if (isExactly<pset::TypePropertySingleValue>(type) || isExactly<pset::TypePropertyBoundedValue>(type))
        return {dynamic_cast<const pset::TypePropertySingleValue&>(*type).getDataTypeName()};
    if (isExactly<pset::TypePropertyEnumeratedValue>(type))
        return {"IfcLabel"};
    if (isExactly<pset::TypePropertyTableValue>(type) || isExactly<pset::TypePropertyListValue>(type) ||
        isExactly<pset::TypeComplexProperty>(type))
        return {};
    return {std::nullopt, 1};
}

Answer answerOfQuantity(const qto::QuantityDef& quantity) {
    static const std::map<std::string, std::string> measures = {
        {"Q_AREA", "IfcAreaMeasure"}, {"Q_LENGTH", "IfcLengthMeasure"}, {"Q_COUNT", "IfcCountMeasure"},
        {"Q_TIME", "IfcTimeMeasure"}, {"Q_VOLUME", "IfcVolumeMeasure"}, {"Q_WEIGHT", "IfcMassMeasure"}};
    if (!quantity.pType())
        return {std::nullopt, 1};
    return {measures.at(quantity.pType()->pTypeCode())};
}

Answer answerInSet(const defs::SetDef& set, const std::string& memberName) {
    for (const auto* const member : membersOf(set)) {
        if (member->getName() != memberName)
            continue;
        const auto* const property = dynamic_cast<const pset::PropertyDef*>(member);
        return property ? answerOfProperty(*property)
                        : answerOfQuantity(dynamic_cast<const qto::QuantityDef&>(*member));
    }
    return {};
}

/// What the type text of an attribute names, or else the keyword that it begins with.
TypeName typeNameOf(const express::Attribute& attribute, const SchemaPset& schema) {
    const auto& text = attribute.getTypeText();
    if (const auto* const object = schema.pObjectFromName(text))
        return std::string(object->getName());
    return std::string(text.substr(0, text.find(' ')));
}

/// The attribute of exactly this name, of the entity or of the next entity above that has one; null without
/// one.
const express::Attribute* pAttribute(const express::Entity* entity, const std::string& name) {
    for (; entity; entity = entity->pSupertype()) {
        for (const auto& attribute : entity->getAttributes()) {
            if (attribute.getName() == name)
                return &attribute;
        }
    }
    return nullptr;
}

Answer answerInEntity(const express::Entity& entity, const std::string& name, const SchemaPset& schema) {
    const auto* const attribute = pAttribute(&entity, name);
    return attribute ? Answer{typeNameOf(*attribute, schema)} : Answer();
}

/// The names of all attributes of an entity, its supertypes' too.
std::set<std::string> attributeNames(const express::Entity* entity) {
    std::set<std::string> names;
    for (; entity; entity = entity->pSupertype()) {
        for (const auto& attribute : entity->getAttributes())
            names.emplace(attribute.getName());
    }
    return names;
}

/// Whether the set is for this very entity.
bool isFor(const defs::SetDef& set, const express::Entity& entity, bool includeUnrestricted) {
    const auto& classes = set.getApplicableClasses();
    if (classes.empty())
        return includeUnrestricted;
    return std::any_of(classes.begin(), classes.end(),
                       [&](const auto& applicable) { return applicable.getClassName() == entity.getName(); });
}

/// The names of the sets for this very entity, found by looking at all of them.
Names setsFor(const Sets& sets, const express::Entity& entity, bool includeUnrestricted) {
    std::map<std::string, std::string> byUpperName;
    for (const auto& set : sets) {
        if (isFor(*set, entity, includeUnrestricted))
            byUpperName.emplace(sUpper(set->getName()), set->getName());
    }
    Names names;
    for (const auto& [upperName, name] : byUpperName)
        names.push_back(name);
    return names;
}

/// The same with all supertypes, the topmost first.
Names setsForAll(const Sets& sets, const express::Entity& entity, bool includeUnrestricted) {
    if (!entity.pSupertype())
        return setsFor(sets, entity, includeUnrestricted);
    auto names = setsForAll(sets, *entity.pSupertype(), includeUnrestricted);
    const auto own = setsFor(sets, entity, false);
    names.insert(names.end(), own.begin(), own.end());
    return names;
}

TEST_F(StoreRealDataTest, AnswersTheQuestionsOfTheFirstHour) {
    const auto& ifc4 = schema("IFC4");
    EXPECT_EQ(findPropertyTypeName("Pset_WallCommon.IsExternal", ifc4), "IfcBoolean");
    EXPECT_EQ(findPropertyTypeName("pset_wallcommon.IsExternal", ifc4), "IfcBoolean");
    EXPECT_EQ(findPropertyTypeName("Pset_WallCommon.Status", ifc4), "IfcLabel");
    EXPECT_EQ(findPropertyTypeName("Qto_WallBaseQuantities.GrossVolume", ifc4), "IfcVolumeMeasure");
    EXPECT_EQ(findPropertyTypeName("IfcWall.Name", ifc4), "IfcLabel");
    EXPECT_EQ(findPropertyTypeName("Pset_WallCommon", ifc4), std::nullopt);
}

TEST_F(StoreRealDataTest, EverySetIsFoundInThreeLetterCasesAndByItsOwnSchemaOnly) {
    std::set<std::string> namesIn[2];
    for (std::size_t release = 0; release < Releases.size(); ++release) {
        for (const auto& set : sets(Releases[release]))
            namesIn[release].insert(sUpper(set->getName()));
    }
    EXPECT_EQ(namesIn[0].size(), 500U);
    EXPECT_EQ(namesIn[1].size(), 159U);
    for (std::size_t release = 0; release < Releases.size(); ++release) {
        const auto& own = schema(Releases[release]);
        const auto& foreign = schema(Releases[1 - release]);
        for (const auto& set : sets(Releases[release])) {
            SCOPED_TRACE(set->getName());
            for (const auto& name : casesOf(set->getName())) {
                const auto* const hit = own.pXmlSetFromName(name, {});
                ASSERT_NE(hit, nullptr) << name;
                EXPECT_EQ(hit->getName(), set->getName());
                EXPECT_EQ(own.getStandardDefinitions()->getXmlSetFromName(name), hit);
                EXPECT_EQ(own.pXmlSetFromNameUpper(name, {}), name == sUpper(name) ? hit : nullptr);
                EXPECT_EQ(foreign.pXmlSetFromName(name, {}) != nullptr,
                          namesIn[1 - release].contains(sUpper(name)));
            }
        }
    }
}

TEST_F(StoreRealDataTest, AllSetsAreThereInTheOrderOfTheirUpperCasedNames) {
    for (const auto& release : Releases) {
        std::map<std::string, std::string> expected;
        for (const auto& set : sets(release))
            expected.emplace(sUpper(set->getName()), set->getName());
        const auto names = namesOf(schema(release).getStandardDefinitions()->getXmlSets());
        ASSERT_EQ(names.size(), expected.size());
        std::size_t index = 0;
        for (const auto& [upperName, name] : expected)
            EXPECT_EQ(names[index++], name);
    }
}

/// The set in any case, the member in its own.
TEST_F(StoreRealDataTest, EveryMemberOfEverySetHasTheTypeOfItsDefinition) {
    std::size_t members = 0;
    for (const auto& release : Releases) {
        for (const auto& set : sets(release)) {
            for (const auto* const member : membersOf(*set)) {
                SCOPED_TRACE(member->getConcept());
                ++members;
                for (const auto& memberName : casesOf(member->getName())) {
                    const auto expected = answerInSet(*set, memberName);
                    for (const auto& setName : casesOf(set->getName()))
                        EXPECT_EQ(found(setName + "." + memberName, schema(release)), expected);
                }
            }
        }
    }
    EXPECT_EQ(members, 2689U + 965U);
}

/// The entity in any case, the attribute in its own, also from above.
TEST_F(StoreRealDataTest, EveryAttributeOfEveryEntityHasTheTypeThatTheSchemaWrites) {
    for (const auto& release : Releases) {
        const auto& own = schema(release);
        for (const auto* const entity : entitiesOf(own)) {
            const std::string ownName(entity->getName());
            SCOPED_TRACE(ownName);
            for (const auto& name : attributeNames(entity)) {
                const auto expected = answerInEntity(*entity, name, own);
                EXPECT_NE(expected.type, std::nullopt) << name;
                for (const auto& entityName : casesOf(ownName))
                    EXPECT_EQ(found(entityName + "." + name, own), expected) << name;
                for (const auto& inOtherCase : {sUpper(name), sLower(name)})
                    EXPECT_EQ(found(ownName + "." + inOtherCase, own),
                              answerInEntity(*entity, inOtherCase, own))
                        << inOtherCase;
            }
        }
    }
}

/// How many entities the sets name, each set each entity once.
std::size_t namedEntities(const Sets& sets, const SchemaPset& schema) {
    std::set<std::string_view> entities;
    for (const auto* const entity : entitiesOf(schema))
        entities.emplace(entity->getName());
    std::set<std::pair<std::string, std::string>> named;
    for (const auto& set : sets) {
        for (const auto& applicable : set->getApplicableClasses()) {
            if (entities.contains(applicable.getClassName()))
                named.emplace(sUpper(set->getName()), applicable.getClassName());
        }
    }
    return named.size();
}

TEST_F(StoreRealDataTest, TheSetsOfEveryEntityAreThoseThatNameIt) {
    std::size_t listed = 0;
    std::size_t named = 0;
    for (const auto& release : Releases) {
        const auto& own = schema(release);
        named += namedEntities(sets(release), own);
        for (const auto* const entity : entitiesOf(own)) {
            SCOPED_TRACE(entity->getName());
            for (const bool includeUnrestricted : {false, true}) {
                const auto names = namesOf(own.getXmlSetsToEntity(*entity, includeUnrestricted, {}));
                EXPECT_EQ(names, setsFor(sets(release), *entity, includeUnrestricted));
                EXPECT_EQ(namesOf(own.getXmlSetsAllToEntity(*entity, includeUnrestricted, {})),
                          setsForAll(sets(release), *entity, includeUnrestricted));
                listed += includeUnrestricted ? 0 : names.size();
            }
        }
    }
    EXPECT_EQ(listed, named);
    EXPECT_EQ(named, 511U + 178U);
}

TEST_F(StoreRealDataTest, EveryGuidFindsTheMemberThatWasAddedFirst) {
    for (const auto& release : Releases) {
        std::map<std::string, const defs::Def*> first;
        for (const auto& set : sets(release)) {
            for (const auto* const member : membersOf(*set))
                first.emplace(member->getIfdGuid().toString(false), member);
        }
        EXPECT_EQ(first.size(), release == "IFC4" ? 2435U : 1U);
        for (const auto& [guid, member] : first) {
            const auto* const hit = schema(release).pXmlDefFromIfd(member->getIfdGuid());
            ASSERT_NE(hit, nullptr) << guid;
            EXPECT_EQ(hit->getConcept(), member->getConcept());
        }
    }
}

TEST_F(StoreRealDataTest, ASetOfAHostHidesTheStandardOneWhileItIsRegistered) {
    auto& ifc4 = schema("IFC4");
    const auto* const standard = ifc4.pXmlSetFromName("Pset_WallCommon", {});
    ASSERT_NE(standard, nullptr);
    SchemaPropertySetDefinitions own;
    defs::XmlSetErrors errors;
    own.xmlSetAdd(
        ifc4,
        pSetFromText(
            "<PropertySetDef><Name>PSET_WALLCOMMON</Name><ApplicableClasses><ClassName>IfcWall</ClassName>"
            "</ApplicableClasses><PropertyDefs><PropertyDef><Name>IsExternal</Name><PropertyType>"
            "<TypePropertySingleValue><DataType type='IfcLogical'/></TypePropertySingleValue>"
            "</PropertyType></PropertyDef></PropertyDefs></PropertySetDef>"),
        errors);
    registry().addPropertySets({"office.xml", false}, std::move(own));

    const auto onlyStandard = [](const auto& context) { return context.isStandard; };
    const auto* const hit = ifc4.pXmlSetFromName("Pset_WallCommon", {});
    EXPECT_NE(hit, standard);
    EXPECT_EQ(hit->getName(), "PSET_WALLCOMMON");
    EXPECT_EQ(ifc4.pXmlSetFromName("Pset_WallCommon", onlyStandard), standard);
    EXPECT_EQ(schema("IFC2X3").pXmlSetFromName("Pset_WallCommon", {}), hit)
        << "a host's set is for every schema";
    EXPECT_EQ(findPropertyTypeName("Pset_WallCommon.IsExternal", ifc4), "IfcLogical");
    EXPECT_EQ(findPropertyTypeName("Pset_WallCommon.Status", ifc4), std::nullopt);
    const auto& wall = entityOf(ifc4, "IfcWall");
    auto expected = Names{"PSET_WALLCOMMON"};
    const auto ofStandard = setsForAll(sets("IFC4"), wall, true);
    expected.insert(expected.end(), ofStandard.begin(), ofStandard.end());
    EXPECT_EQ(namesOf(ifc4.getXmlSetsAllToEntity(wall, true, {})), expected);

    registry().removePropertySets("office.xml");
    EXPECT_EQ(ifc4.pXmlSetFromName("Pset_WallCommon", {}), standard);
    EXPECT_EQ(findPropertyTypeName("Pset_WallCommon.IsExternal", ifc4), "IfcBoolean");
}

kiv::assert::AssertRecord configReport(const std::string& message, const std::string& function,
                                       const std::string& module) {
    return {0, message, "kiv::ifc::def::xmlschema::" + function,
            "Source/Format/Ifc/Def/XmlSchema/IfcXml" + module, 0};
}

/// What one "cnf:attribute" or "cnf:inverse" says, as numbers and truth values.
struct Settings {
    explicit Settings(const kiv::xml::const_Element& element) {
        static const std::map<std::string, int> numbers = {
            {"", 0}, {"attribute-tag", 1}, {"attribute-content", 2}, {"double-tag", 3}};
        representation = numbers.at(sValue(element, "exp-attribute"));
        tagless = sValue(element, "tagless") == "true";
        keep = sValue(element, "keep") == "true";
    }
    Settings(xmlschema::ExpAttribute number, bool isTagless, bool isKeep) :
        representation(static_cast<int>(number)), tagless(isTagless), keep(isKeep) {}

    static std::string sValue(const kiv::xml::const_Element& element, std::string_view name) {
        const auto attribute = element.AttributeNodeGet(name);
        return attribute ? attribute->getValue() : std::string();
    }

    bool operator==(const Settings&) const = default;

    int representation;
    bool tagless;
    bool keep;
};

void PrintTo(const Settings& settings, std::ostream* stream) {
    *stream << settings.representation << (settings.tagless ? " tagless" : "")
            << (settings.keep ? " keep" : "");
}

/// What the configuration says of the attributes and inverses of a schema, by a plain walk through the
/// document.
struct PlainConfig {
    PlainConfig(const kiv::xml::const_Element& root, const SchemaPset& schema) {
        for (auto element = root.FirstElementChildGet(); element;
             element = element->NextElementSiblingGet()) {
            const auto* const entity =
                express::Entity::pFrom(schema.pObjectFromName(Settings::sValue(*element, "select")));
            if (!element->boNodeNameIs("cnf:entity") || !entity)
                continue;
            for (auto child = element->FirstElementChildGet(); child; child = child->NextElementSiblingGet())
                vAdd(*entity, *child);
        }
    }

    void vAdd(const express::Entity& entity, const kiv::xml::const_Element& child) {
        const auto select = Settings::sValue(child, "select");
        if (child.boNodeNameIs("cnf:attribute")) {
            if (const auto* const attribute = pAttribute(&entity, select))
                attributes.emplace_back(attribute, Settings(child));
            else
                missing.push_back(std::string(entity.getName()) + "." + select);
            return;
        }
        const auto* const attribute = pInverse(&entity, select);
        ASSERT_NE(attribute, nullptr) << entity.getName() << "." << select;
        inverses.emplace_back(attribute, Settings(child));
    }

    static const express::AttributeInverse* pInverse(const express::Entity* entity, const std::string& name) {
        for (; entity; entity = entity->pSupertype()) {
            for (const auto& attribute : entity->getAttributesInverse()) {
                if (attribute.getName() == name)
                    return &attribute;
            }
        }
        return nullptr;
    }

    std::vector<std::pair<const express::Attribute*, Settings>> attributes;
    std::vector<std::pair<const express::AttributeInverse*, Settings>> inverses;
    Names missing;
};

/// The configuration is that of Addendum 1, the schema that of Addendum 2.
class ConfigRealDataTest : public StoreRealDataTest {
protected:
    void SetUp() override {
        StoreRealDataTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        const AssertCollector collector;
        std::istringstream stream(sText(configPath()));
        schema("IFC4").vXmlSchemaConfigInit(stream);
        reports = collector.getRecords();
    }

    std::vector<kiv::assert::AssertRecord> reports;
};

TEST_F(ConfigRealDataTest, EveryReportIsExplained) {
    const std::vector<kiv::assert::AssertRecord> expected = {
        // It writes "generate-keys" where the option is "generate-key".
        configReport("Unknown attribute", "Option::vInit::<lambda_1>::operator ()", "Option"),
        // IfcTessellatedFaceSet.Normals: in Addendum 2 only its subtype has it.
        configReport("Attribute not found", "Attribute::vRead", "Attribute"),
        // IfcTriangulatedFaceSet.NormalIndex: Addendum 2 has PnIndex instead.
        configReport("Attribute not found", "Attribute::vRead", "Attribute"),
    };
    EXPECT_EQ(reports, expected);
    const XmlFromText document(sText(configPath()));
    EXPECT_EQ(PlainConfig(document.root(), schema("IFC4")).missing,
              (Names{"IfcTessellatedFaceSet.Normals", "IfcTriangulatedFaceSet.NormalIndex"}));
}

TEST_F(ConfigRealDataTest, SettingsOfTheWholeAreKept) {
    const auto& config = *schema("IFC4").pXmlSchemaConfig();
    EXPECT_EQ(config.getOption().getConcreteAttribute(), xmlschema::ExpAttribute::AttributeContent);
    EXPECT_EQ(config.getOption().getEntityAttribute(), xmlschema::ExpAttribute::NotGiven);
    EXPECT_EQ(config.getSchema().getTargetNamespace(), "http://www.buildingsmart-tech.org/ifcXML/IFC4/final");
    EXPECT_EQ(config.getNamespace().getPrefix(), "ifc");
    EXPECT_EQ(config.getNamespace().getAlias(), "http://www.buildingsmart-tech.org/ifcXML/IFC4/final");
    EXPECT_EQ(config.getUosElement().getName(), "ifcXML");
}

TEST_F(ConfigRealDataTest, EveryRecordSaysWhatItsElementSays) {
    const XmlFromText document(sText(configPath()));
    const PlainConfig plain(document.root(), schema("IFC4"));
    const auto& config = *schema("IFC4").pXmlSchemaConfig();
    ASSERT_EQ(config.getAttributes().size(), 257U);
    ASSERT_EQ(plain.attributes.size(), 257U);
    ASSERT_EQ(config.getAttributesInverse().size(), 19U);
    ASSERT_EQ(plain.inverses.size(), 19U);
    for (std::size_t index = 0; index < plain.attributes.size(); ++index) {
        const auto& record = config.getAttributes()[index];
        EXPECT_EQ(Settings(record.getRepresentation(), record.isTagless(), record.isKeep()),
                  plain.attributes[index].second)
            << plain.attributes[index].first->getName();
    }
    for (std::size_t index = 0; index < plain.inverses.size(); ++index)
        EXPECT_EQ(static_cast<int>(config.getAttributesInverse()[index].getRepresentation()),
                  plain.inverses[index].second.representation)
            << plain.inverses[index].first->getName();
}

TEST_F(ConfigRealDataTest, EveryAttributeOfTheSchemaIsLinkedToItsLastRecordOrNone) {
    const XmlFromText document(sText(configPath()));
    const PlainConfig plain(document.root(), schema("IFC4"));
    const auto& config = *schema("IFC4").pXmlSchemaConfig();
    std::map<const express::Attribute*, const xmlschema::Attribute*> records;
    for (std::size_t index = 0; index < plain.attributes.size(); ++index)
        records[plain.attributes[index].first] = &config.getAttributes().at(index);
    std::map<const express::AttributeInverse*, const xmlschema::AttributeInverse*> recordsInverse;
    for (std::size_t index = 0; index < plain.inverses.size(); ++index)
        recordsInverse[plain.inverses[index].first] = &config.getAttributesInverse().at(index);
    // IfcOffsetCurve.BasisCurve is set for both subtypes.
    EXPECT_EQ(records.size(), 256U);
    for (const auto* const entity : entitiesOf(schema("IFC4"))) {
        for (const auto& attribute : entity->getAttributes())
            EXPECT_EQ(attribute.pXmlAttribute(), records[&attribute]) << attribute.getName();
        for (const auto& attribute : entity->getAttributesInverse())
            EXPECT_EQ(attribute.pXmlAttribute(), recordsInverse[&attribute]) << attribute.getName();
    }
}

} // namespace

} // namespace kiv::test
