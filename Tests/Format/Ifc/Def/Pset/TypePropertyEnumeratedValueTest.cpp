#include "Format/Ifc/Def/Pset/PropertyTypeReading.h"
#include "Support/ErrorRecords.h"
#include "Support/Growth.h"

namespace kiv::test {

namespace {

using namespace ifc::def::pset;
using ifc::def::xml::XmlSetErrors;

/// An enumeration, read from its element on behalf of a property named Status, with the records of that.
struct Read {
    explicit Read(std::string_view xml) : type(&property(), XmlFromText(xml).root(), errors) {}

    static const PropertyDef& property() {
        static XmlSetErrors none;
        static const PropertyDef status(
            nullptr, XmlFromText("<PropertyDef><Name>Status</Name></PropertyDef>").root(), none);
        return status;
    }

    XmlSetErrors errors;
    TypePropertyEnumeratedValue type;
};

struct NameRow {
    const char* list;
    const char* name;
    /// The name as it is written again.
    const char* written;
};

TEST(TypePropertyEnumeratedValue, PrefixOfTheNameIsRemovedAndWrittenAgain) {
    const NameRow rows[] = {
        {"<EnumList name='PEnum_Status'/>", "Status", "PEnum_Status"},
        {"<EnumList name='Kind'/>", "Kind", "PEnum_Kind"},
        {"<EnumList name='PEnum'/>", "PEnum", "PEnum_PEnum"},
        {"<EnumList name='PEnum_'/>", "", "PEnum_"},
        {"<EnumList name='PEnum_PEnum_A'/>", "PEnum_A", "PEnum_PEnum_A"},
        {"<EnumList name='penum_A'/>", "penum_A", "PEnum_penum_A"},
        {"<EnumList name='A_PEnum_'/>", "A_PEnum_", "PEnum_A_PEnum_"},
        {"<EnumList name=''/>", "", "PEnum_"},
        {"<EnumList/>", "Status", "PEnum_Status"},
        {"", "", "PEnum_"},
        {"<EnumList name='A'/><EnumList/>", "Status", "PEnum_Status"},
        {"<EnumList/><EnumList name='A'/>", "A", "PEnum_A"},
    };
    for (const NameRow& row : rows) {
        SCOPED_TRACE(row.list);
        const Read read("<t>" + std::string(row.list) + "</t>");
        EXPECT_EQ(read.type.getEnumerationName(), row.name);
        EXPECT_EQ(sTypeExport(read.type), "<PropertyType><TypePropertyEnumeratedValue><EnumList name=\"" +
                                              std::string(row.written) +
                                              "\"/></TypePropertyEnumeratedValue></PropertyType>");
    }
}

TEST(TypePropertyEnumeratedValue, PrefixOfAPropertysNameStays) {
    XmlSetErrors errors;
    const PropertyDef property(
        nullptr,
        XmlFromText("<PropertyDef><Name>PEnum_A</Name><PropertyType><TypePropertyEnumeratedValue>"
                    "<EnumList/></TypePropertyEnumeratedValue></PropertyType></PropertyDef>")
            .root(),
        errors);
    const auto& type = dynamic_cast<const TypePropertyEnumeratedValue&>(*property.pType());
    EXPECT_EQ(type.getEnumerationName(), "PEnum_A");
}

TEST(TypePropertyEnumeratedValue, PropertyWhoseNameIsReadLaterLendsNone) {
    XmlSetErrors errors;
    const PropertyDef property(
        nullptr,
        XmlFromText("<PropertyDef><PropertyType><TypePropertyEnumeratedValue><EnumList/>"
                    "</TypePropertyEnumeratedValue></PropertyType><Name>A</Name></PropertyDef>")
            .root(),
        errors);
    const auto& type = dynamic_cast<const TypePropertyEnumeratedValue&>(*property.pType());
    EXPECT_EQ(type.getEnumerationName(), "");
}

TEST(TypePropertyEnumeratedValue, WithoutAPropertyHasNoName) {
    XmlSetErrors errors;
    const TypePropertyEnumeratedValue type(nullptr, XmlFromText("<t><EnumList/></t>").root(), errors);
    EXPECT_EQ(type.getEnumerationName(), "");
}

TEST(TypePropertyEnumeratedValue, ItemsAreReadFromElementsOfAnyName) {
    const Read read("<t><EnumList><EnumItem>A</EnumItem><Other>B</Other></EnumList>"
                    "<EnumList><EnumItem>A</EnumItem></EnumList></t>");
    EXPECT_EQ(read.type.getItems(), (Texts{"A", "B", "A"}));
    EXPECT_EQ(read.errors.getRecords(), Records());
}

TEST(TypePropertyEnumeratedValue, BlanksAroundAnItemAreRemoved) {
    EXPECT_EQ(Read("<t><EnumList><EnumItem>  A  </EnumItem></EnumList></t>").type.getItems(), Texts{"A"});
}

TEST(TypePropertyEnumeratedValue, ItemOfBlanksOnlyIsDropped) {
    EXPECT_EQ(Read("<t><EnumList><EnumItem>   </EnumItem></EnumList></t>").type.getItems(), Texts());
}

TEST(TypePropertyEnumeratedValue, AllWhiteSpaceAroundAnItemIsRemovedAndThatInsideStays) {
    const Read read(
        "<t><EnumList><EnumItem>\t\n&#13; A\t B \n\t</EnumItem><EnumItem>&#160;C</EnumItem></EnumList></t>");
    EXPECT_EQ(read.type.getItems(), (Texts{"A\t B", "\xC2\xA0"
                                                    "C"}));
}

TEST(TypePropertyEnumeratedValue, ItemWithoutTextIsDropped) {
    EXPECT_EQ(Read("<t><EnumList><EnumItem/><EnumItem><b>A</b></EnumItem></EnumList></t>").type.getItems(),
              Texts());
}

TEST(TypePropertyEnumeratedValue, ConstantsKeepOrderAndRepetitionsAndAreOrderedByName) {
    const Read read("<t><ConstantList>"
                    "<ConstantDef><Name>B</Name><Definition>1</Definition></ConstantDef>"
                    "<Other><Name>A</Name><Definition>2</Definition></Other>"
                    "<ConstantDef><Name>B</Name><Definition>3</Definition></ConstantDef></ConstantList>"
                    "<ConstantList><ConstantDef><Name>A</Name><Definition>4</Definition></ConstantDef>"
                    "<ConstantDef/></ConstantList></t>");
    Texts asRead;
    for (const auto& constant : read.type.getConstants())
        asRead.push_back(constant.getName() + constant.getDefinition());
    EXPECT_EQ(asRead, (Texts{"B1", "A2", "B3", "A4", ""}));
    Texts byName;
    for (const auto* constant : read.type.getConstantsByName())
        byName.push_back(constant->getName() + constant->getDefinition());
    EXPECT_EQ(byName, (Texts{"", "A2", "B1"}));
    EXPECT_EQ(read.errors.getRecords(), Records());
}

constexpr std::size_t NumberBase = 1'000'000;

/// That many items, and that many constants named by numbers of one length, the highest first.
std::string sEnumerationOf(std::size_t count) {
    std::string items;
    std::string constants;
    for (std::size_t i = 0; i != count; ++i) {
        items += "<EnumItem>A</EnumItem>";
        constants += "<ConstantDef><Name>" + std::to_string(NumberBase + count - i) + "</Name></ConstantDef>";
    }
    return "<t><EnumList>" + items + "</EnumList><ConstantList>" + constants + "</ConstantList></t>";
}

TEST(TypePropertyEnumeratedValue, ReadingTwiceAsManyItemsAndConstantsTakesAboutTwiceAsLong) {
    const double growth = growthFrom(50'000, [](std::size_t count) {
        return [count, document = std::make_shared<XmlFromText>(sEnumerationOf(count))] {
            XmlSetErrors errors;
            const TypePropertyEnumeratedValue type(nullptr, document->root(), errors);
            EXPECT_EQ(type.getItems().size(), count);
            EXPECT_EQ(type.getConstants().size(), count);
            ASSERT_EQ(type.getConstantsByName().size(), count);
            EXPECT_EQ(type.getConstantsByName().front()->getName(), "1000001");
            EXPECT_EQ(type.getConstantsByName().back()->getName(), std::to_string(NumberBase + count));
        };
    });
    EXPECT_LE(growth, ProportionalGrowth);
}

TEST(TypePropertyEnumeratedValue, UnknownChildrenAreRecorded) {
    const Read read("<t>\n<DataType type='x'/>\n<EnumItem>A</EnumItem></t>");
    EXPECT_EQ(read.errors.getRecords(),
              (Records{error("DataType", "Unknown xml node", 2), error("EnumItem", "Unknown xml node", 3)}));
    EXPECT_EQ(read.type.getItems(), Texts());
}

TEST(TypePropertyEnumeratedValue, CheckLooksNothingUp) {
    const auto schema = schemaFromText("");
    EXPECT_EQ(checkReportsOf(Read("<t><EnumList name='Missing'><EnumItem>A</EnumItem></EnumList></t>").type,
                             *schema),
              Reports());
}

TEST(TypePropertyEnumeratedValue, IsWrittenWithItsItemsAndWithoutItsConstants) {
    const Read read("<t><ConstantList><ConstantDef><Name>C</Name></ConstantDef></ConstantList>"
                    "<EnumList name='E'><Other> B</Other><EnumItem>A &lt; B</EnumItem></EnumList></t>");
    EXPECT_EQ(sTypeExport(read.type),
              "<PropertyType><TypePropertyEnumeratedValue><EnumList name=\"PEnum_E\"><EnumItem>B</EnumItem>"
              "<EnumItem>A &lt; B</EnumItem></EnumList></TypePropertyEnumeratedValue></PropertyType>");
}

} // namespace

} // namespace kiv::test
