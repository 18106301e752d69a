#include "Kit/Findings/SchemaRun.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kit {

namespace {

namespace def = ifc::def;
using assert::AssertRecord;
using def::Report;

std::vector<Assertion> viewsOf(const std::vector<AssertRecord>& records) {
    std::vector<Assertion> views;
    for (const auto& record : records)
        views.push_back({record.code, record.message, record.function, record.file, record.line});
    return views;
}

/// A schema with its text, and a run over it.
struct Checked {
    explicit Checked(std::string_view statements, const std::vector<AssertRecord>& records = {}) :
        text("SCHEMA T;\n" + std::string(statements) + "END_SCHEMA;\n"),
        schema(test::schemaFromWholeText(text)),
        texts(records),
        reports(viewsOf(texts)),
        run(schema.get(), reports, text, "T.exp") {}

    const Declared& declared(std::string_view name) { return *run.pDeclared(name); }

    std::string text;
    std::unique_ptr<def::schema::Schema> schema;
    std::vector<AssertRecord> texts;
    std::vector<Assertion> reports;
    SchemaRun run;
};

AssertRecord recordOf(const def::ReportPlace& place, std::string_view more = {}) {
    return {0, std::string(place.message).append(more), std::string(place.function), std::string(place.file),
            place.line};
}

constexpr std::string_view Family = "TYPE Kind = ENUMERATION OF (SOLID, Hollow);\nEND_TYPE;\n"
                                    "ENTITY Root;\n  Name : STRING;\nEND_ENTITY;\n"
                                    "ENTITY Wall\n SUBTYPE OF (Root);\n  Width, Height : REAL;\n"
                                    " DERIVE\n  Area : REAL := Width * Height;\nEND_ENTITY;\n"
                                    "ENTITY Odd\n SUBTYPE OF (Missing);\nEND_ENTITY;\n";

// The kit may not include the table of the library, so that it names the places of its reports once more.
TEST(SchemaRun, EveryReportOfTheLibraryHasItsKind) {
    const std::map<Report, SchemaReport> kinds = {{Report::SupertypeNotFound, SchemaReport::Supertype},
                                                  {Report::SubtypeNotFound, SchemaReport::Subtype},
                                                  {Report::InverseNotFound, SchemaReport::Inverse},
                                                  {Report::DerivedNotFound, SchemaReport::Redeclared},
                                                  {Report::TypeNotFound, SchemaReport::Underlying},
                                                  {Report::SelectMemberNotFound, SchemaReport::SelectMember},
                                                  {Report::ArrayElementNotFound, SchemaReport::Element},
                                                  {Report::ListElementNotFound, SchemaReport::Element},
                                                  {Report::SetElementNotFound, SchemaReport::Element},
                                                  {Report::RuleRefused, SchemaReport::Rule}};
    for (const auto& place : def::ReportPlaces) {
        const auto known = kinds.find(place.report);
        const auto expected = known == kinds.end() ? SchemaReport::Other : known->second;
        Checked checked("", {recordOf(place)});
        for (std::size_t index = 0; index < static_cast<std::size_t>(SchemaReport::Count); ++index) {
            const auto kind = static_cast<SchemaReport>(index);
            Finding finding;
            EXPECT_EQ(checked.run.boTake(finding, kind), kind == expected) << place.function << ' ' << index;
        }
    }
}

TEST(SchemaRun, ReportsAreTakenInOrderOnceEach) {
    const auto& place = placeOf(Report::TypeNotFound);
    Checked checked("", {recordOf(place, " 1"), recordOf(place, " 2")});
    Finding first;
    Finding second;
    EXPECT_TRUE(checked.run.boTake(first, SchemaReport::Underlying));
    EXPECT_TRUE(checked.run.boTake(second, SchemaReport::Underlying));
    EXPECT_FALSE(checked.run.boTake(second, SchemaReport::Underlying));
    ASSERT_EQ(first.notes.size(), 1U);
    EXPECT_EQ(first.notes[0].message, "reported while reading: Not type found 1");
    ASSERT_TRUE(first.origin);
    EXPECT_EQ(first.origin->function, place.function);
    EXPECT_EQ(first.origin->line, 85);
    ASSERT_EQ(second.notes.size(), 1U);
    EXPECT_EQ(second.notes[0].message, "reported while reading: Not type found 2");
}

TEST(SchemaRun, AReportOfARuleIsFoundByItsText) {
    Checked checked("", {recordOf(placeOf(Report::RuleRefused), "why\n\nRule: WR1 : x;")});
    Finding finding;
    EXPECT_FALSE(checked.run.boRuleTake(finding, "WR2 : x;"));
    EXPECT_TRUE(checked.run.boRuleTake(finding, "WR1 : x;"));
    EXPECT_TRUE(checked.run.untaken().empty());
}

TEST(SchemaRun, UntakenReportsAreThereOnce) {
    const auto type = recordOf(placeOf(Report::TypeNotFound));
    const auto entity = recordOf(placeOf(Report::SupertypeNotFound));
    Checked checked("", {type, entity, type, entity, entity});
    EXPECT_EQ(checked.run.untaken(),
              (std::vector<const Assertion*>{&checked.reports[0], &checked.reports[1]}));
    Finding finding;
    checked.run.boTake(finding, SchemaReport::Underlying);
    // The other one of the same words has nothing more to say.
    EXPECT_EQ(checked.run.untaken(), std::vector<const Assertion*>{&checked.reports[1]});
}

TEST(SchemaRun, DeclarationsAreJoinedWithWhatTheLibraryMadeOfThem) {
    Checked checked(Family);
    ASSERT_EQ(checked.run.declared.size(), 4U);
    const auto& wall = checked.declared("wALL");
    EXPECT_EQ(wall.object, checked.schema->pObjectFromName("Wall"));
    EXPECT_NE(wall.statement, nullptr);
    EXPECT_FALSE(wall.isLost());
    ASSERT_EQ(wall.supertypes().size(), 1U);
    EXPECT_EQ(wall.supertypes()[0], 1U);
    EXPECT_TRUE(wall.isLineKnown);
    EXPECT_FALSE(checked.declared("Odd").isLineKnown);
    EXPECT_EQ(checked.run.pDeclared("Missing"), nullptr);
}

TEST(SchemaRun, WithoutASchemaEveryDeclarationIsLost) {
    const std::string text = "SCHEMA T;\nENTITY A;\nEND_ENTITY;\n";
    SchemaRun run(nullptr, {}, text, "T.exp");
    ASSERT_EQ(run.declared.size(), 1U);
    EXPECT_TRUE(run.declared[0].isLost());
    EXPECT_TRUE(run.isKnown("A"));
    EXPECT_FALSE(run.isKnown("B"));
}

TEST(SchemaRun, NamesAreKnownInAnyLetterCase) {
    Checked checked(Family);
    EXPECT_TRUE(checked.run.isKnown("WALL"));
    EXPECT_FALSE(checked.run.isKnown("Missing"));
    checked.run.vPartNamesJoin();
    EXPECT_TRUE(checked.run.isItem("solid"));
    EXPECT_TRUE(checked.run.isItem("HOLLOW"));
    EXPECT_FALSE(checked.run.isItem("Kind"));
    EXPECT_FALSE(checked.run.isItem("Root"));
    EXPECT_TRUE(checked.run.hasAttribute(checked.declared("Kind"), "hollow"));
}

TEST(SchemaRun, AttributesAreThoseOfTheSupertypesToo) {
    Checked checked(Family);
    const auto& wall = checked.declared("Wall");
    for (const auto* name : {"NAME", "width", "Height", "Area"})
        EXPECT_TRUE(checked.run.hasAttribute(wall, name)) << name;
    EXPECT_FALSE(checked.run.hasAttribute(wall, "Depth"));
    EXPECT_FALSE(checked.run.hasAttribute(wall, "Root"));
    EXPECT_FALSE(checked.run.hasAttribute(checked.declared("Root"), "Width"));
    // What an unknown supertype has is not known.
    EXPECT_TRUE(checked.run.hasAttribute(checked.declared("Odd"), "Depth"));
}

TEST(SchemaRun, ExplicitAttributesAreComparedExactly) {
    Checked checked(Family);
    const auto& wall = checked.declared("Wall");
    EXPECT_TRUE(checked.run.hasExplicitAttribute(wall, "Width"));
    EXPECT_TRUE(checked.run.hasExplicitAttribute(wall, "Name"));
    EXPECT_FALSE(checked.run.hasExplicitAttribute(wall, "WIDTH"));
    EXPECT_FALSE(checked.run.hasExplicitAttribute(wall, "Area"));
}

TEST(SchemaRun, SupertypesAreAboveAndTheSame) {
    Checked checked(Family);
    const auto& wall = checked.declared("Wall");
    const auto& root = checked.declared("Root");
    EXPECT_TRUE(checked.run.isSupertype(root, wall));
    EXPECT_TRUE(checked.run.isSupertype(wall, wall));
    EXPECT_FALSE(checked.run.isSupertype(wall, root));
    EXPECT_TRUE(checked.run.isSupertype(root, checked.declared("Odd")));
}

TEST(SchemaRun, ACircleOfSupertypesEnds) {
    Checked checked("ENTITY A\n SUBTYPE OF (B);\nEND_ENTITY;\nENTITY B\n SUBTYPE OF (A);\nEND_ENTITY;\n"
                    "ENTITY C;\nEND_ENTITY;\n");
    EXPECT_TRUE(checked.run.isSupertype(checked.declared("A"), checked.declared("B")));
    EXPECT_FALSE(checked.run.isSupertype(checked.declared("C"), checked.declared("A")));
    EXPECT_FALSE(checked.run.hasAttribute(checked.declared("A"), "X"));
    EXPECT_FALSE(checked.run.sMissingKey(checked.declared("A"), "X").empty());
}

TEST(SchemaRun, AttributesOfOneTopmostSupertypeShareAKey) {
    Checked checked(Family);
    EXPECT_EQ(checked.run.sMissingKey(checked.declared("Wall"), "Depth"),
              checked.run.sMissingKey(checked.declared("Root"), "depth"));
    EXPECT_NE(checked.run.sMissingKey(checked.declared("Wall"), "Depth"),
              checked.run.sMissingKey(checked.declared("Odd"), "Depth"));
    EXPECT_EQ(SchemaRun::sMissingKey("Wall"), SchemaRun::sMissingKey("WALL"));
}

TEST(SchemaRun, TheUsesOfAMissingNameAreNotesOfTheFirst) {
    Checked checked("x\nx\nx\nx\nx\nx\nx\nx\n");
    auto& run = checked.run;
    const auto wordOn = [&](std::size_t line) {
        return ExpressWord{run.text.substr(std::string_view("SCHEMA T;\n").size() + 2 * (line - 2), 1)};
    };
    EXPECT_EQ(run.pMissingBefore("X", wordOn(2), "a supertype"), nullptr);
    auto& finding = run.add("E010", TextPosition{2, 1, 1}, "missing");
    run.vMissingKeep("X", finding);
    for (std::size_t line = 3; line < 3 + SchemaRun::maxPlaces + 2; ++line)
        EXPECT_EQ(run.pMissingBefore("X", wordOn(line), "a supertype"), &finding);
    run.vMissingCount();
    ASSERT_EQ(finding.notes.size(), SchemaRun::maxPlaces);
    EXPECT_EQ(finding.notes.front().message, "it is also a supertype");
    EXPECT_EQ(finding.notes.front().place->position, (TextPosition{3, 1, 1}));
    EXPECT_EQ(finding.notes.back().message, "it is also a supertype, and is used in 2 more places");
    EXPECT_EQ(run.pOnlyMissing(), &finding);
    run.vMissingKeep("Y", run.add("E010", TextPosition{9, 1, 1}, "missing too"));
    EXPECT_EQ(run.pOnlyMissing(), nullptr);
}

TEST(SchemaRun, FindingsAreSortedByPlaceAndThenByCode) {
    Checked checked("");
    checked.run.add("E011", TextPosition{2, 1, 1}, "c");
    checked.run.add("E010", TextPosition{2, 1, 1}, "b");
    checked.run.add("E012", TextPosition{1, 9, 1}, "a");
    std::string messages;
    for (const auto& finding : checked.run.takeFindings()) {
        messages += finding.message;
        EXPECT_EQ(finding.place.path, "T.exp");
    }
    EXPECT_EQ(messages, "abc");
}

TEST(SchemaRun, OfOneCodeALimitIsKept) {
    Checked checked("");
    for (std::size_t count = 0; count < SchemaRun::maxFindingsPerCode; ++count)
        EXPECT_TRUE(checked.run.isKept(checked.run.add("E010", TextPosition{1, 1, 1}, "x")));
    EXPECT_FALSE(checked.run.isKept(checked.run.add("E010", TextPosition{1, 1, 1}, "x")));
    EXPECT_TRUE(checked.run.isKept(checked.run.add("E011", TextPosition{1, 1, 1}, "x")));
    EXPECT_EQ(checked.run.takeFindings().size(), SchemaRun::maxFindingsPerCode + 1);
}

/// A note of a finding that nobody sees would hide a use of the name.
TEST(SchemaRun, UsesOfANameBeyondTheLimitAreNoNotes) {
    Checked checked("");
    auto& run = checked.run;
    for (std::size_t count = 0; count < SchemaRun::maxFindingsPerCode; ++count)
        run.add("E010", TextPosition{1, 1, 1}, "x");
    run.vMissingKeep("X", run.add("E010", TextPosition{2, 1, 1}, "missing"));
    EXPECT_EQ(run.pMissingBefore("X", ExpressWord{run.text.substr(0, 1)}, "a supertype"), nullptr);
}

TEST(SchemaRun, TheNearestNameIsOffered) {
    Checked checked(Family);
    Finding finding;
    checked.run.vNearestNote(finding, "Wal", {ExpressDeclarationKind::Entity});
    ASSERT_EQ(finding.notes.size(), 1U);
    EXPECT_EQ(finding.notes[0].message, "did you mean \"Wall\"?");
    Finding other;
    checked.run.vNearestNote(other, "Wal", {ExpressDeclarationKind::Type});
    EXPECT_TRUE(other.notes.empty());
    Finding attribute;
    checked.run.vNearestAttributeNote(attribute, "Widht", checked.declared("Wall"));
    ASSERT_EQ(attribute.notes.size(), 1U);
    EXPECT_EQ(attribute.notes[0].message, "did you mean \"Width\"?");
}

TEST(SchemaRun, WordsOfMessages) {
    EXPECT_EQ(sUpperWord("IfcWall"), "IFCWALL");
    EXPECT_EQ(sNamed("IfcWal"), "\"IfcWal\"");
    EXPECT_EQ(sNamed(std::string(120, 'x')), '"' + std::string(120, 'x') + '"');
    EXPECT_EQ(sNamed(std::string(121, 'x')), '"' + std::string(120, 'x') + "...\"");
    EXPECT_EQ(keywordOf(ExpressDeclarationKind::Type), "TYPE");
    EXPECT_EQ(keywordOf(ExpressDeclarationKind::Constant), "CONSTANT");
}

TEST(SchemaRun, AttributesOfOneStatementShareTheirType) {
    Checked checked(Family);
    const auto& members = checked.declared("Wall").declaration->members;
    ASSERT_EQ(members.size(), 3U);
    EXPECT_TRUE(isSameStatement(members[0], members[1]));
    EXPECT_FALSE(isSameStatement(members[1], members[2]));
}

} // namespace

} // namespace kiv::kit
