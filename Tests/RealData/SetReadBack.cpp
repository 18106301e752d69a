#include "RealData/SetReadBack.h"

#include "Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "Format/Ifc/Def/Qto/IfcQuantityType.h"

#include <gtest/gtest.h>
#include <typeinfo>

namespace kiv::test {

namespace {

namespace defs = ifc::def::xml;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;

void vExpectAliases(const defs::Aliases& read, const defs::Aliases& original) {
    ASSERT_EQ(read.getEntries().size(), original.getEntries().size());
    for (std::size_t index = 0; index < read.getEntries().size(); ++index) {
        EXPECT_EQ(read.getEntries()[index].locale, original.getEntries()[index].locale);
        EXPECT_EQ(read.getEntries()[index].text, original.getEntries()[index].text);
    }
}

/// What a type becomes when it is written and read back, by the rules of writing.
class TypeRoundTrip {
public:
    TypeRoundTrip(const pset::PropertyType& read, const pset::PropertyType& original) : read_(read) {
        if (const auto* const table = pAs<pset::TypePropertyTableValue>(original))
            vTable(*table);
        else if (const auto* const list = pAs<pset::TypePropertyListValue>(original))
            vList(*list);
        else if (const auto* const enumeration = pAs<pset::TypePropertyEnumeratedValue>(original))
            vEnumeration(*enumeration);
        else if (const auto* const bounded = pAs<pset::TypePropertyBoundedValue>(original))
            vBounded(*bounded);
        else if (const auto* const single = pAs<pset::TypePropertySingleValue>(original))
            EXPECT_EQ(as<pset::TypePropertySingleValue>().getDataTypeName(), single->getDataTypeName());
        else
            // The data type of a reference is written beside its element, where reading does not look.
            EXPECT_EQ(as<pset::TypePropertyReferenceValue>().getDataTypeName(), "");
    }

private:
    template <class Type>
    static const Type* pAs(const pset::PropertyType& type) {
        return dynamic_cast<const Type*>(&type);
    }
    template <class Type>
    const Type& as() const {
        return dynamic_cast<const Type&>(read_);
    }

    /// Each bound falls back to the data type's name.
    void vBounded(const pset::TypePropertyBoundedValue& original) const {
        const auto effective = [&](const std::string& bound) {
            return bound.empty() ? original.getDataTypeName() : bound;
        };
        EXPECT_EQ(as<pset::TypePropertyBoundedValue>().getDataTypeName(), original.getDataTypeName());
        EXPECT_EQ(as<pset::TypePropertyBoundedValue>().getLowerBoundValue(),
                  effective(original.getLowerBoundValue()));
        EXPECT_EQ(as<pset::TypePropertyBoundedValue>().getUpperBoundValue(),
                  effective(original.getUpperBoundValue()));
    }

    void vEnumeration(const pset::TypePropertyEnumeratedValue& original) const {
        EXPECT_EQ(as<pset::TypePropertyEnumeratedValue>().getEnumerationName(),
                  original.getEnumerationName());
        EXPECT_EQ(as<pset::TypePropertyEnumeratedValue>().getItems(), original.getItems());
    }

    void vTable(const pset::TypePropertyTableValue& original) const {
        EXPECT_EQ(as<pset::TypePropertyTableValue>().getDefiningTypeName(), original.getDefiningTypeName());
        EXPECT_EQ(as<pset::TypePropertyTableValue>().getDefinedTypeName(), original.getDefinedTypeName());
    }

    /// The item type is written as one more value.
    void vList(const pset::TypePropertyListValue& original) const {
        const auto& list = as<pset::TypePropertyListValue>();
        const bool hasItemType = !original.getListItemTypeName().empty();
        ASSERT_EQ(list.getListValues().size(), original.getListValues().size() + (hasItemType ? 1 : 0));
        for (std::size_t index = 0; index < original.getListValues().size(); ++index)
            EXPECT_EQ(list.getListValues()[index].getDataTypeName(),
                      original.getListValues()[index].getDataTypeName());
        if (hasItemType) {
            EXPECT_EQ(list.getListItemTypeName(), original.getListItemTypeName());
        }
    }

    const pset::PropertyType& read_;
};

void vExpectMember(const defs::Def& read, const defs::Def& original) {
    SCOPED_TRACE(original.getConcept());
    EXPECT_EQ(read.getName(), original.getName());
    EXPECT_EQ(read.getDefinition(), original.getDefinition());
    EXPECT_EQ(read.getIfdGuid(), original.getIfdGuid());
    vExpectAliases(read.getDefinitionAliases(), original.getDefinitionAliases());
    // Name aliases are written under a tag that reading does not know.
    EXPECT_TRUE(read.getNameAliases().getEntries().empty());
}

void vExpectProperties(const pset::PropertySetDef& read, const pset::PropertySetDef& original) {
    ASSERT_EQ(read.getProperties().size(), original.getProperties().size());
    for (std::size_t index = 0; index < read.getProperties().size(); ++index) {
        const auto& readProperty = read.getProperties()[index];
        const auto& property = original.getProperties()[index];
        vExpectMember(readProperty, property);
        const bool written =
            property.pType() && !dynamic_cast<const pset::TypeComplexProperty*>(property.pType());
        ASSERT_EQ(readProperty.pType() != nullptr, written) << property.getConcept();
        if (written)
            TypeRoundTrip(*readProperty.pType(), *property.pType());
    }
}

void vExpectQuantities(const qto::QuantitySetDef& read, const qto::QuantitySetDef& original) {
    ASSERT_EQ(read.getQuantities().size(), original.getQuantities().size());
    for (std::size_t index = 0; index < read.getQuantities().size(); ++index) {
        const auto* const readType = read.getQuantities()[index].pType();
        const auto* const type = original.getQuantities()[index].pType();
        vExpectMember(read.getQuantities()[index], original.getQuantities()[index]);
        ASSERT_TRUE(type && readType) << original.getQuantities()[index].getConcept();
        EXPECT_STREQ(readType->pTypeCode(), type->pTypeCode());
    }
}

} // namespace

std::unique_ptr<defs::SetDef> readSet(const kiv::xml::Element& root, defs::XmlSetErrors& errors) {
    if (root.boNodeNameIs("QtoSetDef"))
        return std::make_unique<qto::QuantitySetDef>(root, errors);
    return std::make_unique<pset::PropertySetDef>(root, errors);
}

void vExpectReadBack(const defs::SetDef& read, const defs::SetDef& original) {
    EXPECT_EQ(read.getName(), original.getName());
    EXPECT_EQ(read.getDefinition(), original.getDefinition());
    EXPECT_EQ(read.getApplicableTypeValue(), original.getApplicableTypeValue());
    vExpectAliases(read.getDefinitionAliases(), original.getDefinitionAliases());
    ASSERT_EQ(read.getApplicableClasses().size(), original.getApplicableClasses().size());
    for (std::size_t index = 0; index < read.getApplicableClasses().size(); ++index)
        EXPECT_EQ(read.getApplicableClasses()[index].sCombined(),
                  original.getApplicableClasses()[index].sCombined());
    ASSERT_EQ(typeid(read), typeid(original));
    if (const auto* const properties = dynamic_cast<const pset::PropertySetDef*>(&original))
        vExpectProperties(dynamic_cast<const pset::PropertySetDef&>(read), *properties);
    else
        vExpectQuantities(dynamic_cast<const qto::QuantitySetDef&>(read),
                          dynamic_cast<const qto::QuantitySetDef&>(original));
}

} // namespace kiv::test
