#include "kivifc/Documents/ExportFile.h"

#include "Support/FileSizeLimit.h"
#include "Support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace kiv::kivifc::test {

namespace {

namespace fs = std::filesystem;

using kiv::test::namesIn;
using kiv::test::sFileText;
using kiv::test::TemporaryFolder;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* Foreign = "is there already and no unchanged export; --force replaces it";

/// What an export of its own says to this file.
std::string sWritten(const std::string& path, const std::string& text, bool isForced = false) {
    return ExportFiles(isForced).sWrite(path, text);
}

TEST(ExportFileName, NameBecomesOneThatNamesAFile) {
    using namespace std::string_view_literals;
    struct Row {
        std::string_view name;
        const char* file;
    };
    const Row rows[] = {{"Pset_Wall", "Pset_Wall"},
                        {"", "%"},
                        {".", "%2E"},
                        {"..", "%2E."},
                        {"a/b", "a%2Fb"},
                        {"a\\b", "a%5Cb"},
                        {"a%2Fb", "a%252Fb"},
                        {"a.b", "a.b"},
                        {"/", "%2F"},
                        {"../x", "%2E.%2Fx"},
                        {"a\0b"sv, "a%00b"},
                        {"\0"sv, "%00"},
                        {"\n\x7F", "%0A%7F"},
                        {"Größe", "Größe"},
                        {"a~b", "a~b"}};
    for (const auto& row : rows)
        EXPECT_EQ(sFileName(row.name), row.file);
}

TEST(ExportFileName, LongNameIsCutAndStaysItsOwn) {
    const std::string whole(200, 'x');
    EXPECT_EQ(sFileName(whole), whole) << "the longest that is kept";
    std::set<std::string> files;
    for (const auto& end : {"y", "z", "%", "yy"}) {
        const auto file = sFileName(whole + end);
        EXPECT_THAT(file, StartsWith(whole + "%~"));
        EXPECT_THAT(file, SizeIs(200 + 2 + 16));
        files.insert(file);
    }
    EXPECT_THAT(files, SizeIs(4));
    EXPECT_NE(sFileName(std::string(100000, 'x')), sFileName(std::string(100001, 'x')));
    // Each slash takes three bytes.
    EXPECT_THAT(sFileName(std::string(200, '/')), SizeIs(200 + 2 + 16));
}

TEST(ExportFileName, CutDoesNotSplitACharacter) {
    const std::string start(199, 'x');
    EXPECT_THAT(sFileName(start + "é"), StartsWith(start + "%~"))
        << "the character begins at the last byte kept";
    EXPECT_THAT(sFileName(start + "\xF0\x9F\x8F\xA0"), StartsWith(start + "%~"));
    EXPECT_THAT(sFileName(start + "aé"), StartsWith(start + "a%~"));
}

TEST(ExportFiles, TextIsWrittenWithAMarkAndNothingElseIsLeft) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("a/b/x.xml");
    EXPECT_EQ(sWritten(path, "<a/>\n"), "");
    // The FNV-1a hash of the five bytes, with 64 bits.
    EXPECT_EQ(sFileText(path), "<a/>\n<!-- kivifc export 2842bdb1bde107c7 -->\n");
    EXPECT_THAT(namesIn(folder.sPath("a/b")), testing::ElementsAre("x.xml"));
}

TEST(ExportFiles, OwnFileIsReplacedUnlessItWasChanged) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("x.xml");
    EXPECT_EQ(sWritten(path, "old"), "");
    EXPECT_EQ(sWritten(path, "new"), "");
    const auto text = sFileText(path);
    EXPECT_THAT(text, StartsWith("new<!-- kivifc export "));
    for (const auto& changed : {"n" + text, text + "\n", text.substr(0, text.size() - 1), std::string()}) {
        folder.sWrite("x.xml", changed);
        EXPECT_EQ(sWritten(path, "newer"), Foreign);
        EXPECT_EQ(sFileText(path), changed);
    }
    EXPECT_EQ(sWritten(path, "newer", true), "");
    EXPECT_THAT(sFileText(path), StartsWith("newer<!-- kivifc export "));
}

TEST(ExportFiles, OnlyFilesAreAnExportsOwn) {
    const TemporaryFolder folder;
    const auto own = folder.sPath("own.xml");
    EXPECT_EQ(sWritten(own, "own"), "");
    const auto link = folder.sPath("link.xml");
    fs::create_symlink("own.xml", link);
    EXPECT_EQ(sWritten(link, "new"), Foreign);
    const auto dangling = folder.sPath("dangling.xml");
    fs::create_symlink("nowhere.xml", dangling);
    EXPECT_EQ(sWritten(dangling, "new"), Foreign);
    EXPECT_FALSE(fs::exists(folder.sPath("nowhere.xml")));
    // Reading from it would wait for a writer.
    const auto pipe = folder.sPath("pipe.xml");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(sWritten(pipe, "new"), Foreign);
    // When forced, the link is replaced and what it leads to stays.
    EXPECT_EQ(sWritten(link, "new", true), "");
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(link)));
    EXPECT_THAT(sFileText(own), StartsWith("own<!--"));
}

