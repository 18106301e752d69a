#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"

#include "Base/Arena.h"
#include "Base/Ascii.h"
#include "Base/Metered.h"
#include "Base/ScratchList.h"
#include "Base/Size32.h"
#include "Base/UpperCase.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <cstddef>
#include <istream>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace kiv::ifc::def::schema {

namespace {

constexpr std::string_view EntityKeyword = "ENTITY";
constexpr auto npos = std::string_view::npos;

/// Most entities declare no more attributes.
constexpr std::size_t FewAttributes = 8;

/// The entity of this name, to be changed; null when there is none.
Entity* pEntity(Schema& schema, std::string_view name) {
    auto* const found = SchemaBuilder::pObject(schema, name);
    return Entity::pFrom(found) ? static_cast<Entity*>(found) : nullptr;
}

std::size_t supertypeCount(const Entity& entity) {
    std::size_t count = 0;
    for (const auto* above = entity.pSupertype(); above; above = above->pSupertype())
        ++count;
    return count;
}

const Entity* pAncestor(const Entity* entity, std::size_t levels) {
    for (; levels > 0; --levels)
        entity = entity->pSupertype();
    return entity;
}

} // namespace

/// Reads one declaration, clause by clause. Each line is offered to the clauses in a fixed order; searches
/// are by substring, and most look at the whole line, so that one line may serve several clauses.
class Entity::Reader {
public:
    Reader(Entity& entity, Schema& schema, ReadLineHelper& line, std::istream& stream) :
        entity_(entity), schema_(schema), line_(line), stream_(stream) {}

    void vRead() {
        vLinesRead();
        const auto attributes = attributes_.movedTo(line_.getArena());
        entity_.attributes_ = attributes.data();
        entity_.attributesCount_ = size32(attributes.size());
        if (attributesInverse_.empty())
            return;
        const auto inverse = attributesInverse_.movedTo(line_.getArena());
        auto& clauses = entity_.clauses(line_.pMeter());
        clauses.inverseCount = size32(inverse.size());
        clauses.inverse = inverse.data();
    }

private:
    enum class Clause { NotSeen, Open, Closed };
    static constexpr Keyword Colon{" : ", 1};

    void vLinesRead() {
        while (line_.boNextLine(stream_)) {
            if (line_.getLine().empty())
                continue;
            vLineRead();
            if (ended_)
                return;
        }
    }

    void vLineRead() {
        // The clauses of the header move this position along the line; all others look at the whole line.
        std::size_t pos = 0;
        // Most declarations end in a line like this, which can be nothing else then.
        if (subtype_ != Clause::Open && line_.getLine() == "END_ENTITY;") {
            ended_ = true;
            return;
        }
        vAbstractRead(pos);
        vSupertypeRead(pos);
        if (!boSubtypeRead(pos))
            return;
        colon_ = Colon.findIn(line_.getLine());
        if (boAttributeRead())
            return;
        vInverseRead();
        vUniqueRead();
        vDeriveRead();
        vWhereRead();
        ended_ = Keyword("END_ENTITY", 3).isIn(line_.getLine());
    }

    /// ABSTRACT counts on the first line after the header only.
    void vAbstractRead(std::size_t& pos) {
        constexpr Keyword word("ABSTRACT", 1);
        if (!first_)
            return;
        first_ = false;
        const auto found = word.findIn(line_.getLine());
        if (found == npos)
            return;
        entity_.abstract_ = true;
        pos = found + word.size();
    }

    /// The list of names ends at a ')', possibly lines further down; there the clause ends too.
    void vSupertypeRead(std::size_t& pos) {
        constexpr Keyword words("SUPERTYPE OF (ONEOF", 13);
        if (supertypeSeen_)
            return;
        const auto found = words.findIn(line_.getLine(), pos);
        if (found == npos)
            return;
        supertypeSeen_ = true;
        pos = found + words.size();
        const auto names = line_.getNamesKept(pos, stream_);
        if (names.empty())
            return;
        entity_.tree_ = line_.getArena().pMake<Tree>();
        entity_.tree_->nameCount = size32(names.size());
        entity_.tree_->names = names.data();
    }

