#include "Kit/Findings/Rules/ClassRules.h"

#include "Kit/Findings/MissingChild.h"
#include "Kit/Findings/PredefinedTypes.h"
#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/Rules/ClassText.h"
#include "Kit/Findings/Rules/RuleNames.h"
#include "Kit/Names/LookAlikes.h"
#include "Kit/Positions/XmlChildren.h"
#include "Kit/Text/AsciiText.h"
#include "Kit/Text/PositionAfter.h"
#include "Kit/Text/Utf8.h"
#include "kiv/Kit/Names/SchemaRelease.h"

#include <algorithm>
#include <map>
#include <memory_resource>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kiv::kit {

namespace schema = ifc::def::schema;

namespace {

constexpr std::size_t maxSubjectSize = 120;
/// What is written between a class and a predefined type in the place of "/".
constexpr std::string_view ClassMarks = ".\\:";

/// Whether it is a part of IFC as older documents name them: "IFCSHAREDBLDGELEMENTS", "IfcHvacDomain".
bool isDomainName(std::string_view text) {
    constexpr std::string_view Ends[] = {"DOMAIN", "ELEMENTS", "EXTENSION", "KERNEL", "RESOURCE"};
    const auto upper = sUpperCase(trimmed(text));
    return upper.starts_with("IFC") &&
           std::ranges::any_of(Ends, [&](std::string_view end) { return upper.ends_with(end); });
}

/// A text, and where the parts of it are. Each is looked for from the last one on, as there may be very many.
class PlacedText {
public:
    explicit PlacedText(const XmlText& text) : text_(text), last_(text.position) {}

    const XmlText& getText() const { return text_; }

    /// Of a view of the value. That of the whole where the value is not written as it reads.
    TextPosition positionOf(std::string_view part) {
        if (!text_.isAsWritten)
            return text_.position;
        const auto offset = static_cast<std::size_t>(part.data() - text_.value.data());
        if (offset < lastOffset_) {
            lastOffset_ = 0;
            last_ = text_.position;
        }
        last_ = positionAfter(last_, text_.value.substr(lastOffset_, offset - lastOffset_));
        lastOffset_ = offset;
        return {last_.line, last_.column, codePointsIn(part)};
    }

private:
    XmlText text_;
    TextPosition last_;
    std::size_t lastOffset_ = 0;
};

/// Looks at one document for all rules of the family.
class ClassCheck {
public:
    explicit ClassCheck(RuleRun& run) :
        run_(run), outline_(run.outline), names_(run), listed_(run.pMemory()), entities_(run.pMemory()) {}

    void vRun();

private:
    FindingDraft& add(std::string_view code, const ClassOutline& item, std::string message);

    void vEmptyCheck();
    bool boIsEmpty(XmlIndex element) const;
    void vClassCheck(const ClassOutline& item);
    const schema::ObjectBase* pObjectOf(std::string_view name) const {
        return run_.schema.pObjectFromName(name);
    }
    const schema::Entity* pEntityOf(std::string_view name) const {
        return schema::Entity::pFrom(pObjectOf(name));
    }

    /// Whether no entity is written like it in another letter case.
    bool boIsRight(const ClassOutline& item) const {
        const auto* entity = pEntityOf(item.name);
        return !entity || entity->getName() == item.name;
    }
    void vEntityCheck(const ClassOutline& item, const schema::Entity& entity);
    void vPredefinedTypeCheck(const ClassOutline& item, const schema::Entity& entity);
    void vIllegalAdd(const ClassOutline& item, const schema::Entity& entity,
                     const schema::DataTypeEnum& legal);
    bool boIsPredefinedType(const schema::Entity& entity, std::string_view type);
    std::string_view nearestTypeNoted(FindingDraft& draft, std::string_view type,
                                      const schema::DataTypeEnum& legal);
    std::string_view legalTypesNoted(FindingDraft& draft, std::string_view type, const schema::Entity& entity,
                                     const schema::DataTypeEnum& legal);
    void vUnknownCheck(const ClassOutline& item);
    void vTodayNote(FindingDraft& draft, const ClassOutline& item, const ClassText& text,
                    const std::string& saying);
    bool boOtherMarkNoted(FindingDraft& draft, std::string_view name);
    bool boIsBlank(const ClassOutline& item);
    bool boIsOlderSpelling(const ClassOutline& item);
    void vUnknownAdd(const ClassOutline& item);
    bool boRepeats(const ClassOutline& item, const schema::Entity& entity);
    void vSupertypesCheck();