TEST(ExportFiles, LargeFileIsReplacedUntilOneByteOfItIsChanged) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("x.xml");
    // Sizes around those of the pieces in which a file is read.
    for (const std::size_t size : {0U, 65495U, 65536U, 65537U, 200000U}) {
        EXPECT_EQ(sWritten(path, std::string(size, 'x')), "") << size;
        EXPECT_EQ(sWritten(path, std::string(size, 'y')), "") << size;
    }
    const auto own = sFileText(path);
    for (const std::size_t at : {std::size_t{0}, std::size_t{131072}, own.size() - 1}) {
        auto changed = own;
        changed[at] ^= 1;
        folder.sWrite("x.xml", changed);
        EXPECT_EQ(sWritten(path, "new"), Foreign) << at;
    }
    folder.sWrite("x.xml", own + " ");
    EXPECT_EQ(sWritten(path, "new"), Foreign);
    folder.sWrite("x.xml", own);
    EXPECT_EQ(sWritten(path, "new"), "");
}

TEST(ExportFiles, FolderIsNeverReplaced) {
    const TemporaryFolder folder;
    fs::create_directory(folder.sPath("x.xml"));
    EXPECT_EQ(sWritten(folder.sPath("x.xml"), "new", true), "is a folder");
    EXPECT_THAT(namesIn(folder.sPath("")), testing::ElementsAre("x.xml"));
}

TEST(ExportFiles, FileWhereAFolderIsToBeIsReportedAndStays) {
    const TemporaryFolder folder;
    const auto file = folder.sWrite("file", "mine");
    EXPECT_EQ(sWritten(file + "/x.xml", "new", true), "Not a directory");
    EXPECT_EQ(sFileText(file), "mine");
}

TEST(ExportFiles, PathThatIsTooLongIsReportedAsWhatItIs) {
    const TemporaryFolder folder;
    EXPECT_EQ(sWritten(folder.sPath(std::string(300, 'x')), "new"), "File name too long");
    EXPECT_THAT(namesIn(folder.sPath("")), SizeIs(0));
}

TEST(ExportFiles, NamesOfTemporaryFilesThatAreTakenAreLeftAlone) {
    const TemporaryFolder folder;
    folder.sWrite(".kivifc-export-0", "of another run");
    fs::create_symlink("x.xml", folder.sPath(".kivifc-export-1"));
    EXPECT_EQ(sWritten(folder.sPath("x.xml"), "new"), "");
    EXPECT_EQ(sFileText(folder.sPath(".kivifc-export-0")), "of another run");
    EXPECT_THAT(namesIn(folder.sPath("")),
                testing::ElementsAre(".kivifc-export-0", ".kivifc-export-1", "x.xml"));
}

TEST(ExportFiles, WriteThatFailsLeavesTheOldFileAndNoOther) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("x.xml");
    EXPECT_EQ(sWritten(path, "old"), "");
    const auto old = sFileText(path);
    // The first is met while the text is written, the second when what is left in the buffer is.
    for (const std::size_t size : {1000000U, 1500U}) {
        std::string failure;
        {
            const kiv::test::FileSizeLimit limit(1000);
            failure = sWritten(path, std::string(size, 'x'));
        }
        EXPECT_EQ(failure, "File too large");
        EXPECT_EQ(sFileText(path), old);
        EXPECT_THAT(namesIn(folder.sPath("")), testing::ElementsAre("x.xml"));
    }
}

TEST(ExportFiles, SecondFileOfOneNameIsRefusedEvenByForce) {
    const TemporaryFolder folder;
    fs::create_directory(folder.sPath("Office"));
    // As if the file system made no difference between both names.
    fs::create_directory_symlink("Office", folder.sPath("OFFICE"));
    fs::create_directory_symlink("Office", folder.sPath("ÖFFICE"));
    fs::create_directory_symlink("Office", folder.sPath("öFFICE"));
    for (const bool isForced : {false, true}) {
        ExportFiles files(isForced);
        EXPECT_EQ(files.sWrite(folder.sPath("Office/x.xml"), "first"), "");
        EXPECT_THAT(files.sWrite(folder.sPath("OFFICE/X.XML"), "other"), "") << "two names here";
        EXPECT_THAT(files.sWrite(folder.sPath("OFFICE/x.xml"), "second"), StartsWith("was written just now"));
        EXPECT_THAT(sFileText(folder.sPath("Office/x.xml")), StartsWith("first"));
        EXPECT_EQ(files.sWrite(folder.sPath("ÖFFICE/y.xml"), "first"), "");
        EXPECT_THAT(files.sWrite(folder.sPath("öFFICE/y.xml"), "second"), StartsWith("was written just now"));
        EXPECT_THAT(sFileText(folder.sPath("Office/y.xml")), StartsWith("first"));
    }
}

} // namespace

} // namespace kiv::kivifc::test