    /// False when the rest of the line is to be ignored.
    bool boSubtypeRead(std::size_t pos) {
        constexpr Keyword words("SUBTYPE OF ", 2);
        const auto text = line_.getLine();
        if (subtype_ == Clause::NotSeen) {
            const auto found = words.findIn(text, pos);
            if (found != npos) {
                subtype_ = Clause::Open;
                pos = found + words.size();
            }
        }
        if (subtype_ != Clause::Open)
            return true;
        const auto paren = text.find('(', pos);
        if (paren == npos)
            return false;
        const auto rest = text.substr(paren + 1);
        const auto name = line_.getKept(rest.substr(0, rest.find(");")));
        entity_.supertypeName_ = name.data();
        entity_.supertypeNameSize_ = size32(name.size());
        subtype_ = Clause::Closed;
        return true;
    }

    /// True when the line was an explicit attribute, which takes the whole line.
    bool boAttributeRead() {
        if (clauseBegun_ || colon_ == npos)
            return false;
        vObjectTake(line_.pMeter());
        const auto& attribute = attributes_.add(entity_, line_, nameBeforeColon(), textAfterColon());
        entity_.attributeBits_ |= AttributeName(attribute).getBit();
        return true;
    }

    void vInverseRead() {
        if (!boEntryExpected(inverse_, Keyword("INVERSE", 2)))
            return;
        constexpr std::string_view forWord = " FOR ";
        const auto text = line_.getLine();
        const auto typePos = colon_ + Colon.size();
        const auto forPos = text.find(forWord, typePos);
        if (forPos == npos)
            return;
        vObjectTake(line_.pMeter());
        const auto referred = text.substr(forPos + forWord.size());
        attributesInverse_.add(entity_, line_, nameBeforeColon(), text.substr(typePos, forPos - typePos),
                               referred.substr(0, referred.find(';')));
    }

    void vUniqueRead() {
        const bool entry = boEntryExpected(unique_, Keyword("UNIQUE", 3));
        if (unique_ != Clause::NotSeen && !entity_.pUnique()) {
            vMemoryTake(line_.pMeter(), sizeof(Unique));
            entity_.clauses(line_.pMeter()).unique = std::make_unique<Unique>();
        }
        if (entry)
            entity_.clauses_->unique->vUniqueAdd(entity_, std::string(labelBeforeColon()), line_,
                                                 colon_ + Colon.size());
    }

    /// Unlike the others, this clause takes nothing from the line that opens it.
    void vDeriveRead() {
        if (boOpens(derive_, Keyword("DERIVE", 4))) {
            vMemoryTake(line_.pMeter(), sizeof(Derive));
            entity_.clauses(line_.pMeter()).derive = std::make_unique<Derive>();
            return;
        }
        if (!boEntryOrClose(derive_))
            return;
        vStatementJoin();
        entity_.clauses_->derive->vDeriveAdd(line_.getKept(labelBeforeColon()),
                                             line_.getKept(textAfterColon()), line_.pMeter());
    }

    /// Appends the following lines to the current one until it holds a ';'.
    void vStatementJoin() {
        std::size_t searched = 0;
        while (line_.getLine().find(';', searched) == npos) {
            searched = line_.getLine().size();
            if (!line_.boNextLineAppend(stream_))
                return;
        }
    }

    void vWhereRead() {
        constexpr Keyword word("WHERE", 0);
        const auto found = word.findIn(line_.getLine());
        if (found == npos)
            return;
        clauseBegun_ = true;
        entity_.where_ = Where::pRead(entity_.where_, schema_, line_, found + word.size(), stream_);
    }

    /// True when the clause is open and the line can be an entry of it. The line that opens the clause may be
    /// one too, but does not close it.
    bool boEntryExpected(Clause& clause, const Keyword& word) {
        return boOpens(clause, word) ? colon_ != npos : boEntryOrClose(clause);
    }

