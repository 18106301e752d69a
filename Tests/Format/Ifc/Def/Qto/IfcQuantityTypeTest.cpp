#include "kiv/Format/Ifc/Def/Qto/IfcQuantityType.h"

#include "Support/AssertCollector.h"
#include "Support/ErrorRecords.h"
#include "Support/SchemaFromText.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <typeindex>
#include <typeinfo>
#include <vector>

namespace kiv::test {

namespace {

using namespace ifc::def::qto;
using ifc::def::xml::XmlSetErrors;
using Reports = std::vector<kiv::assert::AssertRecord>;

constexpr const char* SourcePath = "Source/Format/Ifc/Def/Qto/IfcQuantityType";

std::unique_ptr<QuantityType> pTypeOf(std::string_view xml) {
    return QuantityType::pCreate(XmlFromText(xml).root());
}

struct KindRow {
    const char* code;
    const std::type_info& kind;
    const char* entityName;
    const char* valueAttributeName;
    const char* measureTypeName;
};

const KindRow Kinds[] = {
    {"Q_COUNT", typeid(QuantityTypeCount), "IfcQuantityCount", "CountValue", "IfcCountMeasure"},
    {"Q_WEIGHT", typeid(QuantityTypeWeight), "IfcQuantityWeight", "WeightValue", "IfcMassMeasure"},
    {"Q_LENGTH", typeid(QuantityTypeLength), "IfcQuantityLength", "LengthValue", "IfcLengthMeasure"},
    {"Q_AREA", typeid(QuantityTypeArea), "IfcQuantityArea", "AreaValue", "IfcAreaMeasure"},
    {"Q_VOLUME", typeid(QuantityTypeVolume), "IfcQuantityVolume", "VolumeValue", "IfcVolumeMeasure"},
    {"Q_TIME", typeid(QuantityTypeTime), "IfcQuantityTime", "TimeValue", "IfcTimeMeasure"},
};

std::string sElementOf(const std::string& text) {
    return "<QtoType>" + text + "</QtoType>";
}

TEST(QuantityType, KindIsTheOneOfTheCode) {
    for (const KindRow& row : Kinds) {
        SCOPED_TRACE(row.code);
        const AssertCollector reports;
        const auto type = pTypeOf(sElementOf(row.code));
        ASSERT_NE(type, nullptr);
        const QuantityType& made = *type;
        EXPECT_EQ(std::type_index(typeid(made)), std::type_index(row.kind));
        EXPECT_STREQ(type->pTypeCode(), row.code);
        EXPECT_EQ(type->sEntityName(), row.entityName);
        EXPECT_EQ(type->sValueAttributeName(), row.valueAttributeName);
        EXPECT_EQ(type->sMeasureTypeName(), row.measureTypeName);
        EXPECT_EQ(reports.getRecords(), Reports());
    }
}

const kiv::assert::AssertRecord UnknownNode{0, "Unknown node", "kiv::ifc::def::qto::QuantityType::pCreate",
                                            SourcePath, 38};

TEST(QuantityType, CodeAfterABlankMakesNoneAndIsReported) {
    const AssertCollector reports;
    EXPECT_EQ(pTypeOf("<QtoType> Q_AREA</QtoType>"), nullptr);
    EXPECT_EQ(reports.getRecords(), Reports{UnknownNode});
}

TEST(QuantityType, UnknownCodesMakeNoneAndAreReported) {
    for (const char* text :
         {"Q_AREA ", "q_area", "Q_MASS", "Q_AREAS", "<!-- c -->Q_AREA", "<b>Q_AREA</b>", "\n"}) {
        SCOPED_TRACE(text);
        const AssertCollector reports;
        EXPECT_EQ(pTypeOf(sElementOf(text)), nullptr);
        EXPECT_EQ(reports.getRecords(), Reports{UnknownNode});
    }
}

TEST(QuantityType, EmptyElementMakesNoneAndIsReported) {
    for (const char* xml : {"<QtoType/>", "<QtoType></QtoType>"}) {
        SCOPED_TRACE(xml);
        const AssertCollector reports;
        EXPECT_EQ(pTypeOf(xml), nullptr);
        EXPECT_EQ(
            reports.getRecords(),
            (Reports{{0, "Child not found", "kiv::ifc::def::qto::QuantityType::pCreate", SourcePath, 42}}));
    }
}

TEST(QuantityType, TextAfterTheCodesNodeIsNotSeen) {
    const auto type = pTypeOf("<QtoType>Q_AREA<!-- c -->X</QtoType>");
    ASSERT_NE(type, nullptr);
    EXPECT_STREQ(type->pTypeCode(), "Q_AREA");
}

TEST(QuantityTypeSimple, CheckReportsAMeasureThatTheSchemaLacksAndPasses) {
    const auto schema = schemaFromText("");
    for (const KindRow& row : Kinds) {
        SCOPED_TRACE(row.code);
        const AssertCollector reports;
        XmlSetErrors errors;
        EXPECT_TRUE(pTypeOf(sElementOf(row.code))->checkForErrors(*schema, errors));
        EXPECT_EQ(reports.getRecords(),
                  (Reports{{0, "Entity not found", "kiv::ifc::def::qto::QuantityTypeSimple::checkForErrors",
                            SourcePath, 54}}));
        EXPECT_EQ(errors.getRecords(), Records());
    }
}

TEST(QuantityTypeSimple, CheckPassesAlsoWhenNobodyListens) {
    const auto schema = schemaFromText("");
    XmlSetErrors errors;
    for (const KindRow& row : Kinds)
        EXPECT_TRUE(pTypeOf(sElementOf(row.code))->checkForErrors(*schema, errors)) << row.code;
    EXPECT_EQ(errors.getRecords(), Records());
}

/// Says how often its measure was asked for.
class AskedType final : public QuantityTypeOf<kinds::Area> {
public:
    std::string sMeasureTypeName() const override {
        ++asked;
        return "IfcAreaMeasure";
    }

    mutable int asked = 0;
};

TEST(QuantityTypeSimple, CheckLooksNoMeasureUpWhileNobodyListens) {
    const auto schema = schemaFromText("");
    const AskedType type;
    XmlSetErrors errors;
    EXPECT_TRUE(type.checkForErrors(*schema, errors));
    EXPECT_EQ(type.asked, 0);
    const AssertCollector reports;
    EXPECT_TRUE(type.checkForErrors(*schema, errors));
    EXPECT_EQ(type.asked, 1);
}

TEST(QuantityTypeSimple, CheckTakesAnyObjectForTheMeasure) {
    for (const char* object :
         {"TYPE IfcMassMeasure = REAL;\nEND_TYPE;\n", "ENTITY IfcMassMeasure;\nEND_ENTITY;\n"}) {
        SCOPED_TRACE(object);
        const auto schema = schemaFromText(object);
        const AssertCollector reports;
        XmlSetErrors errors;
        EXPECT_TRUE(pTypeOf("<QtoType>Q_WEIGHT</QtoType>")->checkForErrors(*schema, errors));
        EXPECT_EQ(reports.getRecords(), Reports());
    }
}

} // namespace

} // namespace kiv::test
