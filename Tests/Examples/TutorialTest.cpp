// Runs the programs of README.md and the tutorial as their readers do: in a folder with the sample data.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

std::string sText(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Tutorial : public testing::Test {
protected:
    Tutorial() {
        fs::remove_all(folder_);
        fs::copy(KIV_PROJECT "/Examples/Data", folder_, fs::copy_options::recursive);
    }
    ~Tutorial() override { fs::remove_all(folder_); }

    /// The exit status of the program, run in the folder of the sample.
    int run(const std::string& program) {
        const auto command = "cd '" + folder_.string() + "' && '" KIV_TUTORIAL "/kiv_tutorial_" + program +
                             "' >stdout 2>stderr";
        const auto status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    std::string sOutput() const { return sText(folder_ / "stdout"); }
    std::string sErrors() const { return sText(folder_ / "stderr"); }

    fs::path folder_ =
        fs::temp_directory_path() /
        ("kiv-tutorial-" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST_F(Tutorial, FirstSaysWhatIsWrongWithSetsAndWhere) {
    ASSERT_EQ(run("First"), 0) << sErrors();
    // Its seventh line names a class that does not exist, after two tabs and the tag.
    EXPECT_NE(("\n" + sOutput()).find("\nBrokenSets/Broken_Classes.xml:7:14: "), std::string::npos);
    EXPECT_NE(sOutput().find("BldWal\""), std::string::npos);
}

TEST_F(Tutorial, FirstEndsWithoutASchema) {
    fs::remove(folder_ / "Building.exp");
    EXPECT_EQ(run("First"), 1);
}

TEST_F(Tutorial, SchemaLooksThingsUp) {
    ASSERT_EQ(run("Schema"), 0) << sErrors();
    EXPECT_EQ(sOutput(), "BldWall\n"
                         "BldElement (abstract)\n"
                         "BldObject (abstract)\n"
                         "BldRoot (abstract)\n"
                         "Length : BldPositiveLength\n"
                         "BldLabel = STRING(80)\n");
    EXPECT_EQ(sErrors(), "");
}

TEST_F(Tutorial, SchemaShowsWhatIsUnresolved) {
    std::ofstream(folder_ / "Building.exp")
        << "SCHEMA S;\nENTITY BldWall\n SUBTYPE OF (BldNowhere);\nEND_ENTITY;\nEND_SCHEMA;\n";
    ASSERT_EQ(run("Schema"), 0);
    EXPECT_EQ(sErrors().rfind("unresolved: ", 0), 0U) << sErrors();
}

// Two sets apply to every class; then come those of BldWall.
TEST_F(Tutorial, SetsAreReadAndFound) {
    ASSERT_EQ(run("Sets"), 0) << sErrors();
    EXPECT_EQ(sOutput(), "Pset_BldSubstance\nQto_BldAny\nPset_BldWall\nQto_BldWall\n"
                         "Pset_BldWall.Mark: BldLabel\n");
    EXPECT_EQ(sErrors(), "");
}

TEST_F(Tutorial, SetsThatAreWrongAreReported) {
    std::ofstream(folder_ / "Sets/Pset_BldDoor.xml") << "<Other/>";
    ASSERT_EQ(run("Sets"), 0);
    EXPECT_EQ(sErrors(), "Sets/Pset_BldDoor.xml: not kept\n");
}

TEST_F(Tutorial, BackWritesTheSetAndTheReport) {
    ASSERT_EQ(run("Back"), 0) << sErrors();
    EXPECT_EQ(sOutput(), "4 threads found the wall\n");
    EXPECT_EQ(sText(folder_ / "report.txt"), "");
    EXPECT_NE(sText(folder_ / "Pset_BldWall.out.xml").find("<Name>Pset_BldWall</Name>"), std::string::npos);
}

TEST_F(Tutorial, BackSaysWhatIsNoXml) {
    std::ofstream(folder_ / "Sets/Pset_BldWall.xml") << "no XML";
    EXPECT_EQ(run("Back"), 1);
    EXPECT_NE(sErrors(), "");
}

} // namespace