    /// True when this line opens the clause.
    bool boOpens(Clause& clause, const Keyword& word) {
        if (clause != Clause::NotSeen || !word.isIn(line_.getLine()))
            return false;
        clause = Clause::Open;
        clauseBegun_ = true;
        return true;
    }

    /// True when the open clause has an entry here; a line that cannot be one closes it.
    bool boEntryOrClose(Clause& clause) const {
        if (clause != Clause::Open)
            return false;
        if (colon_ == npos)
            clause = Clause::Closed;
        return colon_ != npos;
    }

    std::string_view nameBeforeColon() const { return ascii::trimmed(textBeforeColon(), BlankAndTab); }
    std::string_view labelBeforeColon() const { return ascii::trimmedLeft(textBeforeColon(), BlankAndTab); }
    std::string_view textBeforeColon() const { return line_.getLine().substr(0, colon_); }
    std::string_view textAfterColon() const { return line_.getLine().substr(colon_ + Colon.size()); }

    Entity& entity_;
    Schema& schema_;
    ReadLineHelper& line_;
    std::istream& stream_;
    ScratchList<Attribute, FewAttributes> attributes_{line_.pMeter()};
    ScratchList<AttributeInverse, FewAttributes> attributesInverse_{line_.pMeter()};
    bool supertypeSeen_ = false;
    Clause subtype_ = Clause::NotSeen;
    Clause inverse_ = Clause::NotSeen;
    Clause unique_ = Clause::NotSeen;
    Clause derive_ = Clause::NotSeen;
    // INVERSE, UNIQUE, DERIVE or WHERE was met: no explicit attributes follow.
    bool clauseBegun_ = false;
    bool first_ = true;
    bool ended_ = false;
    // The position of " : " in the current line.
    std::size_t colon_ = npos;
};

Entity::Entity(Schema& schema, ReadLineHelper& line, std::size_t keywordPos, std::istream& stream) :
    Entity(line, keywordPos + EntityKeyword.size(), std::size_t{}) {
    Reader(*this, schema, line, stream).vRead();
}

Entity::Entity(ReadLineHelper& line, std::size_t namePos, std::size_t nameEnd) :
    ObjectBase(ObjectBase::Type::Entity, line, namePos, nameEnd), nameHash_(ObjectBase::getNameHash()) {}

Entity::~Entity() = default;

Entity::Clauses& Entity::clauses(WorkMeter* meter) {
    if (!clauses_) {
        vMemoryTake(meter, sizeof(Clauses));
        clauses_ = std::make_unique<Clauses>();
    }
    return *clauses_;
}

const Entity* Entity::pFrom(const ObjectBase* object) {
    const bool is = object && object->getKind() == ObjectBase::Type::Entity;
    return is ? static_cast<const Entity*>(object) : nullptr;
}

void Entity::vUpdate(Schema& schema) {
    vSupertypeResolve(schema);
    vSubtypesResolve(schema);
    for (auto& attribute : std::span(attributes_, attributesCount_)) {
        vLook(SchemaBuilder::pMeter(schema));
        attribute.vUpdate(schema);
        SchemaBuilder::of(schema).vAttributeAdd(attribute);
    }
    if (clauses_ && clauses_->derive && clauses_->derive->boRedeclares()) {
        vLineResolve(schema);
        clauses_->derive->vUpdate(*this, schema);
    }
    if (where_)
        where_->parseRules(schema);
}

/// Resolves the supertypes of all entities above, ahead of their turn: entities are resolved in the order of
/// their hashes, and a redeclared attribute may be declared anywhere above. Each entity is passed once, by
/// whichever comes first.
void Entity::vLineResolve(Schema& schema) {
    for (auto* entity = this; entity && !entity->lineResolved_; entity = entity->supertype_) {
        vLook(SchemaBuilder::pMeter(schema));
        entity->vSupertypeResolve(schema);
        entity->lineResolved_ = true;
    }
}