    PlacedText& typeValue();
    FindingDraft& addAtTypeValue(std::string_view code, std::string_view part, std::string message);
    void vTypeValueCheck();
    void vContradictionAdd(const ClassText& value);
    bool boIsMistyped(const ClassText& value);
    bool boIsAmongClasses(std::string_view name) const;
    bool boIsMistypedClass(const ClassText& value, const schema::Entity& entity);
    void vIllegalTypeValueAdd(std::string_view type, const schema::Entity& entity);
    void vTypeValueMend(FindingDraft& draft, std::string_view part, std::string_view mended);
    std::string sOtherCase(std::string_view name, const schema::Entity& entity) const;
    bool boIsAfterDomain(const ClassText& value) const;
    void vTodayTypeValueAdd(std::string_view part, std::string_view today);
    std::string sTodayOf(std::string_view part);
    void vOtherTypeValueCheck(std::string_view text);
    bool boMatchesAClass(const ClassText& value) const;
    bool boHasLostClass() const;
    bool boNamesSeveral(std::string_view name) const;
    bool boMatches(const ClassText& value, const ClassOutline& item) const;
    void vOlderTypeValueCheck(const std::vector<ClassText>& values);

    RuleRun& run_;
    const SetOutline& outline_;
    RuleNames names_;
    PredefinedTypes predefinedTypes_;
    // By entity and predefined type, and the entities of the classes that are listed without one.
    std::pmr::map<std::pair<const schema::Entity*, std::string_view>, XmlIndex> listed_;
    std::pmr::unordered_map<const schema::Entity*, XmlIndex> entities_;
    std::vector<std::pair<const schema::Entity*, const ClassOutline*>> checked_;
    // The classes whose predefined type is a mistake.
    std::unordered_set<const ClassOutline*> mistyped_;
    // The applicable type value, when something is to be said of it.
    std::optional<PlacedText> typeValue_;
};

void ClassCheck::vRun() {
    if (outline_.kind == SetKind::None || outline_.isPrefixed)
        return;
    vEmptyCheck();
    // Those in the right letter case first: the others repeat them.
    for (const bool isRight : {true, false}) {
        for (const auto& item : outline_.classes) {
            if (boIsRight(item) == isRight)
                vClassCheck(item);
        }
    }
    vSupertypesCheck();
    vTypeValueCheck();
}

FindingDraft& ClassCheck::add(std::string_view code, const ClassOutline& item, std::string message) {
    auto& draft = run_.addAtText(code, item.element, std::move(message));
    return draft.vSubject(outline_.setSubject().append(" ").append(cut(trimmed(item.text), maxSubjectSize)));
}

bool ClassCheck::boIsEmpty(XmlIndex element) const {
    const auto& item = run_.xml.getElement(element);
    // A text after a comment, or inside another element, is not seen: another mistake.
    return item.name == "ClassName" && trimmed(item.text).empty() && item.firstChild == NoXmlElement &&
           !item.hasLaterText() && !item.isTextHidden;
}

void ClassCheck::vEmptyCheck() {
    constexpr std::string_view OnlyUnrestricted =
        "without classes the set is listed only where sets without restriction are asked for";
    bool hasName = false;
    for (const auto list : XmlChildren(run_.xml, 0)) {
        if (run_.xml.getElement(list).name != "ApplicableClasses")
            continue;
        for (const auto child : XmlChildren(run_.xml, list)) {
            hasName = true;
            // As an attribute the name is found already.
            if (!boIsEmpty(child) || run_.boMisplaced(child))
                continue;
            auto& draft = run_.add("C006", child, "the class name is empty and is ignored");
            if (outline_.classes.empty())
                draft.vNote("no class is left: " + std::string(OnlyUnrestricted));
        }
    }
    if (hasName || boMissingExplained(run_, 0, "ApplicableClasses"))
        return;
    const auto place = outline_.applicableClasses == NoXmlElement ? XmlIndex{0} : outline_.applicableClasses;
    if (place != 0 && run_.boMisplaced(place))
        return;
    run_.add("C007", place, "the set names no class that it applies to").vNote(std::string(OnlyUnrestricted));
}

void ClassCheck::vClassCheck(const ClassOutline& item) {
    if (trimmed(item.text).empty()) {
        add("C006", item, "the class name is only white space");
        return;
    }
    const bool isBlank =
        trimmed(item.name) != item.name || trimmed(item.predefinedType) != item.predefinedType;
    if (isBlank && boIsBlank(item))
        return;
    const auto* object = pObjectOf(item.name);
    if (const auto* entity = schema::Entity::pFrom(object))
        vEntityCheck(item, *entity);
    else if (object)
        add("C002", item, sQuoted(item.name) + " is " + sKindOf(*object) + ", not an entity");
    else
        vUnknownCheck(item);
}

void ClassCheck::vEntityCheck(const ClassOutline& item, const schema::Entity& entity) {
    const bool isRepeated = boRepeats(item, entity);
    if (!isRepeated && !boIsRight(item)) {
        std::string mended(entity.getName());
        mended.append(item.text.substr(item.name.size()));
        add("C003", item, sOtherCase(item.name, entity))
            .vNote("look-ups by class compare letter case, so the set is not found for " +
                   std::string(entity.getName()))
            .vEdit(run_.xml.textOf(run_.xml.getElement(item.element)).bytes, trimmed(mended));
    }
    if (!item.predefinedType.empty())
        vPredefinedTypeCheck(item, entity);
    else if (trimmed(item.text).ends_with('/'))
        add("C008", item,
            "nothing comes after \"/\" in " + sQuoted(trimmed(item.text)) +
                ", where a predefined type belongs")
            .vSeverity(Severity::Warning);
    // What else is wrong with a class that is listed twice is said of the first.
    if (!isRepeated)
        checked_.emplace_back(&entity, &item);
}

std::string ClassCheck::sOtherCase(std::string_view name, const schema::Entity& entity) const {
    return "the class " + sQuoted(name) + " is written " + sQuoted(entity.getName()) + " in " +
           names_.sSchema();
}

/// Whether the class is listed already, which is said.
bool ClassCheck::boRepeats(const ClassOutline& item, const schema::Entity& entity) {
    const auto [first, isNew] = listed_.try_emplace(std::pair(&entity, item.predefinedType), item.element);
    if (!isNew)
        add("C004", item, "the class " + sQuoted(trimmed(item.text)) + " is listed twice")
            .vNoteAt("it is here already", run_.xml.textPositionOf(run_.xml.getElement(first->second)));
    if (item.predefinedType.empty())
        entities_.try_emplace(&entity, item.element);
    return !isNew;
}

void ClassCheck::vSupertypesCheck() {
    // Entities of real schemas have a dozen supertypes.
    constexpr int maxSupertypes = 256;
    for (const auto& [entity, item] : checked_) {
        const auto* supertype = entity->pSupertype();
        for (int i = 0; supertype && i != maxSupertypes; ++i, supertype = supertype->pSupertype()) {
            const auto found = entities_.find(supertype);
            if (found == entities_.end())
                continue;
            add("C005", *item,
                sQuoted(trimmed(item->text)) + " is listed with its supertype " +
                    sQuoted(supertype->getName()))
                .vNoteAt("the supertype is here; it includes every " + std::string(entity->getName()),
                         run_.xml.textPositionOf(run_.xml.getElement(found->second)));
            break;
        }
    }
}

bool ClassCheck::boIsPredefinedType(const schema::Entity& entity, std::string_view type) {
    const auto* legal = predefinedTypes_.pItems(entity);
    return legal && legal->boContains(type);
}

/// The nearest of the predefined types, which becomes a note; empty when none is near.
std::string_view ClassCheck::nearestTypeNoted(FindingDraft& draft, std::string_view type,
                                              const schema::DataTypeEnum& legal) {
    // There may be many, and as many classes.
    if (!names_.boSearchLeft())
        return {};
    const auto nearest = names_.nearestOf(type, {legal.getItems().begin(), legal.getItems().end()});
    if (!nearest.empty())
        draft.vNote("did you mean " + sQuoted(nearest) + "?");
    return nearest;
}

std::string sNoTypes(std::string_view type, const schema::Entity& entity) {
    return std::string(entity.getName()) + " has no predefined types, so " + sQuoted(type) +
           " is none of them";
}

void ClassCheck::vPredefinedTypeCheck(const ClassOutline& item, const schema::Entity& entity) {
    if (!predefinedTypes_.pAttribute(entity)) {
        mistyped_.insert(&item);
        auto& draft = add("C009", item, sNoTypes(item.predefinedType, entity));
        if (const auto* other = pEntityOf(item.predefinedType))
            draft.vNote(std::string(other->getName()) + " is an entity of its own");
        return;
    }
    const auto* legal = predefinedTypes_.pItems(entity);
    if (!legal) {
        mistyped_.insert(&item);
        add("C009", item,
            "the attribute PredefinedType of " + std::string(entity.getName()) + " is no enumeration, so " +
                sQuoted(item.predefinedType) + " is no predefined type");
        return;
    }
    if (!legal->boContains(item.predefinedType))
        vIllegalAdd(item, entity, *legal);
}

/// The same, and those that are legal.
std::string_view ClassCheck::legalTypesNoted(FindingDraft& draft, std::string_view type,
                                             const schema::Entity& entity,
                                             const schema::DataTypeEnum& legal) {
    constexpr std::size_t maxShown = 40;
    const auto items = legal.getItems();
    const auto nearest = nearestTypeNoted(draft, type, legal);
    draft.vNote("the predefined types of " + std::string(entity.getName()) + " are " +
                sQuotedFirst(items.first(std::min(items.size(), maxShown)), items.size()));
    return nearest;
}

std::string sIllegal(std::string_view type, const schema::Entity& entity) {
    return sQuoted(type) + " is no predefined type of " + std::string(entity.getName());
}

void ClassCheck::vIllegalAdd(const ClassOutline& item, const schema::Entity& entity,
                             const schema::DataTypeEnum& legal) {
    mistyped_.insert(&item);
    auto& draft = add("C008", item, sIllegal(item.predefinedType, entity));
    const auto nearest = legalTypesNoted(draft, item.predefinedType, entity, legal);
    if (!nearest.empty() && isEqualIgnoringCase(nearest, item.predefinedType))
        draft.vEdit(run_.xml.textOf(run_.xml.getElement(item.element)).bytes,
                    std::string(entity.getName()).append("/").append(nearest));
}

void ClassCheck::vUnknownCheck(const ClassOutline& item) {
    const auto& element = run_.xml.getElement(item.element);
    // A name with a comment inside is read in part, which is found as such.
    const bool isCut = element.hasLaterText() && element.firstChild == NoXmlElement;
    if (!isCut && !boIsOlderSpelling(item))
        vUnknownAdd(item);
}

/// Blanks around the whole are cut off by readers; other white space, and blanks around "/", become a part of
/// the name.
bool ClassCheck::boIsBlank(const ClassOutline& item) {
    const auto clean = trimmed(item.text);
    const auto text = classTextOf(clean);
    const auto* entity = text ? pEntityOf(text->name) : nullptr;
    if (!entity || text->spelling != ClassSpelling::Current)
        return false;
    std::string mended(entity->getName());
    if (!text->predefinedType.empty())
        mended.append("/").append(text->predefinedType);
    add("C010", item,
        "there is white space in the class name " + sQuoted(clean) +
            " or around it, and becomes a part of the name")
        .vEdit(run_.xml.textBytesOf(run_.xml.getElement(item.element)), mended);
    return true;
}

/// What an older spelling is today. It is mended only where both of its names are right.
void ClassCheck::vTodayNote(FindingDraft& draft, const ClassOutline& item, const ClassText& text,
                            const std::string& saying) {
    const auto* entity = pEntityOf(text.name);
    if (!entity) {
        draft.vNote(names_.sSchema() + " has no entity " + sQuoted(text.name));
        names_.vNearestNote(draft, text.name, SchemaNames::Entities);
        return;
    }
    if (!text.predefinedType.empty() && !boIsPredefinedType(*entity, text.predefinedType)) {
        draft.vNote(sIllegal(text.predefinedType, *entity));
        if (const auto* legal = predefinedTypes_.pItems(*entity))
            legalTypesNoted(draft, text.predefinedType, *entity, *legal);
        return;
    }
    std::string mended(entity->getName());
    if (!text.predefinedType.empty())
        mended.append("/").append(text.predefinedType);
    draft.vNote(saying + sQuoted(mended))
        .vEdit(run_.xml.textOf(run_.xml.getElement(item.element)).bytes, mended);
}

bool ClassCheck::boIsOlderSpelling(const ClassOutline& item) {
    const auto clean = trimmed(item.text);
    const auto mark = std::min(clean.find_first_of("/\\:"), clean.size());
    const auto domain = clean.substr(0, mark);
    const auto inDomain =
        isDomainName(domain) && mark != clean.size() ? classTextOf(clean.substr(mark + 1)) : std::nullopt;
    // What does not begin like a class is a predefined type, and the class is one whose name ends so.
    if (inDomain && sUpperCase(inDomain->name).starts_with("IFC")) {
        auto& draft = add("C011", item, sQuoted(clean) + " is the older spelling DOMAIN/Class");
        vTodayNote(draft, item, *inDomain, "the class is written without its domain now: ");
        return true;
    }
    const auto text = classTextOf(clean);
    if (!text || text->spelling != ClassSpelling::WithAttribute)
        return false;
    auto& draft = add("C012", item, sQuoted(clean) + " is the older spelling Class.PredefinedType=\"X\"");
    vTodayNote(draft, item, *text, "today it is written ");
    return true;
}

/// Says how to write "IfcDoor.DOOR", "IfcDoor\\DOOR", "IfcDoor::DOOR" and "IfcDoor.PredefinedType=DOOR".
/// Marks that are in names of other kinds too count before a predefined type alone.
bool ClassCheck::boOtherMarkNoted(FindingDraft& draft, std::string_view name) {
    constexpr std::string_view Marks = ".\\:|-= ";
    const auto mark = name.find_first_of(Marks);
    const auto* entity = mark == std::string_view::npos ? nullptr : pEntityOf(name.substr(0, mark));
    if (!entity)
        return false;
    const auto type = trimmed(name.substr(name.find_last_of(Marks) + 1));
    if (boIsPredefinedType(*entity, type)) {
        draft.vNote("write it as " + sQuoted(std::string(entity->getName()).append("/").append(type)));
        return true;
    }
    const auto* legal = predefinedTypes_.pItems(*entity);
    if (!legal || pEntityOf(type) || ClassMarks.find(name[mark]) == std::string_view::npos)
        return false;
    draft.vNote("\"/\" separates a class from its predefined type");
    nearestTypeNoted(draft, type, *legal);
    return true;
}

std::string sWithoutBlanks(std::string_view name) {
    std::string joined(name);
    std::erase(joined, ' ');
    return joined;
}

void ClassCheck::vUnknownAdd(const ClassOutline& item) {
    const auto name = trimmed(item.name);
    if (name.empty()) {
        add("C001", item,
            "nothing is before \"/\" in " + sQuoted(trimmed(item.text)) + ", where a class belongs");
        return;
    }
    auto& draft = add("C001", item, names_.sSchema() + " has no entity " + sQuoted(name));
    draft.finding.missingNames.emplace_back(name);
    if (const auto* other = names_.pOtherWith(name))
        draft.vNote(other->name + " has it");
    else if (boOtherMarkNoted(draft, name))
        return;
    else if (name.find_first_of(",;|") != std::string_view::npos || boNamesSeveral(name))
        draft.vNote("each \"ClassName\" names one class");
    else
        names_.vNearestNote(draft, sWithoutBlanks(name), SchemaNames::Entities);
}

/// Whether blanks are between names of classes, and not inside one.
bool ClassCheck::boNamesSeveral(std::string_view name) const {
    if (name.find(' ') == std::string_view::npos)
        return false;
    while (!name.empty()) {
        const auto end = std::min(name.find(' '), name.size());
        const auto word = name.substr(0, end);
        if (!word.empty() && !sUpperCase(word).starts_with("IFC") && !pEntityOf(word))
            return false;
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    return true;
}

bool ClassCheck::boMatches(const ClassText& value, const ClassOutline& item) const {
    const auto itemName = trimmed(item.name);
    if (isEqualIgnoringCase(value.name, itemName))
        return value.predefinedType.empty() || item.predefinedType.empty() ||
               isEqualIgnoringCase(value.predefinedType, trimmed(item.predefinedType));
    // A set for the occurrences may name the type that carries the predefined type, and the other way round.
    if (isEqualIgnoringCase(value.name, std::string(itemName) + "Type") ||
        isEqualIgnoringCase(std::string(value.name) + "Type", itemName))
        return true;
    const auto* valueEntity = pEntityOf(value.name);
    const auto* itemEntity = pEntityOf(itemName);
    return valueEntity && itemEntity &&
           (valueEntity->isSameOrSubtypeOf(*itemEntity) || itemEntity->isSameOrSubtypeOf(*valueEntity));
}

bool ClassCheck::boMatchesAClass(const ClassText& value) const {
    for (const auto& item : outline_.classes) {
        // What is no class as written today may mean any, and so may a predefined type that is a mistake.
        if (!pEntityOf(trimmed(item.name)) || mistyped_.contains(&item) || boMatches(value, item))
            return true;
    }
    return false;
}

/// Whether a class is written where readers do not see it, or is empty, so that not all are known.
bool ClassCheck::boHasLostClass() const {
    for (const auto list : XmlChildren(run_.xml, 0)) {
        if (run_.xml.getElement(list).name != "ApplicableClasses")
            continue;
        if (run_.boStrayText(list))
            return true;
        for (const auto child : XmlChildren(run_.xml, list)) {
            if (!run_.vocabulary.pRuleOf(child) || run_.boMisplaced(child) ||
                trimmed(run_.xml.getElement(child).text).empty())
                return true;
        }
    }
    return false;
}

/// At a part of the applicable type value.
FindingDraft& ClassCheck::addAtTypeValue(std::string_view code, std::string_view part, std::string message) {
    auto& draft = run_.add(code, outline_.applicableTypeValue, std::move(message));
    draft.finding.place.position = typeValue().positionOf(part);
    return draft;
}

PlacedText& ClassCheck::typeValue() {
    if (!typeValue_)
        typeValue_.emplace(run_.xml.textOf(run_.xml.getElement(outline_.applicableTypeValue)));
    return *typeValue_;
}

void ClassCheck::vTypeValueCheck() {
    if (outline_.applicableTypeValue == NoXmlElement || outline_.classes.empty() || boHasLostClass())
        return;
    // Each value is compared with each class; more of both than real sets have are not.
    constexpr std::size_t maxComparisons = 10'000;
    const auto text = run_.xml.getElement(outline_.applicableTypeValue).trimmedText;
    const auto values = typeValueOf(text);
    if (values.empty())
        return vOtherTypeValueCheck(text);
    if (values.size() * outline_.classes.size() > maxComparisons)
        return;
    bool isRight = true;
    for (const auto& value : values) {
        const bool isClass = pEntityOf(value.name) || sUpperCase(value.name).starts_with("IFC");
        if (boIsAfterDomain(value))
            return vTodayTypeValueAdd(value.text, value.predefinedType);
        if (!isClass)
            continue;
        if (!boMatchesAClass({value.name, {}}))
            return vContradictionAdd(value);
        if (boIsMistyped(value))
            isRight = false;
        else if (!boMatchesAClass(value))
            return vContradictionAdd(value);
    }
    // What is wrong is not to be written in another spelling.
    if (isRight)
        vOlderTypeValueCheck(values);
}

void ClassCheck::vContradictionAdd(const ClassText& value) {
    std::string shown(value.name);
    if (!value.predefinedType.empty())
        shown.append("/").append(value.predefinedType);
    std::vector<std::string_view> classes;
    for (const auto& item : outline_.classes)
        classes.push_back(trimmed(item.text));
    auto& draft =
        addAtTypeValue("C013", value.text,
                       "the applicable type value " + sQuoted(shown) + " contradicts the applicable classes")
            .vNoteAt("the classes are " + sQuotedList(classes),
                     run_.xml.positionOf(run_.xml.getElement(outline_.applicableClasses)))
            .vSubject(outline_.setSubject().append(" ").append(cut(shown, maxSubjectSize)));
    if (!pEntityOf(value.name))
        names_.vNearestNote(draft, value.name, SchemaNames::Entities);
}

/// Whether the schema has the class or the predefined type of an applicable type value not as it is written,
/// which is said unless it is a mistake of the applicable classes already.
bool ClassCheck::boIsMistyped(const ClassText& value) {
    const auto* entity = pEntityOf(value.name);
    if (!entity)
        return false;
    const bool isOtherCase = entity->getName() != value.name;
    if (isOtherCase && !boIsAmongClasses(value.name))
        vTypeValueMend(
            addAtTypeValue("C003", value.name, sOtherCase(value.name, *entity)).vSeverity(Severity::Warning),
            value.name, entity->getName());
    if (value.predefinedType.empty() || boIsPredefinedType(*entity, value.predefinedType))
        return isOtherCase;
    if (!boIsMistypedClass(value, *entity))
        vIllegalTypeValueAdd(value.predefinedType, *entity);
    return true;
}

/// Whether a class is written in just this way.
bool ClassCheck::boIsAmongClasses(std::string_view name) const {
    return std::ranges::any_of(outline_.classes,
                               [&](const auto& item) { return trimmed(item.name) == name; });
}

/// Whether a class has the same predefined type by the same mistake, or is given one as well where there are
/// none.
bool ClassCheck::boIsMistypedClass(const ClassText& value, const schema::Entity& entity) {
    const bool hasTypes = predefinedTypes_.pItems(entity) != nullptr;
    return std::ranges::any_of(mistyped_, [&](const ClassOutline* item) {
        return isEqualIgnoringCase(trimmed(item->predefinedType), value.predefinedType) ||
               (!hasTypes && isEqualIgnoringCase(trimmed(item->name), value.name));
    });
}

/// Nothing is looked up by the type value, so that less is lost than by a class.
void ClassCheck::vIllegalTypeValueAdd(std::string_view type, const schema::Entity& entity) {
    const auto* legal = predefinedTypes_.pItems(entity);
    if (!legal) {
        addAtTypeValue("C009", type, sNoTypes(type, entity)).vSeverity(Severity::Warning);
        return;
    }
    auto& draft = addAtTypeValue("C008", type, sIllegal(type, entity)).vSeverity(Severity::Warning);
    const auto nearest = legalTypesNoted(draft, type, entity, *legal);
    if (!nearest.empty() && isEqualIgnoringCase(nearest, type))
        vTypeValueMend(draft, type, nearest);
}

/// Offers to write a part of the applicable type value in another letter case.
void ClassCheck::vTypeValueMend(FindingDraft& draft, std::string_view part, std::string_view mended) {
    const auto& text = typeValue().getText();
    ByteRange bytes;
    if (text.bytes.isKnown() && text.bytes.length == text.value.size())
        bytes = {text.bytes.offset + static_cast<std::size_t>(part.data() - text.value.data()), part.size()};
    draft.vEdit(bytes, mended);
}

/// Whether a class of the set is written after its part of the schema.
bool ClassCheck::boIsAfterDomain(const ClassText& value) const {
    return isDomainName(value.name) && !pEntityOf(value.name) && pEntityOf(value.predefinedType) &&
           boMatchesAClass({value.predefinedType, {}});
}

void ClassCheck::vTodayTypeValueAdd(std::string_view part, std::string_view today) {
    addAtTypeValue("C014", part, "the applicable type value is not written as readers expect it")
        .vNote("today it is written " + sQuoted(today));
}

/// One class of a type value, with any mark between it and its predefined type; empty when it is no class.
std::string ClassCheck::sTodayOf(std::string_view part) {
    const auto mark = std::min(part.find_first_of(ClassMarks), part.size());
    const auto text = classTextOf(part);
    const auto* entity = pEntityOf(text ? text->name : trimmed(part.substr(0, mark)));
    if (!entity)
        return {};
    std::string today(entity->getName());
    const auto rest =
        text ? text->predefinedType
             : trimmed(part.substr(std::min(part.find_first_not_of(ClassMarks, mark), part.size())));
    if (text && rest.empty())
        return today;
    // It may be another attribute of the class.
    if (!boIsPredefinedType(*entity, rest))
        return {};
    today.append("/").append(rest);
    const auto whole = classTextOf(today);
    return whole && !whole->predefinedType.empty() ? today : std::string();
}

/// Other marks than those of today. Of anything else nothing is known: it may be a text in words.
void ClassCheck::vOtherTypeValueCheck(std::string_view text) {
    constexpr std::string_view Separators = "|,;";
    if (lookAlikeIn(text) && !typeValueOf(sAsciiOf(text)).empty()) {
        addAtTypeValue("C013", text, "the applicable type value " + sQuoted(text) + " names no class")
            .vNote("did you mean " + sQuoted(sAsciiOf(text)) + "?");
        return;
    }
    std::string today;
    for (auto rest = text; !rest.empty();) {
        const auto end = std::min(rest.find_first_of(Separators), rest.size());
        const auto part = sTodayOf(trimmed(rest.substr(0, end)));
        if (part.empty())
            return;
        today.append(today.empty() ? "" : ",").append(part);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (!today.empty())
        vTodayTypeValueAdd(text, today);
}

/// Documents of IFC 2x3 have that spelling by right.
void ClassCheck::vOlderTypeValueCheck(const std::vector<ClassText>& values) {
    const auto* version = outline_.ifcVersion == NoXmlElement
                              ? nullptr
                              : run_.xml.pAttribute(run_.xml.getElement(outline_.ifcVersion), "version");
    const auto* release = version ? pSchemaReleaseFind(trimmed(version->value)) : nullptr;
    if (release && release->family == "IFC2X3")
        return;
    for (const auto& value : values) {
        if (value.spelling != ClassSpelling::WithAttribute)
            continue;
        std::string today(value.name);
        today.append("/").append(value.predefinedType);
        addAtTypeValue("C014", value.text,
                       "the applicable type value is in the older spelling Class.PredefinedType=\"X\"")
            .vNote("today it is written " + sQuoted(today));
        return;
    }
}

} // namespace

void vClassesCheck(RuleRun& run) {
    ClassCheck(run).vRun();
}

} // namespace kiv::kit
