#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Positions/ExpressScanner.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/FileKind.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaWhere.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

// E001 to E005, E008, E009, E019, E023 and R090: texts in which nothing is found, and declarations that the
// library does not read.
namespace kiv::kit {

namespace {

using Kind = ExpressDeclarationKind;

std::size_t offsetIn(const SchemaRun& run, std::string_view part) {
    return static_cast<std::size_t>(part.data() - run.text.data());
}

bool isBefore(const ExpressWord& left, const ExpressWord& right) {
    return left.text.data() < right.text.data();
}

std::string sDeclaration(const ExpressDeclaration& declaration) {
    if (declaration.name.text.empty())
        return sOwner(declaration);
    return std::string(keywordOf(declaration.kind)) + ' ' + sNamed(declaration.name.text);
}

/// Whether the keyword is not merely in another letter case.
bool isMisspelt(const ExpressDeclaration& declaration) {
    return !isSameExpressWord(declaration.keyword.text, keywordOf(declaration.kind));
}

bool isRead(Kind kind) {
    return kind <= Kind::Rule;
}

/// Why nothing was found, and how to mend that; the latter is empty where the former is no more than a guess.
struct NothingReason {
    std::string reason;
    std::string remedy;
};

/// Empty when the text may be meant as a schema.
std::string_view otherKindOf(std::string_view text) {
    const auto kind = fileKindOf(text);
    return kind == SchemaKind ? std::string_view() : kind;
}

/// Set documents and models are in the place of the schema when arguments are in the wrong order: then
/// nothing is to be mended in them.
std::string sRemedyFor(std::string_view kind) {
    return kind == XmlKind || kind == ModelKind ? "" : "a schema is a text file in EXPRESS";
}

constexpr std::string_view Capitals = "keywords are found in capitals only";

/// How to mend a keyword that is written in another way.
std::string sKeywordRemedy(std::string_view word, std::string_view keyword) {
    return isSameExpressWord(word, keyword) ? std::string(Capitals) : sMeant(keyword);
}

NothingReason noSchemaReason(const SchemaRun& run) {
    const auto& headers = run.positions.schemas;
    // What is no text looks like UTF-16 where it has zeros.
    const auto kind = otherKindOf(run.text);
    if (kind == ArchiveKind)
        return {"the file is " + std::string(kind), sRemedyFor(kind)};
    if (run.positions.encoding == ExpressEncoding::Utf16)
        return {"the text is UTF-16", "save it as UTF-8"};
    if (run.positions.hasReturnsOnly)
        return {"its lines end with carriage returns alone", "end them with line feeds"};
    if (run.text.empty())
        return {"the file is empty", {}};
    if (trimmed(run.text).empty())
        return {"there is nothing but white space in the file", {}};
    if (!kind.empty())
        return {"the file is " + std::string(kind), sRemedyFor(kind)};
    if (headers.empty())
        return {"no line has the keyword SCHEMA", {}};
    const auto& keyword = headers.back().keyword.text;
    if (keyword != "SCHEMA")
        return {"the keyword is written " + sNamed(keyword), sKeywordRemedy(keyword, "SCHEMA")};
    return {"the last line that mentions SCHEMA counts, and gives no name", {}};
}

/// Why a schema has no declarations.
NothingReason noDeclarationsReason(const SchemaRun& run) {
    if (run.positions.hasReturnsOnly || !otherKindOf(run.text).empty())
        return noSchemaReason(run);
    for (const auto& declared : run.declared) {
        const auto kind = declared.declaration->kind;
        const auto keyword = declared.declaration->keyword.text;
        if (isRead(kind))
            return {"the first keyword is written " + sNamed(keyword),
                    sKeywordRemedy(keyword, keywordOf(kind))};
    }
    return {"there is no TYPE, ENTITY, FUNCTION or RULE in it", {}};
}

std::string sStatement(const SchemaStatement& statement) {
    return std::string(keywordOf(statement.kind)) + ' ' + sNamed(statement.name);
}

std::string_view articleOf(std::string_view keyword) {
    return keyword == "ENTITY" ? "an " : "a ";
}

/// The statement that has this byte in it; null when none has.
const SchemaStatement* pStatementAround(const SchemaRun& run, std::size_t offset) {
    const auto& statements = run.lines.statements;
    auto after = std::ranges::upper_bound(statements, offset, {}, &SchemaStatement::begin);
    if (after == statements.begin())
        return nullptr;
    --after;
    return offset < after->end ? &*after : nullptr;
}

/// The declaration that has this byte in it; null when none has.
const Declared* pDeclarationAround(const SchemaRun& run, std::size_t offset) {
    const auto beginOf = [&run](const Declared& one) { return offsetIn(run, one.declaration->text); };
    const auto after = std::ranges::upper_bound(run.declared, offset, {}, beginOf);
    if (after == run.declared.begin())
        return nullptr;
    const auto& around = *std::prev(after);
    return offset < beginOf(around) + around.declaration->text.size() ? &around : nullptr;
}

/// Finds which declarations are not read, and what takes them.
class LostDeclarations {
public:
    explicit LostDeclarations(SchemaRun& run);