void Entity::vSupertypeResolve(Schema& schema) {
    if (supertypeNameSize_ == 0 || supertypeSearched_)
        return;
    supertypeSearched_ = true;
    auto* const entity = pEntity(schema, getSupertypeName());
    // An entity above itself would have no root, and walks along supertypes no end.
    if (!entity || entity->getTopmost(SchemaBuilder::pMeter(schema)) == this) {
        SchemaBuilder::vReport(schema, Report::SupertypeNotFound);
        return;
    }
    supertype_ = entity;
    towardsTop_ = entity;
}

Entity* Entity::getTopmost(WorkMeter* meter) {
    auto* top = this;
    for (; top->towardsTop_; top = top->towardsTop_)
        vLook(meter);
    for (auto* entity = this; entity != top;)
        entity = std::exchange(entity->towardsTop_, top);
    return top;
}

void Entity::vSubtypesResolve(Schema& schema) {
    if (!tree_)
        return;
    auto** const subtypes = SchemaBuilder::arenaOf(schema).pMakeArray<Entity*>(tree_->nameCount);
    std::uint32_t count = 0;
    for (const auto& name : getSupertypeOfNames()) {
        vLook(SchemaBuilder::pMeter(schema));
        if (auto* const subtype = pEntity(schema, name))
            subtypes[count++] = subtype;
        else
            SchemaBuilder::vReport(schema, Report::SubtypeNotFound);
    }
    tree_->subtypes = subtypes;
    tree_->subtypeCount = count;
}

void Entity::vUpdateInverse(Schema& schema) {
    if (!clauses_)
        return;
    for (auto& attribute : std::span(clauses_->inverse, clauses_->inverseCount)) {
        vLook(SchemaBuilder::pMeter(schema));
        attribute.vUpdate(schema);
    }
}

const Attribute* Entity::pAttributeFromName(const AttributeName& key, bool withSupertypes) const {
    const auto bit = key.getBit();
    for (const auto* entity = this; entity; entity = withSupertypes ? entity->supertype_ : nullptr) {
        if ((entity->attributeBits_ & bit) == 0)
            continue;
        for (const auto& attribute : entity->getAttributes()) {
            if (key.boMatches(attribute))
                return &attribute;
        }
    }
    return nullptr;
}

const Attribute* Entity::pAttributeFromNameUpper(const std::string& upperName, bool withSupertypes) const {
    for (const auto* entity = this; entity; entity = withSupertypes ? entity->supertype_ : nullptr) {
        for (const auto& attribute : entity->getAttributes()) {
            if (attribute.getNameUpper() == upperName)
                return &attribute;
        }
    }
    return nullptr;
}

const AttributeInverse* Entity::pAttributeInverseFromName(const std::string& name,
                                                          bool withSupertypes) const {
    return pAttributeInverseFromNameUpper(sUpper(name), withSupertypes);
}

const AttributeInverse* Entity::pAttributeInverseFromNameUpper(const std::string& upperName,
                                                               bool withSupertypes) const {
    for (const auto* entity = this; entity; entity = withSupertypes ? entity->supertype_ : nullptr) {
        for (const auto& attribute : entity->getAttributesInverse()) {
            if (attribute.getNameUpper() == upperName)
                return &attribute;
        }
    }
    return nullptr;
}

bool Entity::isSameOrSubtypeOf(const Entity& other) const {
    const auto* entity = this;
    while (entity && entity != &other)
        entity = entity->supertype_;
    return entity != nullptr;
}

const Entity* Entity::pCommonBaseGet(const Entity& a, const Entity& b) {
    const auto countA = supertypeCount(a);
    const auto countB = supertypeCount(b);
    const auto* first = pAncestor(&a, countA > countB ? countA - countB : 0);
    const auto* second = pAncestor(&b, countB > countA ? countB - countA : 0);
    while (first != second) {
        first = first->pSupertype();
        second = second->pSupertype();
    }
    return first;
}

} // namespace kiv::ifc::def::schema
