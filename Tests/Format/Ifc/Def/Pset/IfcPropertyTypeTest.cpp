#include "kiv/Format/Ifc/Def/Pset/IfcPropertyType.h"

#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"

#include <typeindex>
#include <typeinfo>

namespace kiv::test {

namespace {

using namespace ifc::def::pset;
using ifc::def::xml::XmlSetErrors;

std::unique_ptr<PropertyType> pTypeOf(std::string_view content, XmlSetErrors& errors) {
    const XmlFromText document("<PropertyType>" + std::string(content) + "</PropertyType>");
    return PropertyType::pCreate(nullptr, document.root(), errors);
}

struct KindRow {
    const char* tag;
    const std::type_info& kind;
    const char* entityName;
};

TEST(PropertyType, KindIsTheOneOfTheTag) {
    const KindRow rows[] = {
        {"TypePropertySingleValue", typeid(TypePropertySingleValue), "IfcPropertySingleValue"},
        {"TypePropertyEnumeratedValue", typeid(TypePropertyEnumeratedValue), "IfcPropertyEnumeratedValue"},
        {"TypePropertyBoundedValue", typeid(TypePropertyBoundedValue), "IfcPropertyBoundedValue"},
        {"TypePropertyTableValue", typeid(TypePropertyTableValue), "IfcPropertyTableValue"},
        {"TypePropertyReferenceValue", typeid(TypePropertyReferenceValue), "IfcPropertyReferenceValue"},
        {"TypePropertyListValue", typeid(TypePropertyListValue), "IfcPropertyListValue"},
        {"TypeComplexProperty", typeid(TypeComplexProperty), "IfcComplexProperty"},
    };
    for (const KindRow& row : rows) {
        SCOPED_TRACE(row.tag);
        const AssertCollector reports;
        XmlSetErrors errors;
        const auto type = pTypeOf("<" + std::string(row.tag) + "/>", errors);
        ASSERT_NE(type, nullptr);
        const PropertyType& made = *type;
        EXPECT_EQ(std::type_index(typeid(made)), std::type_index(row.kind));
        EXPECT_EQ(type->sEntityName(), row.entityName);
        EXPECT_EQ(reports.getRecords(), Reports());
        EXPECT_EQ(errors.getRecords(), Records());
    }
}

TEST(PropertyType, NoElementChildMakesNoneWithoutAReport) {
    for (const char* content : {"", "text", "<!-- c -->"}) {
        SCOPED_TRACE(content);
        const AssertCollector reports;
        XmlSetErrors errors;
        EXPECT_EQ(pTypeOf(content, errors), nullptr);
        EXPECT_EQ(reports.getRecords(), Reports());
        EXPECT_EQ(errors.getRecords(), Records());
    }
}

TEST(PropertyType, SimplePropertyMakesNoneWithoutAReport) {
    const AssertCollector reports;
    XmlSetErrors errors;
    EXPECT_EQ(pTypeOf("<TypeSimpleProperty><DataType type='IfcLabel'/></TypeSimpleProperty>", errors),
              nullptr);
    EXPECT_EQ(reports.getRecords(), Reports());
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(PropertyType, UnknownKindMakesNoneAndIsReported) {
    for (const char* content :
         {"<TypePropertyValue/>", "<typePropertySingleValue/>", "<Odd/><TypePropertyListValue/>"}) {
        SCOPED_TRACE(content);
        const AssertCollector reports;
        XmlSetErrors errors;
        EXPECT_EQ(pTypeOf(content, errors), nullptr);
        EXPECT_EQ(reports.getRecords(),
                  (Reports{{0, "Unknown node", "kiv::ifc::def::pset::PropertyType::pCreate",
                            "Source/Format/Ifc/Def/Pset/IfcPropertyType", 46}}));
        EXPECT_EQ(errors.getRecords(), Records());
    }
}

TEST(PropertyType, FurtherChildrenAreIgnored) {
    const AssertCollector reports;
    XmlSetErrors errors;
    const auto type = pTypeOf("text<TypePropertyListValue/><TypeComplexProperty/><Odd/>", errors);
    ASSERT_NE(type, nullptr);
    EXPECT_EQ(type->sEntityName(), "IfcPropertyListValue");
    EXPECT_EQ(reports.getRecords(), Reports());
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(PropertyType, UnknownKindMakesNoneAlsoWhenNobodyListens) {
    XmlSetErrors errors;
    EXPECT_EQ(pTypeOf("<Odd/>", errors), nullptr);
}

} // namespace

} // namespace kiv::test