    void vCheck();

private:
    /// A statement with the declaration that it is.
    struct Reading {
        Declared* declared = nullptr;
        // Says why it is no declaration of the text, or not as it should be.
        Finding* finding = nullptr;
    };

    void vLostAdd(Declared& lost);
    std::string sLostReason(const Declared& lost, const SchemaStatement* around) const;
    Finding& mentionAdd(const SchemaStatement& statement, const ExpressWord& word);
    const ExpressWord* pStrayEnd(std::size_t offset) const;
    void vReportsTake(std::size_t index);
    void vReadingCheck(std::size_t index);
    void vTextCheck(std::size_t index);
    void vEndCheck(std::size_t index);
    Finding& wrongEndAdd(const ExpressDeclaration& declaration, std::string_view end);
    void vNameCheck(Declared& declared);
    void vNamelessAdd(Declared& declared);
    void vTakenNote(Finding& finding, std::size_t index) const;
    /// The declarations that a statement takes; null for none, as of nearly all.
    const std::vector<Declared*>* pTaken(std::size_t index) const {
        const auto found = taken_.find(index);
        return found == taken_.end() ? nullptr : &found->second;
    }

    SchemaRun& run_;
    std::vector<Reading> readings_;
    std::unordered_map<std::size_t, std::vector<Declared*>> taken_;
};

LostDeclarations::LostDeclarations(SchemaRun& run) : run_(run), readings_(run.lines.statements.size()) {}

std::size_t indexOf(const SchemaRun& run, const SchemaStatement& statement) {
    return static_cast<std::size_t>(&statement - run.lines.statements.data());
}

void LostDeclarations::vCheck() {
    for (auto& declared : run_.declared) {
        if (declared.statement)
            readings_[indexOf(run_, *declared.statement)].declared = &declared;
    }
    for (auto& declared : run_.declared) {
        if (!declared.statement && isRead(declared.declaration->kind))
            vLostAdd(declared);
    }
    for (std::size_t index = 0; index < readings_.size(); ++index)
        vReadingCheck(index);
}

/// Whether the keyword is a part of SUBTYPE or SUPERTYPE.
bool isHeaderWord(const SchemaRun& run, const SchemaStatement& statement) {
    const auto before = run.text.substr(0, statement.keyword);
    return before.ends_with("SUB") || before.ends_with("SUPER");
}

void LostDeclarations::vLostAdd(Declared& lost) {
    const auto offset = offsetIn(run_, lost.declaration->keyword.text);
    const auto* const around = pStatementAround(run_, offset);
    if (around && offset >= around->firstLineEnd && offset < around->lastLine) {
        taken_[indexOf(run_, *around)].push_back(&lost);
        return;
    }
    auto& finding = run_.add("E002", lost.declaration->name,
                             sDeclaration(*lost.declaration) + " is not read: " + sLostReason(lost, around));
    finding.subject = lost.declaration->name.text;
    if (isMisspelt(*lost.declaration))
        finding.notes.push_back({sMeant(keywordOf(lost.declaration->kind)), {}});
    if (around && offset < around->firstLineEnd && isHeaderWord(run_, *around))
        finding.notes.push_back({"write SUBTYPE and SUPERTYPE on lines of their own", {}});
    lost.finding = &finding;
    if (around && offset < around->firstLineEnd)
        readings_[indexOf(run_, *around)].finding = &finding;
}

std::string LostDeclarations::sLostReason(const Declared& lost, const SchemaStatement* around) const {
    const auto& word = lost.declaration->keyword.text;
    const auto offset = offsetIn(run_, word);
    if (isMisspelt(*lost.declaration))
        return "the keyword is written " + sNamed(word);
    if (word != keywordOf(lost.declaration->kind))
        return "the keyword is written " + sNamed(word) + ", and is found in capitals only";
    if (offset >= run_.lines.end)
        return "it comes after the line with END_SCHEMA";
    if (around && offset < around->firstLineEnd)
        return "its line is read as " + sStatement(*around);
    return "its line is the one on which " + (around ? sStatement(*around) : "another declaration") + " ends";
}

void LostDeclarations::vReadingCheck(std::size_t index) {
    auto& reading = readings_[index];
    if (!reading.declared) {
        vTextCheck(index);
    } else {
        vEndCheck(index);
        if (!reading.declared->finding && reading.declared->declaration->name.text.empty())
            vNamelessAdd(*reading.declared);
        else if (!reading.declared->finding)
            vNameCheck(*reading.declared);
        reading.finding = reading.declared->finding;
    }
    vReportsTake(index);
}

/// What is reported of a type that is none is explained.
void LostDeclarations::vReportsTake(std::size_t index) {
    using ifc::def::schema::Type;
    const auto& objects = run_.schema->getObjects();
    const auto* const type = index < objects.size() ? Type::pFrom(objects[index]) : nullptr;
    if (readings_[index].finding && type && !type->pUnderlying())
        run_.boTake(*readings_[index].finding, SchemaReport::Underlying);
}

/// A keyword in a comment or a string.
void LostDeclarations::vTextCheck(std::size_t index) {
    auto& reading = readings_[index];
    const auto& statement = run_.lines.statements[index];
    // Where a declaration is lost, its lines are read as others.
    const auto* const around = pDeclarationAround(run_, statement.keyword);
    if (!reading.finding && around)
        reading.finding = around->finding;
    if (reading.finding)
        return vTakenNote(*reading.finding, index);
    const ExpressWord word{run_.text.substr(statement.keyword, keywordOf(statement.kind).size())};
    if (run_.pOpenComment && isBefore(run_.positions.openComment, word)) {
        reading.finding = run_.pOpenComment;
        reading.finding->severity = Severity::Error;
        run_.vNoteAt(*reading.finding, word,
                     sStatement(statement) + " is in the comment, and is read all the same");
        return vTakenNote(*reading.finding, index);
    }
    reading.finding = &mentionAdd(statement, word);
    vTakenNote(*reading.finding, index);
}

/// The finding about a line that has a keyword and is no declaration.
Finding& LostDeclarations::mentionAdd(const SchemaStatement& statement, const ExpressWord& word) {
    const auto* const end = pStrayEnd(statement.keyword);
    if (!end) {
        auto& finding = run_.add("E005", word,
                                 "a line that only mentions " + std::string(keywordOf(statement.kind)) +
                                     " is read as the declaration of " + sNamed(statement.name));
        finding.subject = statement.name;
        return finding;
    }
    const auto keyword = sUpperWord(end->text.substr(end->text.find('_') + 1));
    auto& finding = run_.add("E005", word,
                             "the line that begins " + std::string(articleOf(keyword)) + keyword +
                                 " is missing, and this one is read as " +
                                 (statement.name.empty() ? "one" : sStatement(statement)));
    finding.subject = end->text;
    if (offsetIn(run_, end->text) > statement.keyword)
        run_.vNoteAt(finding, *end, "it ends here");
    if (run_.isKept(finding))
        run_.headless.push_back({&finding, keyword == "ENTITY", true});
    return finding;
}

/// The end of the declaration that has this byte in it and lacks its beginning; null when there is none.
const ExpressWord* LostDeclarations::pStrayEnd(std::size_t offset) const {
    const auto endOf = [this](const ExpressWord& word) {
        return offsetIn(run_, word.text) + word.text.size();
    };
    const auto end = std::ranges::upper_bound(run_.positions.strayEnds, offset, {}, endOf);
    if (end == run_.positions.strayEnds.end())
        return nullptr;
    const auto beginOf = [this](const Declared& one) { return offsetIn(run_, one.declaration->text); };
    const auto next = std::ranges::upper_bound(run_.declared, offset, {}, beginOf);
    const bool isBefore = next == run_.declared.end() || offsetIn(run_, end->text) < beginOf(*next);
    return isBefore ? &*end : nullptr;
}

/// Whether a declaration ends for the library where it does in the text.
void LostDeclarations::vEndCheck(std::size_t index) {
    auto& reading = readings_[index];
    const auto& declaration = *reading.declared->declaration;
    const auto& statement = run_.lines.statements[index];
    const std::string end = "END_" + std::string(keywordOf(declaration.kind));
    const auto endOffset = offsetIn(run_, declaration.text) + declaration.text.size();
    const auto sWhat = [&declaration] { return sDeclaration(declaration); };
    const bool isOneLine = declaration.text.find('\n') == std::string_view::npos &&
                           declaration.text.find('\r') == std::string_view::npos;
    Finding* finding = nullptr;
    if (declaration.end.text.empty())
        finding = &run_.add("E004", declaration.name, end + " of " + sWhat() + " is missing");
    else if (isOneLine)
        finding = &run_.add("E003", declaration.name, sWhat() + " is on one line and is not read");
    else if (declaration.end.text != end)
        finding = &wrongEndAdd(declaration, end);
    else if (pTaken(index))
        finding = &run_.add("E004", declaration.end,
                            "the end of " + sWhat() + " is not seen: it must be on a line of its own");
    else if (statement.end + declaration.end.text.size() < endOffset)
        finding =
            &run_.add("E005", declaration.name, sWhat() + " is read up to a line that only mentions its end");
    if (!finding)
        return;
    finding->subject = declaration.name.text;
    vTakenNote(*finding, index);
    reading.declared->finding = finding;
}

/// The finding about an end in other letters than the library looks for.
Finding& LostDeclarations::wrongEndAdd(const ExpressDeclaration& declaration, std::string_view end) {
    const bool isCase = isSameExpressWord(declaration.end.text, end);
    auto& finding =
        run_.add("E004", declaration.end,
                 "the end of " + sDeclaration(declaration) + " is written " + sNamed(declaration.end.text) +
                     (isCase ? ", and is found in capitals only" : ""));
    if (!isCase)
        finding.notes.push_back({sMeant(end), {}});
    return finding;
}

void LostDeclarations::vTakenNote(Finding& finding, std::size_t index) const {
    const auto* const all = pTaken(index);
    if (!all)
        return;
    for (auto* const taken : *all) {
        taken->finding = &finding;
        run_.vNoteAt(finding, taken->declaration->name,
                     sDeclaration(*taken->declaration) + " is taken for a part of it and is lost");
    }
    if (all->size() > SchemaRun::maxNotes)
        finding.notes.back().message +=
            ", as are " + std::to_string(all->size() - SchemaRun::maxNotes) + " more";
}

std::string sNameRemedy(const ExpressDeclaration& declaration) {
    if (isMisspelt(declaration))
        return sMeant(keywordOf(declaration.kind));
    if (declaration.name.text.find_first_of(" \t") != std::string_view::npos)
        return "names have no blanks in them";
    return "write the name on the line of the keyword, and a blank or \";\" right after it";
}

/// A name ends with a blank, or else with the ';'.
void LostDeclarations::vNameCheck(Declared& declared) {
    const auto& name = declared.declaration->name;
    if (declared.statement->name == name.text)
        return;
    auto& finding = run_.add("E002", name,
                             sDeclaration(*declared.declaration) + " is read under the name " +
                                 sNamed(declared.statement->name));
    finding.subject = name.text;
    finding.notes.push_back({sNameRemedy(*declared.declaration), {}});
    run_.vMeantKeep(declared, name.text, finding);
    declared.finding = &finding;
}

/// What it declares cannot be used.
void LostDeclarations::vNamelessAdd(Declared& declared) {
    const auto& declaration = *declared.declaration;
    auto& finding =
        run_.add("E002", declaration.keyword, "a name is missing after " + sNamed(declaration.keyword.text));
    finding.subject = declaration.keyword.text;
    declared.finding = &finding;
    if (run_.isKept(finding))
        run_.headless.push_back({&finding, declaration.kind == Kind::Entity, false});
}

} // namespace

bool boSomethingFound(SchemaRun& run) {
    constexpr TextPosition Beginning{1, 1, 0};
    if (run.schema && !run.schema->getObjects().empty())
        return true;
    const auto& headers = run.positions.schemas;
    const auto [reason, remedy] = run.schema ? noDeclarationsReason(run) : noSchemaReason(run);
    const std::string what = run.schema ? "the schema has no declarations: " : "no schema was found: ";
    auto& finding =
        run.add("E001", headers.empty() ? Beginning : run.positionOf(headers.back().keyword), what + reason);
    if (!remedy.empty())
        finding.notes.push_back({remedy, {}});
    else if (run.schema)
        finding.severity = Severity::Warning;
    return false;
}

void vLostDeclarationsCheck(SchemaRun& run) {
    LostDeclarations(run).vCheck();
    for (const auto& declared : run.declared) {
        const auto name = declared.declaration->name.text;
        if (declared.isLost() && declared.finding && run.isKept(*declared.finding) && !name.empty() &&
            !run.schema->pObjectFromName(name))
            declared.finding->missingNames.emplace_back(name);
    }
}

void vOpenCommentCheck(SchemaRun& run) {
    if (!run.positions.openComment.text.empty())
        run.pOpenComment = &run.add("E008", run.positions.openComment, "nothing closes this comment");
}

namespace {

/// Where the declaration ends that has the statement in it, for what is misread because of that.
TextPosition endOfMisreading(const SchemaRun& run, const ExpressUnended& unended) {
    const auto* const declared = pDeclarationAround(run, offsetIn(run, unended.last.text));
    return run.positionOf(declared ? declared->declaration->end : unended.next);
}

} // namespace

void vSemicolonsCheck(SchemaRun& run) {
    const auto& headers = run.positions.schemas;
    for (const auto& unended : run.positions.unended) {
        if (!headers.empty() && isBefore(unended.last, headers.back().keyword))
            continue;
        const auto* const around = pDeclarationAround(run, offsetIn(run, unended.last.text));
        // What is not read at all is found as such.
        if (around && around->isLost())
            continue;
        auto& finding = run.add("E009", unended.last, "\";\" is missing after " + sNamed(unended.last.text));
        run.vConsequencesTake(finding, {finding.place.position.line, 1, 0}, endOfMisreading(run, unended));
    }
}

namespace {

/// The rules in which a file was cut off are refused.
void vCutRuleTake(SchemaRun& run, Finding& finding, const Declared& last) {
    using ifc::def::schema::Entity;
    using ifc::def::schema::Type;
    const auto* const entity = Entity::pFrom(last.object);
    const auto* const type = Type::pFrom(last.object);
    const auto* const where = entity ? entity->pWhere() : type ? type->pWhere() : nullptr;
    const auto& members = last.declaration->members;
    if (!where || !run.boRuleTake(finding, where->getText()) || members.empty())
        return;
    const auto& rule = members.back();
    run.vNoteAt(finding, rule.name,
                "the rule " + sQualified(*last.declaration, rule.name.text) + " is cut off");
}

/// A file that was cut off lacks the end of its last declaration too.
Finding& schemaEndMissingAdd(SchemaRun& run, const ExpressSchemaHeader& header) {
    auto& finding =
        run.add("E019", header.name,
                "the end of the schema " + sNamed(header.name.text) + " is missing: no line has END_SCHEMA");
    if (run.declared.empty())
        return finding;
    run.pSchemaEndMissing = &finding;
    auto& last = run.declared.back();
    if (last.finding && run.isKept(*last.finding) && last.finding->code == "E004" &&
        last.declaration->end.text.empty()) {
        run.vFindingTake(finding, *last.finding);
        finding.severity = Severity::Error;
        last.finding = &finding;
        run.isCutInside = true;
        vCutRuleTake(run, finding, last);
    }
    return finding;
}

Finding& schemaEndWrongAdd(SchemaRun& run, const ExpressSchemaHeader& header) {
    const bool isCase = isSameExpressWord(header.end.text, "END_SCHEMA");
    auto& finding = run.add("E019", header.end,
                            "the end of the schema " + sNamed(header.name.text) + " is written " +
                                sNamed(header.end.text) + (isCase ? ", and is found in capitals only" : ""));
    if (!isCase)
        finding.notes.push_back({sMeant("END_SCHEMA"), {}});
    return finding;
}

} // namespace

void vSchemaEndCheck(SchemaRun& run) {
    // What is taken for its line may be a comment.
    if (run.positions.schemas.empty())
        return;
    const auto& header = run.positions.schemas.back();
    if (header.end.text == "END_SCHEMA")
        return;
    auto& finding =
        header.end.text.empty() ? schemaEndMissingAdd(run, header) : schemaEndWrongAdd(run, header);
    finding.subject = header.name.text;
}

namespace {

/// Whether a finding about a missing name can be about that of such a declaration.
bool canDeclare(const Headless& headless, const Finding& missing) {
    const bool isEntityMissing = missing.code == "E011" || missing.code == "E012" || missing.code == "E016";
    return !isEntityMissing || headless.isEntity;
}

} // namespace

void vLostNameTake(SchemaRun& run) {
    if (run.headless.size() != 1 ||
        run.positions.strayEnds.size() != (run.headless.front().hasStrayEnd ? 1U : 0U))
        return;
    auto* const missing = run.pOnlyMissing();
    if (!missing || !canDeclare(run.headless.front(), *missing))
        return;
    missing->message += ": that may be what this would declare";
    run.vFindingTake(*run.headless.front().finding, *missing);
}

namespace {

/// The finding is a note of the one about the cut.
void vCutTake(Finding& cut, Finding& missing) {
    cut.severity = std::max(cut.severity, missing.severity);
    if (!cut.origin)
        cut.origin = std::move(missing.origin);
    // It stays where it is, and is not among the findings in the end.
    missing.code = {};
}

} // namespace

void vCutOffTake(SchemaRun& run) {
    // Nobody misspells as many; of a file that ends between declarations nothing else shows that it was cut.
    constexpr std::size_t MaxMisspelt = 10;
    const auto missing = run.missingFindings();
    if (!run.pSchemaEndMissing || missing.empty() || (!run.isCutInside && missing.size() <= MaxMisspelt))
        return;
    auto& cut = *run.pSchemaEndMissing;
    const auto listed = std::min(missing.size(), SchemaRun::maxPlaces);
    for (auto* const finding : std::span(missing).first(listed))
        cut.notes.push_back({std::move(finding->message), finding->place});
    for (auto* const finding : missing)
        vCutTake(cut, *finding);
    if (const auto more = missing.size() - listed; more > 0)
        cut.notes.back().message += ", and " + std::to_string(more) + " more";
}

namespace {

/// Whether a text between two declarations, or after the last one, has a finding already.
class ExplainedTexts {
public:
    explicit ExplainedTexts(const SchemaRun& run) : run_(run), places_(run.findingPlaces()) {}

