#include "kiv/Format/Ifc/Def/IfcDefErrors.h"

#include "Support/ErrorRecords.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>

namespace kiv::test {

namespace {

using ifc::def::Budget;
using ifc::def::BudgetMeter;
using ifc::def::xml::ErrorKind;
using ifc::def::xml::ErrorRecord;
using ifc::def::xml::XmlSetErrors;
using ifc::def::xml::XmlSetsErrors;

/// A collector with one record.
XmlSetErrors collectorOf(std::string setName, std::string item, ErrorKind kind = ErrorKind::Error) {
    XmlSetErrors errors;
    errors.vErrorAdd(kind, std::move(item), "message", 5);
    errors.vSetNameSet(std::move(setName));
    return errors;
}

std::string sReportOf(XmlSetErrors errors) {
    XmlSetsErrors all;
    all.sets.insert(std::move(errors));
    return all.getFormattedErrors();
}

TEST(XmlSetErrors, IsEmptyAtFirst) {
    const XmlSetErrors errors;
    EXPECT_EQ(errors.getSetName(), "");
    EXPECT_EQ(errors.getRecords(), Records());
}

TEST(XmlSetErrors, KeepsRecordsInTheOrderInWhichTheyWereAdded) {
    XmlSetErrors errors;
    errors.vErrorAdd(ErrorKind::FatalError, "b", "second letter", 2);
    errors.vErrorAdd(ErrorKind::Error, "a", "first letter", 0);
    EXPECT_EQ(errors.getRecords(),
              (Records{{ErrorKind::FatalError, "b", "second letter", 2}, error("a", "first letter", 0)}));
}

TEST(XmlSetErrors, ARecordNeedsNoLine) {
    XmlSetErrors errors;
    errors.vErrorAdd(ErrorKind::Error, "a", "message");
    EXPECT_EQ(errors.getRecords(), Records{error("a", "message", 0)});
}

/// The meter of a reading ends before what was made of the collector meanwhile.
TEST(XmlSetErrors, ReadingStaysWithTheCollectorThatItWasMadeFor) {
    XmlSetErrors errors = collectorOf("P", "a");
    XmlSetErrors assigned;
    XmlSetErrors moveAssigned;
    {
        BudgetMeter meter{Budget{}};
        const XmlSetErrors::Reading reading(errors, meter);
        const XmlSetErrors copy(errors);
        EXPECT_EQ(copy.pMeter(), nullptr);
        EXPECT_EQ(copy.getRecords(), errors.getRecords());
        assigned = errors;
        EXPECT_EQ(assigned.pMeter(), nullptr);
        XmlSetErrors moved(std::move(errors));
        EXPECT_EQ(moved.pMeter(), nullptr);
        EXPECT_EQ(moved.getRecords(), copy.getRecords());
        moveAssigned = std::move(moved);
        EXPECT_EQ(moveAssigned.pMeter(), nullptr);
        // NOLINTNEXTLINE(bugprone-use-after-move): that the reading goes on is what is tested
        EXPECT_EQ(errors.pMeter(), &meter);
        // A collector that is assigned to keeps the reading that it has.
        errors = copy;
        EXPECT_EQ(errors.pMeter(), &meter);
        errors = collectorOf("Q", "b");
        EXPECT_EQ(errors.pMeter(), &meter);
        errors.vErrorAdd(ErrorKind::Error, "c", "message", 5);
        EXPECT_EQ(meter.getUsed(WorkMeter::Unit::Reports), 1U);
    }
    EXPECT_EQ(errors.pMeter(), nullptr);
    assigned.vErrorAdd(ErrorKind::Error, "b", "message", 5);
    moveAssigned.vErrorAdd(ErrorKind::Error, "b", "message", 5);
    EXPECT_EQ(assigned.getRecords(), moveAssigned.getRecords());
    EXPECT_EQ(assigned.getRecords().size(), 2U);
}

TEST(XmlSetErrors, ReadingThatFailsMakesNoRecordsWhereTheyWereMovedAway) {
    XmlSetErrors errors = collectorOf("P", "a");
    XmlSetErrors moved;
    BudgetMeter meter{Budget{}};
    try {
        const XmlSetErrors::Reading reading(errors, meter);
        moved = std::move(errors);
        throw kiv::exception("failed");
    } catch (const kiv::exception&) {
    }
    // NOLINTNEXTLINE(bugprone-use-after-move): that nothing is made in its place is what is tested
    EXPECT_EQ(errors.getRecords(), Records());
    EXPECT_EQ(moved.getRecords(), collectorOf("P", "a").getRecords());
}

TEST(XmlSetErrors, KeepsARecordTwiceWhenItIsAddedTwice) {
    XmlSetErrors errors;
    errors.vErrorAdd(ErrorKind::Error, "a", "message", 1);
    errors.vErrorAdd(ErrorKind::Error, "a", "message", 1);
    EXPECT_EQ(errors.getRecords(), (Records{error("a", "message", 1), error("a", "message", 1)}));
}

TEST(ErrorRecord, IsEqualToOneWithTheSameFieldsOnly) {
    const ErrorRecord record{ErrorKind::Error, "item", "message", 1};
    EXPECT_EQ(record, (ErrorRecord{ErrorKind::Error, "item", "message", 1}));
    const Records others{{ErrorKind::FatalError, "item", "message", 1},
                         {ErrorKind::Error, "Item", "message", 1},
                         {ErrorKind::Error, "item", "", 1},
                         {ErrorKind::Error, "item", "message", 2}};
    for (const auto& other : others)
        EXPECT_NE(record, other) << &other - others.data();
}

TEST(XmlSetErrors, KindsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(ErrorKind::Error), 0);
    EXPECT_EQ(static_cast<int>(ErrorKind::FatalError), 1);
    static_assert(sizeof(ErrorKind) == 4);
}

TEST(XmlSetsErrors, ReportOfNothingIsEmpty) {
    XmlSetsErrors all;
    EXPECT_EQ(all.getFormattedErrors(), "");
}

TEST(XmlSetsErrors, ReportHasALineForEachRecordWithoutTheDocumentsLine) {
    XmlSetErrors errors;
    errors.vErrorAdd(ErrorKind::Error, "IfcWal",
                     "Applicable class in xml set is not defined in schema (contain spaces?)", 7);
    errors.vErrorAdd(ErrorKind::Error, "Extra", "Unknown xml node", 9);
    errors.vSetNameSet("Pset_WallCommon");
    EXPECT_EQ(sReportOf(errors),
              "Pset_WallCommon;Error;IfcWal;Applicable class in xml set is not defined in schema (contain "
              "spaces?)\nPset_WallCommon;Error;Extra;Unknown xml node\n");
}

TEST(XmlSetsErrors, LinesOfACollectorWithoutSetNameBeginWithTheSeparator) {
    EXPECT_EQ(sReportOf(collectorOf("", "item")), ";Error;item;message\n");
}

TEST(XmlSetsErrors, FatalErrorIsNamedInTheSecondField) {
    EXPECT_EQ(sReportOf(collectorOf("Set", "item", ErrorKind::FatalError)), "Set;FatalError;item;message\n");
}

TEST(XmlSetsErrors, KindOfAnyOtherNumberHasNoField) {
    EXPECT_EQ(sReportOf(collectorOf("Set", "item", static_cast<ErrorKind>(2))), "Set;item;message\n");
}

TEST(XmlSetsErrors, SeparatorsInsideTextsAreNotEscaped) {
    EXPECT_EQ(sReportOf(collectorOf("a;b", "c;d")), "a;b;Error;c;d;message\n");
}

TEST(XmlSetsErrors, SetsAreReportedByName) {
    XmlSetsErrors all;
    all.sets.insert(collectorOf("B", "1"));
    all.sets.insert(collectorOf("A", "2"));
    EXPECT_EQ(all.getFormattedErrors(), "A;Error;2;message\nB;Error;1;message\n");
}

TEST(XmlSetsErrors, NamesAreOrderedByTheirBytes) {
    XmlSetsErrors all;
    for (const char* name : {"\xC3\x84", "a", "AB", "A", "Z"})
        all.sets.insert(collectorOf(name, ""));
    EXPECT_EQ(all.getFormattedErrors(),
              "A;Error;;message\nAB;Error;;message\nZ;Error;;message\na;Error;;message\n"
              "\xC3\x84;Error;;message\n");
}

TEST(XmlSetsErrors, CollectorsOfOneNameStayInTheOrderOfTheirInsertion) {
    XmlSetsErrors all;
    for (const char* item : {"3", "1", "2"})
        all.sets.insert(collectorOf("Same", item));
    EXPECT_EQ(all.getFormattedErrors(), "Same;Error;3;message\nSame;Error;1;message\nSame;Error;2;message\n");
}

TEST(XmlSetsErrors, CollectorWithoutRecordsAddsNothingToTheReport) {
    XmlSetErrors errors;
    errors.vSetNameSet("Quiet");
    EXPECT_EQ(sReportOf(errors), "");
}

TEST(XmlSetsErrors, StreamGetsTheReportAfterWhatItHolds) {
    XmlSetsErrors all;
    all.sets.insert(collectorOf("Set", "item"));
    all.sets.insert(collectorOf("Another", "2"));
    std::ostringstream stream;
    stream << "before\n";
    all.vFormattedErrorsWrite(stream);
    EXPECT_EQ(stream.str(), "before\nAnother;Error;2;message\nSet;Error;item;message\n");
}

TEST(XmlSetsErrors, DumpOfAReportThatIsLongerThanItsBufferIsWhole) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("report.txt");
    XmlSetErrors errors;
    const std::string name(50'000, 'n');
    errors.vSetNameSet(name);
    std::string expected;
    for (const std::string item : {"1", "2", "3"}) {
        errors.vErrorAdd(ErrorKind::FatalError, item, "message", 0);
        expected += name + ";FatalError;" + item + ";message\n";
    }
    XmlSetsErrors all;
    all.sets.insert(std::move(errors));
    all.vDump(path.c_str());
    EXPECT_EQ(sFileText(path), expected);
}

TEST(XmlSetsErrors, DumpReplacesTheFileByTheReport) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("report.txt");
    std::ofstream(path) << "something much longer than what is to be written";
    XmlSetsErrors all;
    all.sets.insert(collectorOf("Set", "item"));
    all.vDump(path.c_str());
    EXPECT_EQ(sFileText(path), "Set;Error;item;message\n");
}

TEST(XmlSetsErrors, DumpOfNothingMakesAnEmptyFile) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("report.txt");
    XmlSetsErrors().vDump(path.c_str());
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(sFileText(path), "");
}

TEST(XmlSetsErrors, DumpIntoAFolderThatDoesNotExistDoesNothing) {
    const TemporaryFolder folder;
    const auto path = folder.sPath("missing/report.txt");
    XmlSetsErrors all;
    all.sets.insert(collectorOf("Set", "item"));
    EXPECT_NO_THROW(all.vDump(path.c_str()));
    EXPECT_FALSE(std::filesystem::exists(folder.sPath("missing")));
}

} // namespace

} // namespace kiv::test
