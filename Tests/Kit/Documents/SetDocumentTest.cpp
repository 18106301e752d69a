#include "kiv/Kit/Documents/SetDocument.h"

#include "Support/SchemaFromText.h"
#include "Support/TemporaryFolder.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace kiv::kit {

namespace {

using kiv::test::TemporaryFolder;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;
using testing::SizeIs;

constexpr const char* Schema = "ENTITY BldWall;\nEND_ENTITY;";

/// A set that applies to that class.
std::string sSet(const std::string& className) {
    return "<PropertySetDef>\n <Name>Pset_A</Name>\n <ApplicableClasses><ClassName>" + className +
           "</ClassName></ApplicableClasses>\n</PropertySetDef>\n";
}

/// A set with that many quantities of a type that the library asserts to be unknown, after an element that is
/// an error record.
std::string sAssertingSet(std::size_t quantities) {
    std::string text = "<QtoSetDef><Odd/><Name>Qto_A</Name><QtoDefs>";
    for (std::size_t quantity = 0; quantity < quantities; ++quantity)
        text += "<QtoDef><Name>Q" + std::to_string(quantity) + "</Name><QtoType>Q_ODD</QtoType></QtoDef>";
    return text + "</QtoDefs></QtoSetDef>";
}

TEST(SetDocument, IsReadFromPathTextAndStream) {
    const TemporaryFolder folder;
    const auto path = folder.sWrite("a.xml", sSet("BldWall"));
    std::istringstream stream(sSet("BldWall"));
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    ASSERT_TRUE(file);
    const SetDocument documents[] = {setDocumentRead(path), setTextRead(sSet("BldWall"), path),
                                     setStreamRead(stream, path), setStreamRead(file.get(), path)};
    for (const auto& document : documents) {
        EXPECT_EQ(document.path, path);
        EXPECT_EQ(document.text, sSet("BldWall"));
        EXPECT_FALSE(document.failure);
        ASSERT_THAT(document.pSet(), NotNull());
        EXPECT_EQ(document.pSet(), document.propertySet.get());
        EXPECT_EQ(document.pSet()->getName(), "Pset_A");
        EXPECT_THAT(document.errors.getRecords(), IsEmpty());
    }
}

TEST(SetDocument, QuantitySetIsTheOtherKind) {
    const auto document = setTextRead("<QtoSetDef><Name>Qto_A</Name></QtoSetDef>", "a.xml");
    ASSERT_THAT(document.quantitySet, NotNull());
    EXPECT_THAT(document.propertySet, IsNull());
    EXPECT_EQ(document.pSet(), document.quantitySet.get());
}

TEST(SetDocument, SetCanBeTakenOut) {
    for (const std::string tag : {"PropertySetDef", "QtoSetDef"}) {
        auto document = setTextRead("<" + tag + "><Name>A</Name></" + tag + ">", "a.xml");
        const auto* const set = document.pSet();
        ASSERT_THAT(set, NotNull());
        EXPECT_EQ(document.takeSet().get(), set) << tag;
        EXPECT_THAT(document.pSet(), IsNull()) << tag;
    }
}

TEST(SetDocument, CheckFindsWhatReadingDoesNotLookFor) {
    const auto schema = kiv::test::schemaFromText(Schema);
    EXPECT_THAT(setTextRead(sSet("BldDoor"), "a.xml").errors.getRecords(), IsEmpty());
    const auto checked = setTextCheck(sSet("BldDoor"), "a.xml", *schema);
    ASSERT_THAT(checked.errors.getRecords(), SizeIs(1));
    EXPECT_EQ(checked.errors.getRecords()[0].item, "BldDoor");
    EXPECT_EQ(checked.errors.getRecords()[0].line, 3U);
    EXPECT_THAT(setTextCheck(sSet("BldWall"), "a.xml", *schema).errors.getRecords(), IsEmpty());
    std::istringstream stream(sSet("BldDoor"));
    EXPECT_THAT(setStreamCheck(stream, "a.xml", *schema).errors.getRecords(), SizeIs(1));
}

TEST(SetDocument, PositionsAreThoseOfTheText) {
    const auto document = setTextRead(sSet("BldWall"), "a.xml");
    ASSERT_THAT(document.positions, NotNull());
    // PropertySetDef, Name, ApplicableClasses, ClassName.
    ASSERT_THAT(document.positions->getElements(), SizeIs(4));
    const auto& className = document.positions->getElements()[3];
    EXPECT_EQ(document.positions->positionOf(className), (TextPosition{3, 22, 9}));
    EXPECT_THAT(setTextRead(sSet("BldWall"), "a.xml", {{}, false}).positions, IsNull());
}

TEST(SetDocument, WhatCannotBeReadHasAFailure) {
    struct Row {
        const char* text;
        FailureKind kind;
        const char* reason;
        TextPosition position;
    };
    const Row rows[] = {
        {"", FailureKind::Empty, "the file is empty", {}},
        {"<a>\n<b></a>", FailureKind::NotXml, "mismatched tag", {2, 6, 0}},
        {"\n <Catalogue/>",
         FailureKind::NotASet,
         R"(root element is "Catalogue", neither "PropertySetDef" nor "QtoSetDef")",
         {2, 3, 9}},
        {"<p:PropertySetDef xmlns:p='urn:p'><p:Name>A</p:Name></p:PropertySetDef>",
         FailureKind::PrefixedRoot,
         R"(root element is "p:PropertySetDef", and prefixes are not supported)",
         {1, 2, 16}},
        {"<q:QtoSetDef xmlns:q='urn:q'/>",
         FailureKind::PrefixedRoot,
         R"(root element is "q:QtoSetDef", and prefixes are not supported)",
         {1, 2, 11}},
    };
    for (const auto& row : rows) {
        const auto document = setTextRead(row.text, "a.xml");
        ASSERT_TRUE(document.failure) << row.text;
        EXPECT_EQ(document.failure->kind, row.kind) << row.text;
        EXPECT_EQ(document.failure->reason, row.reason);
        EXPECT_EQ(document.failure->position.line, row.position.line) << row.text;
        EXPECT_EQ(document.failure->position.column, row.position.column) << row.text;
        EXPECT_EQ(document.text, row.text);
        EXPECT_THAT(document.pSet(), IsNull());
        EXPECT_THAT(document.errors.getRecords(), IsEmpty());
    }
}

TEST(SetDocument, FileThatTheSystemRefusesHasItsReason) {
    const TemporaryFolder folder;
    const auto missing = setDocumentRead(folder.sPath("none.xml"));
    ASSERT_TRUE(missing.failure);
    EXPECT_EQ(missing.failure->kind, FailureKind::Unreadable);
    EXPECT_EQ(missing.failure->reason, "No such file or directory");
    const auto directory = setDocumentRead(folder.sPath(""));
    ASSERT_TRUE(directory.failure);
    EXPECT_EQ(directory.failure->reason, "Is a directory");
}

TEST(SetDocument, StreamThatFailsIsUnreadable) {
    std::istringstream stream(sSet("BldWall"));
    stream.setstate(std::ios_base::badbit);
    const auto document = setStreamRead(stream, "a.xml");
    ASSERT_TRUE(document.failure);
    EXPECT_EQ(document.failure->kind, FailureKind::Unreadable);
}

TEST(SetDocument, BudgetOfEachDocumentIsItsOwn) {
    const auto text = sSet("BldWall");
    ReadOptions options;
    options.budget.maxInput = text.size();
    EXPECT_FALSE(setTextRead(text, "a.xml", options).failure);
    EXPECT_FALSE(setTextRead(text, "b.xml", options).failure);
    options.budget.maxInput = text.size() - 1;
    std::istringstream stream(text);
    for (const auto& document :
         {setTextRead(text, "a.xml", options).failure, setStreamRead(stream, "a.xml", options).failure}) {
        ASSERT_TRUE(document);
        EXPECT_EQ(document->kind, FailureKind::OverBudget);
        EXPECT_EQ(document->limit, ifc::def::BudgetLimit::Input);
    }
}

TEST(SetDocument, BudgetHasRoomForPositionsToo) {
    std::string text = "<PropertySetDef><Name>A</Name><PropertyDefs>";
    for (int member = 0; member < 1000; ++member)
        text += "<PropertyDef/>";
    text += "</PropertyDefs></PropertySetDef>";
    // An element takes more than a hundred bytes besides what the document has of it.
    ReadOptions options;
    options.withPositions = false;
    options.budget.maxMemory = 1000;
    while (setTextRead(text, "a.xml", options).failure)
        options.budget.maxMemory += 10'000;
    options.withPositions = true;
    EXPECT_TRUE(setTextRead(text, "a.xml", options).failure);
    options.budget.maxMemory += 1'000'000;
    EXPECT_FALSE(setTextRead(text, "a.xml", options).failure);
}

TEST(SetDocument, FailedReadingLeavesNothingOfTheSet) {
    ReadOptions options;
    options.budget.maxReports = 1;
    const auto document =
        setTextRead("<PropertySetDef><Odd/><Odder/><Oddest/></PropertySetDef>", "a.xml", options);
    ASSERT_TRUE(document.failure);
    EXPECT_EQ(document.failure->limit, ifc::def::BudgetLimit::Reports);
    EXPECT_THAT(document.pSet(), IsNull());
    EXPECT_THAT(document.errors.getRecords(), IsEmpty());
    EXPECT_THAT(document.assertions, IsEmpty());
}

/// The record, one assertion, and one too many.
TEST(SetDocument, FailedReadingLeavesNoAssertions) {
    ReadOptions options;
    options.budget.maxReports = 2;
    const auto document = setTextRead(sAssertingSet(2), "a.xml", options);
    ASSERT_TRUE(document.failure);
    EXPECT_EQ(document.failure->limit, ifc::def::BudgetLimit::Reports);
    EXPECT_THAT(document.assertions, IsEmpty());
}

TEST(SetDocument, AssertionsAreKeptWithTheirPlaceAmongTheRecords) {
    const auto document = setTextRead(sAssertingSet(2), "a.xml");
    ASSERT_THAT(document.errors.getRecords(), SizeIs(1));
    ASSERT_THAT(document.assertions, SizeIs(2));
    for (const auto& assertion : document.assertions) {
        EXPECT_EQ(assertion.recordsBefore, 1U);
        EXPECT_FALSE(assertion.record.message.empty());
    }
}

TEST(SetDocument, DocumentsReadSideBySideHaveTheirOwnAssertionsOnly) {
    constexpr std::size_t Threads = 4;
    constexpr std::size_t Rounds = 50;
    std::vector<std::size_t> wrong(Threads);
    {
        std::vector<std::jthread> threads;
        for (std::size_t thread = 0; thread < Threads; ++thread)
            threads.emplace_back([thread, &wrong] {
                for (std::size_t round = 0; round < Rounds; ++round) {
                    const auto document = setTextRead(sAssertingSet(thread + 1), "a.xml");
                    wrong[thread] += document.assertions.size() == thread + 1 ? 0U : 1U;
                }
            });
    }
    EXPECT_THAT(wrong, testing::Each(0U));
}

} // namespace

} // namespace kiv::kit