    bool isExplained(const ExpressWord& text) const {
        const auto beginOf = [this](const Declared& one) { return offsetIn(run_, one.declaration->text); };
        const auto next = std::ranges::upper_bound(run_.declared, offsetIn(run_, text.text), {}, beginOf);
        const auto* const before = next == run_.declared.begin() ? nullptr : &*std::prev(next);
        // What is misread may end elsewhere.
        if (before && (before->isLost() || before->finding))
            return true;
        const auto from = run_.positionOf(before ? before->declaration->end : text);
        const auto found = std::ranges::lower_bound(places_, from, isPlaceBefore);
        return found != places_.end() && (next == run_.declared.end() ||
                                          isPlaceBefore(*found, run_.positionOf(next->declaration->keyword)));
    }

private:
    static bool isPlaceBefore(const TextPosition& left, const TextPosition& right) {
        return std::pair(left.line, left.column) < std::pair(right.line, right.column);
    }

    const SchemaRun& run_;
    const std::vector<TextPosition> places_;
};

} // namespace

void vStrayTextsCheck(SchemaRun& run) {
    const auto& headers = run.positions.schemas;
    const ExplainedTexts explained(run);
    for (const auto& text : run.positions.strayTexts) {
        const bool isBeforeSchema = headers.empty() || isBefore(text, headers.back().keyword);
        const bool isInComment = run.pOpenComment && isBefore(run.positions.openComment, text);
        if (isBeforeSchema || isInComment || explained.isExplained(text))
            continue;
        run.add("E023", text,
                "what begins with " + sNamed(text.text) + " is in no declaration, and is passed over")
            .subject = text.text;
    }
}

void vOtherReportsAdd(SchemaRun& run) {
    for (const auto* record : run.untaken()) {
        // What is misread is looked up too.
        if (auto* const misreading = run.pMisreading()) {
            run.vReportNote(*misreading, *record);
            misreading->severity = Severity::Error;
            continue;
        }
        auto& finding = run.add("R090", TextPosition{}, std::string(record->message));
        finding.origin =
            FindingOrigin{std::string(record->function), std::string(record->file), record->line};
    }
}

} // namespace kiv::kit
