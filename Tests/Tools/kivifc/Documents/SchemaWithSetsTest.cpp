#include "kivifc/Documents/SchemaWithSets.h"

#include "Support/TemporaryFolder.h"
#include "Tools/kivifc/Program/OutputText.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace kiv::kivifc {

namespace {

using kiv::test::TemporaryFolder;
using Texts = std::vector<std::string>;

class SchemaWithSetsTest : public testing::Test {
protected:
    SchemaWithSetsTest() { vClear(); }
    ~SchemaWithSetsTest() override { vClear(); }

    static void vClear() { ifc::def::SchemaContextAndPropertySetDefinitions::instance().clear(); }

    /// "NAME: PATH PATH;" for each context.
    std::string sContexts(const Texts& arguments) {
        std::string text;
        for (const auto& [context, paths] : contextPaths("IFC4", arguments, diagnostics_)) {
            text += sContext(context) + ':';
            for (const auto& path : paths)
                text += ' ' + path;
            text += "; ";
        }
        return text;
    }

    TemporaryFolder folder_;
    test::OutputText output_;
    test::OutputText errors_;
    Diagnostics diagnostics_{output_.output, errors_.pStream()};
};

TEST_F(SchemaWithSetsTest, PathsAloneAreOfTheStandardContext) {
    EXPECT_EQ(sContexts({"a", "b"}), "IFC4 (standard): a b; ");
    EXPECT_EQ(sContexts({}), "");
}

TEST_F(SchemaWithSetsTest, ANameBeforeAnEqualsSignIsAContextOfTheHost) {
    EXPECT_EQ(sContexts({"a", "office=b", "office=c=d", "IFC4=e"}),
              "office (host): b c=d; IFC4 (standard): a e; ");
    EXPECT_EQ(sContexts({"=a"}), "IFC4 (standard): =a; ");
    EXPECT_EQ(errors_.sText(), "");
}

TEST_F(SchemaWithSetsTest, APathThatExistsIsOneWhateverItsName) {
    const auto path = folder_.sWrite("a=b", "");
    EXPECT_EQ(sContexts({path}), "IFC4 (standard): " + path + "; ");
    EXPECT_TRUE(isSetsArgument(path));
}

TEST_F(SchemaWithSetsTest, AContextWithoutAPathIsAFailure) {
    EXPECT_EQ(sContexts({"office=", "a"}), "IFC4 (standard): a; ");
    EXPECT_EQ(diagnostics_.getFailures().size(), 1U);
    EXPECT_EQ(diagnostics_.getFailures().front().subject, "office=");
}

TEST_F(SchemaWithSetsTest, OtherWordsAreNoSets) {
    EXPECT_TRUE(isSetsArgument("-"));
    EXPECT_TRUE(isSetsArgument("office=a"));
    EXPECT_FALSE(isSetsArgument("IfcWall"));
    EXPECT_FALSE(isSetsArgument("=a"));
    EXPECT_FALSE(isSetsArgument(""));
}

TEST_F(SchemaWithSetsTest, SetsAreRegisteredAndWhatIsNotUsedIsKept) {
    const auto schema = folder_.sWrite("a.exp", "SCHEMA TEST;\nENTITY Wall;\nEND_ENTITY;\nEND_SCHEMA;\n");
    const auto first = folder_.sWrite("sets/a.xml", "<PropertySetDef><Name>Pset_A</Name></PropertySetDef>");
    const auto second = folder_.sWrite("sets/b.xml", "<PropertySetDef><Name>Pset_A</Name></PropertySetDef>");
    folder_.sWrite("sets/c.xml", "<Prop");
    const auto loaded = schemaWithSetsRead(schema, {folder_.sPath("sets")}, diagnostics_);
    ASSERT_TRUE(loaded);
    const auto* set = loaded->schema.schema->pXmlSetFromName("Pset_A", {});
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(loaded->paths.at(set), first);
    ASSERT_EQ(loaded->unusedSets.size(), 1U);
    EXPECT_EQ(loaded->unusedSets[0].path, second);
    EXPECT_EQ(loaded->unusedSets[0].text, "<PropertySetDef><Name>Pset_A</Name></PropertySetDef>");
    ASSERT_EQ(diagnostics_.getFailures().size(), 1U);
    EXPECT_TRUE(diagnostics_.getFailures()[0].subject.starts_with(folder_.sPath("sets/c.xml") + ":1:"));
}

TEST_F(SchemaWithSetsTest, WithoutASchemaThereIsNothing) {
    EXPECT_FALSE(schemaWithSetsRead(folder_.sPath("none.exp"), {}, diagnostics_));
    EXPECT_EQ(diagnostics_.getStatus(), ExitStatus::Failed);
}

} // namespace

} // namespace kiv::kivifc
