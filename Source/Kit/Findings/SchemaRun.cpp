#include "Kit/Findings/SchemaRun.h"

#include "Kit/Findings/Rules/SchemaRules.h"
#include "Kit/Text/AsciiText.h"
#include "kiv/Kit/Names/NearestName.h"

#include <algorithm>
#include <set>
#include <tuple>
#include <utility>

namespace kiv::kit {

namespace {

using ifc::def::schema::ObjectBase;

/// Longer names are cut in messages.
constexpr std::size_t MaxNamed = 120;
/// No schema has deeper trees; in one that has, nobody is asked for an attribute from further up.
constexpr std::size_t MaxLine = 64;
/// To compare a name with all others takes long where thousands are unknown.
constexpr std::size_t MaxNearest = 100;

constexpr std::string_view NearestQuestion = "did you mean ";

bool isNearestNote(const FindingNote& note) {
    return note.message.starts_with(NearestQuestion);
}

/// Whether the name that the finding offers has about the length of the one that is missing: others are
/// rather of the same family, as "WallType" is for "Wall".
bool isMisspelt(std::string_view name, const Finding& finding) {
    constexpr std::size_t MaxDifference = 2;
    const auto note = std::ranges::find_if(finding.notes, isNearestNote);
    if (note == finding.notes.end())
        return false;
    const auto size = note->message.size() - NearestQuestion.size() - std::string_view("\"\"?").size();
    return std::max(size, name.size()) - std::min(size, name.size()) <= MaxDifference;
}

struct ReportOrigin {
    std::string_view function;
    // -1 for any.
    int line;
    SchemaReport report;
};

constexpr std::array Origins = {
    ReportOrigin{"kiv::ifc::def::schema::Entity::vUpdate", 316, SchemaReport::Supertype},
    ReportOrigin{"kiv::ifc::def::schema::Entity::vUpdate", 325, SchemaReport::Subtype},
    ReportOrigin{"kiv::ifc::def::schema::AttributeInverse::vUpdate", -1, SchemaReport::Inverse},
    ReportOrigin{"kiv::ifc::def::schema::DeriveValue::update", -1, SchemaReport::Redeclared},
    ReportOrigin{"kiv::ifc::def::schema::Type::vUpdate", -1, SchemaReport::Underlying},
    ReportOrigin{"kiv::ifc::def::schema::DataTypeSelect::vUpdate", -1, SchemaReport::SelectMember},
    ReportOrigin{"kiv::ifc::def::schema::DataTypeListBase<9>::vUpdate", -1, SchemaReport::Element},
    ReportOrigin{"kiv::ifc::def::schema::DataTypeListBase<10>::vUpdate", -1, SchemaReport::Element},
    ReportOrigin{"kiv::ifc::def::schema::DataTypeListBase<11>::vUpdate", -1, SchemaReport::Element},
    ReportOrigin{"kiv::ifc::def::schema::Where::parseRules", -1, SchemaReport::Rule},
};

SchemaReport reportOf(const Assertion& record) {
    const auto found = std::ranges::find_if(Origins, [&](const ReportOrigin& origin) {
        return record.function == origin.function && (origin.line < 0 || record.line == origin.line);
    });
    return found == Origins.end() ? SchemaReport::Other : found->report;
}

/// Finds out of most reports that are the same as an earlier one without a look at their texts, which may be
/// long: those that are kept once lie in one place.
class RepeatedReports {
public:
    bool boTake(const Assertion& record) {
        return !places_
                    .emplace(record.message.data(), record.message.size(), record.function.data(),
                             record.function.size(), record.line)
                    .second;
    }

private:
    std::set<std::tuple<const char*, std::size_t, const char*, std::size_t, std::int32_t>> places_;
};

std::string_view ruleText(const Assertion& record) {
    constexpr std::string_view Rule = "\n\nRule: ";
    const auto pos = record.message.find(Rule);
    return pos == std::string_view::npos ? std::string_view() : record.message.substr(pos + Rule.size());
}

bool isKindOf(const ObjectBase& object, ExpressDeclarationKind kind) {
    using ObjectKind = ObjectBase::Type;
    static constexpr std::array Kinds = {ObjectKind::Type, ObjectKind::Entity, ObjectKind::Function,
                                         ObjectKind::Rule};
    const auto index = static_cast<std::size_t>(kind);
    return index < Kinds.size() && object.getKind() == Kinds[index];
}

} // namespace

std::string sUpperWord(std::string_view word) {
    return sUpperCase(word);
}

std::string sNamed(std::string_view name) {
    std::string named;
    named.reserve(std::min(name.size(), MaxNamed) + std::string_view("\"...\"").size());
    named.append(1, '"').append(name.substr(0, MaxNamed));
    return named.append(name.size() > MaxNamed ? "...\"" : "\"");
}

std::string_view keywordOf(ExpressDeclarationKind kind) {
    static constexpr std::array<std::string_view, 6> Keywords = {"TYPE", "ENTITY",    "FUNCTION",
                                                                 "RULE", "PROCEDURE", "CONSTANT"};
    return Keywords[static_cast<std::size_t>(kind)];
}

std::string sOwner(const ExpressDeclaration& declaration) {
    return declaration.name.text.empty()
               ? "the " + std::string(keywordOf(declaration.kind)) + " without a name"
               : sNamed(declaration.name.text);
}

std::string sQualified(const ExpressDeclaration& declaration, std::string_view member) {
    constexpr std::size_t MaxOwner = 60;
    if (declaration.name.text.empty())
        return sNamed(member) + " of " + sOwner(declaration);
    return sNamed(std::string(declaration.name.text.substr(0, MaxOwner)) + '.' +
                  std::string(member.substr(0, MaxOwner)));
}

bool isNameLetter(char letter) {
    return isLetter(letter) || isDigit(letter) || letter == '_';
}

std::string sMeant(std::string_view name) {
    return std::string(NearestQuestion) + sNamed(name) + '?';
}

bool isSameStatement(const ExpressMember& left, const ExpressMember& right) {
    // They share the text of their type, which no other statement does.
    return left.type.data() && left.type.data() == right.type.data();
}

SchemaRun::SchemaRun(const ifc::def::schema::Schema* readSchema, std::span<const Assertion> reports,
                     std::string_view wholeText, std::string shownPath) :
    schema(readSchema),
    text(wholeText),
    positions(expressPositions(wholeText)),
    lines(schemaLines(wholeText)),
    path_(std::move(shownPath)),
    reports_(reports),
    isTaken_(reports.size()),
    nearestLeft_(MaxNearest) {
    const auto first = positions.schemas.empty() ? 0 : positions.schemas.back().firstDeclaration;
    vDeclaredJoin(std::span(positions.declarations).subspan(first));
    vReportsSort();
}

/// Both lists are in the order of the text, and so are the objects.
void SchemaRun::vDeclaredJoin(std::span<const ExpressDeclaration> declarations) {
    const auto objects = schema ? std::span(schema->getObjects()) : std::span<const ObjectBase* const>();
    std::size_t next = 0;
    declared.reserve(declarations.size());
    for (const auto& declaration : declarations) {
        const auto keyword = static_cast<std::size_t>(declaration.keyword.text.data() - text.data());
        while (next < lines.statements.size() && lines.statements[next].keyword < keyword)
            ++next;
        auto& joined = declared.emplace_back();
        joined.declaration = &declaration;
        if (next < lines.statements.size() && lines.statements[next].keyword == keyword &&
            lines.statements[next].kind == declaration.kind)
            joined.statement = &lines.statements[next];
        if (joined.statement && next < objects.size() && isKindOf(*objects[next], declaration.kind) &&
            objects[next]->getName() == declaration.name.text)
            joined.object = objects[next];
    }
    byName_.vClear(declared.size());
    for (std::size_t index = 0; index < declared.size(); ++index) {
        const auto name = declared[index].declaration->name.text;
        byName_.add(HashIgnoringCase()(name), index, isNamed(name));
    }
    vPartsJoin();
    vSupertypesJoin();
}

/// Gives each attribute and each item to `take`.
template <class Take>
void SchemaRun::vPartsWalk(Take take) const {
    for (const auto& one : declared) {
        const auto index = static_cast<std::uint32_t>(&one - declared.data());
        for (const auto& name : one.declaration->names) {
            if (name.use == ExpressUse::EnumerationItem)
                take(Part{&name.word, index, true, false});
        }
        for (const auto& member : one.declaration->members) {
            if (member.kind <= ExpressMemberKind::Derived)
                take(Part{&member.name, index, false, member.kind == ExpressMemberKind::Attribute});
        }
    }
}

/// Neighbours are far apart, as many declarations have parts of one name.
std::size_t partHash(std::size_t declaration, std::size_t nameHash) {
    constexpr std::size_t Spread = 0x9E3779B97F4A7C15U;
    return nameHash ^ (declaration * Spread);
}

std::size_t hashOfPart(std::uint32_t declaration, std::string_view name) {
    return partHash(declaration, HashIgnoringCase()(name));
}

/// Of what letter case counts for.
std::size_t hashOfExplicit(std::uint32_t declaration, std::string_view name) {
    return partHash(declaration, std::hash<std::string_view>()(name));
}

void SchemaRun::vPartsJoin() {
    std::size_t explicitCount = 0;
    std::size_t count = 0;
    vPartsWalk([&](const Part& part) {
        ++count;
        explicitCount += part.isExplicit ? 1U : 0U;
    });
    parts_.reserve(count);
    ownParts_.vClear(count);
    ownExplicits_.vClear(explicitCount);
    vPartsWalk([&](const Part& part) {
        const auto number = parts_.size();
        const auto name = part.name->text;
        parts_.push_back(part);
        ownParts_.add(hashOfPart(part.declaration, name), number, isOwnPart(part.declaration, name));
        if (part.isExplicit)
            ownExplicits_.add(hashOfExplicit(part.declaration, name), number,
                              isOwnExplicit(part.declaration, name));
    });
}

void SchemaRun::vPartNamesJoin() {
    const auto itemCount = static_cast<std::size_t>(std::ranges::count(parts_, true, &Part::isItem));
    items_.vClear(itemCount);
    attributeNames_.vClear(parts_.size() - itemCount);
    for (std::size_t number = 0; number < parts_.size(); ++number) {
        const auto name = parts_[number].name->text;
        auto& names = parts_[number].isItem ? items_ : attributeNames_;
        names.add(HashIgnoringCase()(name), number, isPartNamed(name));
    }
}

void SchemaRun::vSupertypesJoin() {
    for (auto& entity : declared) {
        for (const auto& name : entity.declaration->names) {
            if (name.use != ExpressUse::Supertype)
                continue;
            const auto* const above = pDeclared(name.word.text);
            if (above && entity.supertypeCount < Declared::MaxSupertypes)
                entity.supertypeList[entity.supertypeCount++] =
                    static_cast<std::uint32_t>(above - declared.data());
            else
                entity.isLineKnown = false;
        }
        areLinesKnown_ = areLinesKnown_ && entity.isLineKnown;
    }
}

void SchemaRun::vReportsSort() {
    RepeatedReports repeated;
    for (std::size_t index = 0; index < reports_.size(); ++index) {
        const auto report = reportOf(reports_[index]);
        reportsOf_[static_cast<std::size_t>(report)].push_back(index);
        if (report == SchemaReport::Rule && !repeated.boTake(reports_[index]))
            ruleReports_.try_emplace(ruleText(reports_[index]), index);
    }
}

Finding& SchemaRun::add(std::string_view code, const TextPosition& position, std::string message) {
    const auto rule = std::ranges::find(getSchemaRules(), code, &Rule::code);
    auto& count = counts_[rule->code];
    auto& finding = ++count > maxFindingsPerCode ? surplus_ = {} : findings_.emplace_back();
    finding.code = rule->code;
    finding.severity = rule->severity;
    finding.message = std::move(message);
    finding.place = {path_, position};
    return finding;
}

void SchemaRun::vNoteAt(Finding& finding, const TextPosition& position, std::string message) const {
    if (finding.notes.size() < maxNotes)
        finding.notes.push_back({std::move(message), Place{path_, position}});
}

void SchemaRun::vNearestNote(Finding& finding, std::string_view name,
                             std::initializer_list<ExpressDeclarationKind> kinds,
                             std::vector<std::string_view> names) {
    if (!isNearestOffered())
        return;
    for (const auto& one : declared) {
        if (std::ranges::find(kinds, one.declaration->kind) != kinds.end())
            names.push_back(one.declaration->name.text);
    }
    vNearestOfNote(finding, name, names);
}

void SchemaRun::vNearestAttributeNote(Finding& finding, std::string_view name, const Declared& entity,
                                      std::initializer_list<ExpressDeclarationKind> kinds) {
    if (!isNearestOffered())
        return;
    bool isWhole = true;
    std::vector<std::string_view> names;
    for (const auto* one : lineOf(entity, isWhole)) {
        for (const auto& member : one->declaration->members) {
            if (member.kind <= ExpressMemberKind::Derived)
                names.push_back(member.name.text);
        }
    }
    vNearestNote(finding, name, kinds, std::move(names));
}

void SchemaRun::vNearestOfNote(Finding& finding, std::string_view name,
                               std::span<const std::string_view> names) {
    --nearestLeft_;
    if (const auto best = nearestName(name, names))
        finding.notes.push_back({sMeant(best->name), {}});
}

Declared* SchemaRun::pDeclared(std::string_view name) {
    const auto number = byName_.find(HashIgnoringCase()(name), isNamed(name));
    return number == NameIndex::None ? nullptr : &declared[number];
}

bool SchemaRun::isCutOff(std::string_view word) const {
    return word.data() + word.size() == text.data() + text.size();
}

bool SchemaRun::isKnown(std::string_view name) {
    return pDeclared(name) || (schema && schema->pObjectFromName(name));
}

std::vector<const Declared*> SchemaRun::lineOf(const Declared& entity, bool& isWhole) const {
    std::vector<const Declared*> line{&entity};
    for (std::size_t index = 0; index < line.size(); ++index) {
        isWhole = isWhole && line[index]->isLineKnown;
        for (const auto number : line[index]->supertypes()) {
            if (std::ranges::find(line, &declared[number]) != line.end())
                continue;
            isWhole = isWhole && line.size() < MaxLine;
            if (line.size() < MaxLine)
                line.push_back(&declared[number]);
        }
    }
    return line;
}

std::size_t SchemaRun::partNumber(const NameIndex& index, std::string_view name) const {
    return index.find(HashIgnoringCase()(name), isPartNamed(name));
}

bool SchemaRun::hasOwnPart(const Declared& entity, std::string_view name) const {
    const auto index = static_cast<std::uint32_t>(&entity - declared.data());
    return ownParts_.find(hashOfPart(index, name), isOwnPart(index, name)) != NameIndex::None;
}

bool SchemaRun::hasOwnExplicit(const Declared& entity, std::string_view name) const {
    const auto index = static_cast<std::uint32_t>(&entity - declared.data());
    return ownExplicits_.find(hashOfExplicit(index, name), isOwnExplicit(index, name)) != NameIndex::None;
}

bool SchemaRun::hasPart(HasOwn hasOwn, const Declared& entity, std::string_view name) const {
    // Most are its own.
    if ((this->*hasOwn)(entity, name))
        return true;
    bool isWhole = true;
    const auto line = lineOf(entity, isWhole);
    return std::ranges::any_of(line, [&](const Declared* one) { return (this->*hasOwn)(*one, name); }) ||
           !isWhole;
}

bool SchemaRun::hasAttribute(const Declared& entity, std::string_view name) const {
    return hasPart(&SchemaRun::hasOwnPart, entity, name);
}

bool SchemaRun::hasExplicitAttribute(const Declared& entity, std::string_view name) const {
    return hasPart(&SchemaRun::hasOwnExplicit, entity, name);
}

std::string SchemaRun::sMissingKey(const Declared& owner, std::string_view name) const {
    const auto* top = &owner;
    // A circle of supertypes has no top; then any of them will do.
    for (std::size_t step = 0; step < MaxLine && top->supertypeCount != 0; ++step)
        top = &declared[top->supertypeList.front()];
    return std::to_string(top - declared.data()) + '.' + sUpperWord(name);
}

Finding* SchemaRun::pMissingBefore(const std::string& key, const ExpressWord& word, const std::string& use) {
    const auto found = missing_.find(key);
    if (found == missing_.end())
        return nullptr;
    auto& missing = found->second;
    if (++missing.useCount <= maxPlaces) {
        missing.lastNote = missing.finding->notes.size();
        missing.finding->notes.push_back({"it is also " + use, Place{path_, positionOf(word)}});
    }
    return missing.finding;
}

void SchemaRun::vMissingKeep(std::string key, Finding& finding) {
    // What is over the limit is forgotten: of its other uses each counts for itself.
    if (!isKept(finding))
        return;
    // Where the entity is not known, an attribute that one of them lacks is the same one.
    if (const auto dot = key.rfind('.'); dot != std::string::npos)
        missing_.try_emplace(key.substr(dot), Missing{&finding});
    missing_.try_emplace(std::move(key), Missing{&finding});
}

void SchemaRun::vMeantKeep(const Declared& owner, std::string_view name, Finding& finding) {
    std::string meant(name);
    std::erase_if(meant, [](char letter) { return !isNameLetter(letter); });
    if (meant == name || meant.empty())
        return;
    const bool isOwn = name.data() == owner.declaration->name.text.data();
    if (isOwn && !isKnown(meant))
        vMissingKeep(sMissingKey(meant), finding);
    else if (!isOwn && !hasAttribute(owner, meant))
        vMissingKeep(sMissingKey(owner, meant), finding);
}

void SchemaRun::vMissingCount() {
    for (const auto& [key, missing] : missing_) {
        if (missing.useCount <= maxPlaces)
            continue;
        const auto more = missing.useCount - maxPlaces;
        missing.finding->notes[missing.lastNote].message +=
            ", and is used in " + std::to_string(more) + " more place" + (more == 1 ? "" : "s");
    }
}

Finding* SchemaRun::pOnlyMissing() {
    Finding* only = nullptr;
    for (const auto& [key, missing] : missing_) {
        const bool isOfSchema = key.find_first_of(".\\") == std::string::npos;
        if (!isOfSchema || (missing.useCount == 0 && isMisspelt(key, *missing.finding)))
            continue;
        if (only)
            return nullptr;
        only = missing.finding;
    }
    return only;
}

bool SchemaRun::isSupertype(const Declared& above, const Declared& entity) const {
    bool isWhole = true;
    const auto line = lineOf(entity, isWhole);
    return !isWhole || std::ranges::find(line, &above) != line.end();
}

void SchemaRun::vReportTake(Finding& finding, std::size_t index) {
    isTaken_[index] = true;
    vReportNote(finding, reports_[index]);
}

void SchemaRun::vReportNote(Finding& finding, const Assertion& record) {
    if (!finding.origin)
        finding.origin = FindingOrigin{std::string(record.function), std::string(record.file), record.line};
    const auto message = std::string("reported while reading: ").append(record.message);
    // Each use of a name is reported in the same words.
    if (finding.notes.size() < maxNotes &&
        std::ranges::find(finding.notes, message, &FindingNote::message) == finding.notes.end())
        finding.notes.push_back({message, {}});
}

bool SchemaRun::boTake(Finding& finding, SchemaReport report) {
    auto& left = reportsOf_[static_cast<std::size_t>(report)];
    if (left.empty())
        return false;
    vReportTake(finding, left.front());
    left.pop_front();
    return true;
}

bool SchemaRun::boRuleTake(Finding& finding, std::string_view rules) {
    const auto found = ruleReports_.find(rules);
    if (found == ruleReports_.end())
        return false;
    vReportTake(finding, found->second);
    return true;
}

std::vector<const Assertion*> SchemaRun::untaken() const {
    // What is reported twice for one mistake differs in nothing.
    const auto textOf = [](const Assertion& record) {
        return std::string(record.function)
            .append("\n" + std::to_string(record.line) + '\n')
            .append(record.message);
    };
    RepeatedReports repeated;
    std::unordered_set<std::string> seen;
    for (std::size_t index = 0; index < reports_.size(); ++index) {
        if (isTaken_[index] && !repeated.boTake(reports_[index]))
            seen.insert(textOf(reports_[index]));
    }
    std::vector<const Assertion*> records;
    for (std::size_t index = 0; index < reports_.size(); ++index) {
        if (!isTaken_[index] && !repeated.boTake(reports_[index]) &&
            seen.insert(textOf(reports_[index])).second)
            records.push_back(&reports_[index]);
    }
    return records;
}

void SchemaRun::vConsequencesTake(Finding& finding, const TextPosition& begin, const TextPosition& end) {
    // With what is over the limit they would be gone.
    if (!isKept(finding))
        return;
    const auto placeOf = [](const TextPosition& position) {
        return std::pair(position.line, position.column);
    };
    for (auto& other : findings_) {
        const auto place = placeOf(other.place.position);
        if (&other == &finding)
            continue;
        if ((other.code != "E006" && other.code != "E007") || place < placeOf(begin) || place >= placeOf(end))
            continue;
        vNoteAt(finding, other.place.position, std::move(other.message));
        finding.severity = Severity::Error;
        if (!finding.origin)
            finding.origin = std::move(other.origin);
        // It stays where it is, and is not among the findings in the end.
        other.code = {};
    }
}

void SchemaRun::vFindingTake(Finding& finding, Finding& other) {
    std::erase_if(other.notes, isNearestNote);
    other.notes.insert(other.notes.begin(), {std::move(other.message), other.place});
    finding.notes.insert(finding.notes.begin(), std::make_move_iterator(other.notes.begin()),
                         std::make_move_iterator(other.notes.end()));
    finding.missingNames.insert(finding.missingNames.end(), other.missingNames.begin(),
                                other.missingNames.end());
    if (!finding.origin)
        finding.origin = std::move(other.origin);
    // It stays where it is, and is not among the findings in the end.
    other.code = {};
}

Finding* SchemaRun::pMisreading() {
    const auto isMisreading = [](const Finding& finding) {
        return (finding.code >= "E002" && finding.code <= "E006") || finding.code == "E022" ||
               (finding.code == "E009" && finding.severity == Severity::Error);
    };
    const auto found = std::ranges::find_if(findings_, isMisreading);
    return found == findings_.end() ? pOpenComment : &*found;
}

std::vector<TextPosition> SchemaRun::findingPlaces() const {
    std::vector<TextPosition> places;
    for (const auto& finding : findings_) {
        if (!finding.code.empty())
            places.push_back(finding.place.position);
    }
    std::ranges::sort(places);
    return places;
}

std::vector<Finding*> SchemaRun::missingFindings() {
    std::vector<Finding*> findings;
    for (const auto& [key, missing] : missing_) {
        // Names that are written wrongly where they are declared have other codes.
        if (missing.finding->code >= "E011" && missing.finding->code <= "E018")
            findings.push_back(missing.finding);
    }
    // By the code too, so that those that are repeated lie beside each other.
    std::ranges::sort(findings, {}, [](const Finding* finding) {
        return std::pair(finding->place.position, finding->code);
    });
    // Clang 14 cannot read what std::ranges::unique gives.
    findings.erase(std::unique(findings.begin(), findings.end()), findings.end());
    return findings;
}

std::vector<Finding> SchemaRun::takeFindings() {
    std::vector<Finding> findings(std::make_move_iterator(findings_.begin()),
                                  std::make_move_iterator(findings_.end()));
    std::erase_if(findings, [](const Finding& finding) { return finding.code.empty(); });
    std::ranges::stable_sort(
        findings, {}, [](const Finding& finding) { return std::pair(finding.place.position, finding.code); });
    return findings;
}

} // namespace kiv::kit
