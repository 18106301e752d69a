#include "kiv/Kit/Documents/SetCollection.h"

#include "Support/SchemaFromText.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace kiv::kit {

namespace {

using kiv::test::TemporaryFolder;
using testing::IsEmpty;
using testing::NotNull;
using testing::SizeIs;

std::string sSet(const std::string& name, const std::string& type) {
    return "<PropertySetDef><Name>" + name +
           "</Name><PropertyDefs><PropertyDef><Name>P</Name><PropertyType>"
           "<TypePropertySingleValue><DataType type='" +
           type +
           "'/></TypePropertySingleValue></PropertyType>"
           "</PropertyDef></PropertyDefs></PropertySetDef>";
}

class SetCollectionTest : public testing::Test {
protected:
    const TemporaryFolder& getFolder() const { return folder_; }
    const ifc::def::schema::Schema& getSchema() const { return *schema_; }

private:
    TemporaryFolder folder_;
    std::unique_ptr<ifc::def::schema::Schema> schema_ = kiv::test::schemaFromText(
        "TYPE BldLabel = STRING;\nEND_TYPE;\nENTITY BldDuct;\n  PredefinedType : STRING(16);\nEND_ENTITY;");
};

TEST_F(SetCollectionTest, HasTheSetsAndTheirDocuments) {
    const auto a = getFolder().sWrite("a.xml", sSet("Pset_A", "BldLabel"));
    const auto b = getFolder().sWrite("b.xml", sSet("Pset_B", "BldLabel"));
    const auto sets = setCollectionRead(getSchema(), {a, b});
    EXPECT_THAT(sets.problems, IsEmpty());
    EXPECT_THAT(sets.paths, SizeIs(2));
    const auto* set = sets.definitions.getXmlSetFromName("Pset_B");
    ASSERT_THAT(set, NotNull());
    EXPECT_EQ(sets.paths.at(set), b);
}

TEST_F(SetCollectionTest, SecondSetOfANameIsLeftOutWithTheFirstOnesPath) {
    const auto a = getFolder().sWrite("a.xml", sSet("Pset_A", "BldLabel"));
    const auto b = getFolder().sWrite("b.xml", sSet("PSET_a", "BldLabel"));
    const auto sets = setCollectionRead(getSchema(), {a, b});
    ASSERT_THAT(sets.problems, SizeIs(1));
    EXPECT_EQ(sets.problems[0].path, b);
    EXPECT_EQ(sets.problems[0].reason, "the set \"PSET_a\" is left out: " + a + " has one of that name");
    EXPECT_FALSE(sets.problems[0].failure);
    EXPECT_THAT(sets.paths, SizeIs(1));
}

TEST_F(SetCollectionTest, UnreadableDocumentsAreProblemsAndTheRestIsUsed) {
    const auto a = getFolder().sWrite("a.xml", "<Catalogue/>");
    const auto b = getFolder().sWrite("b.xml", sSet("Pset_B", "BldLabel"));
    const auto sets = setCollectionRead(getSchema(), {a, getFolder().sPath("none.xml"), b});
    ASSERT_THAT(sets.problems, SizeIs(2));
    EXPECT_EQ(sets.problems[0].failure->kind, FailureKind::NotASet);
    EXPECT_EQ(sets.problems[1].failure->kind, FailureKind::Unreadable);
    EXPECT_THAT(sets.definitions.getXmlSetFromName("Pset_B"), NotNull());
}

TEST_F(SetCollectionTest, RefusedSetIsAProblemAndItsNameStaysFree) {
    // Its predefined type is no enumeration.
    const auto a =
        getFolder().sWrite("a.xml", "<PropertySetDef><Name>Pset_A</Name><ApplicableClasses><ClassName>"
                                    "BldDuct/ROUND</ClassName></ApplicableClasses></PropertySetDef>");
    const auto b = getFolder().sWrite("b.xml", sSet("Pset_A", "BldLabel"));
    const auto sets = setCollectionRead(getSchema(), {a, b});
    ASSERT_THAT(sets.problems, SizeIs(1));
    EXPECT_EQ(sets.problems[0].path, a);
    EXPECT_FALSE(sets.problems[0].failure);
    EXPECT_THAT(sets.problems[0].reason, testing::StartsWith("the set \"Pset_A\" is refused: "));
    ASSERT_THAT(sets.paths, SizeIs(1));
    EXPECT_EQ(sets.paths.begin()->second, b);
}

} // namespace

} // namespace kiv::kit
