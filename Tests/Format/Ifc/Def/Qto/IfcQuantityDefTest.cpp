// What quantities have of their own; the rest is in IfcDefMemberTest.cpp.

#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include "Support/ErrorRecords.h"
#include "Support/XmlFromText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

namespace kiv::test {

namespace {

using namespace ifc::def::qto;
using ifc::def::xml::XmlSetErrors;

/// A quantity of the set Qto_A, with the records of its reading.
struct ReadQuantity {
    explicit ReadQuantity(std::string_view xml) : quantity(set, XmlFromText(xml).root(), errors) {}

    XmlSetErrors errors;
    QuantitySetDef set{XmlFromText("<QtoSetDef><Name>Qto_A</Name></QtoSetDef>").root(), errors};
    QuantityDef quantity;
};

TEST(QuantityDef, ValueDefIsAnUnknownNode) {
    const ReadQuantity read("<QtoDef>\n<ValueDef/></QtoDef>");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("ValueDef", "Unknown xml node", 2)}));
}

TEST(QuantityDef, UnknownChildrenAreRecordedAndTheRestIsRead) {
    const ReadQuantity read("<QtoDef>\n<qtoType/>\n<PropertyType/><Name>N</Name></QtoDef>");
    EXPECT_EQ(read.quantity.getName(), "N");
    EXPECT_EQ(read.errors.getRecords(), (Records{error("qtoType", "Unknown xml node", 2),
                                                 error("PropertyType", "Unknown xml node", 3)}));
}

TEST(QuantityDef, MadeInCodeIsNotAmongTheQuantitiesOfItsSet) {
    const ReadQuantity read("<QtoDef/>");
    const QuantityDef quantity(read.set, "Count", std::make_unique<QuantityTypeCount>());
    EXPECT_EQ(quantity.getEntityName(), "IfcQuantityCount");
    EXPECT_TRUE(read.set.getQuantities().empty());
}

} // namespace

} // namespace kiv::test
