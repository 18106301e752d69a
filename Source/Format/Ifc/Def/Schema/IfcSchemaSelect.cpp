#include "kiv/Format/Ifc/Def/Schema/IfcSchemaSelect.h"

#include "Base/Metered.h"
#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "Format/Ifc/Def/Schema/IfcSchemaBuilder.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaType.h"

#include <unordered_set>

namespace kiv::ifc::def::schema {

DataTypeSelect::DataTypeSelect(std::string_view) {}

DataTypeSelect::DataTypeSelect(ReadLineHelper& line, std::size_t pos, std::istream& stream) :
    memberNames_(line.getNamesKept(pos, stream)) {}

DataTypeSelect::~DataTypeSelect() = default;

void DataTypeSelect::vUpdate(Schema& schema) {
    auto* const meter = SchemaBuilder::of(schema).pMeter(schema); // throws when the schema is built
    allEntities_ = true;
    vRoomFor(members_, memberNames_.size(), meter);
    for (const auto& name : memberNames_) {
        vLook(meter);
        const auto* const member = schema.pObjectFromName(name);
        if (!member) {
            SchemaBuilder::vReport(schema, Report::SelectMemberNotFound);
            continue;
        }
        members_.push_back(member);
        allEntities_ = allEntities_ && member->getKind() == ObjectBase::Type::Entity;
    }
    // A text may name any number of objects that are not there.
    if (members_.size() < memberNames_.size() / 2)
        vRoomTrim(members_, meter);
}

bool DataTypeSelect::isConstructed() const {
    return true;
}

/// The object that is asked about, and for each member whether it is that or a subtype of it.
class DataTypeSelect::Candidate {
public:
    explicit Candidate(const ObjectBase& object) : object_(object), entity_(Entity::pFrom(&object)) {}

    bool boIsOrIsBelow(const ObjectBase& member) {
        if (&member == &object_)
            return true;
        const auto* const memberEntity = entity_ ? Entity::pFrom(&member) : nullptr;
        if (!memberEntity)
            return false;
        if (++asked_ <= WalksMax)
            return entity_->isSameOrSubtypeOf(*memberEntity);
        if (line_.empty())
            vLineKeep();
        return line_.contains(memberEntity);
    }

private:
    void vLineKeep() {
        for (const auto* above = entity_; above; above = above->pSupertype())
            line_.insert(above);
    }

    // A walk along the supertypes for each member costs least for as many as people write, but thousands
    // times thousands for somebody who wants that.
    static constexpr std::size_t WalksMax = 64;

    const ObjectBase& object_;
    const Entity* entity_;
    std::size_t asked_ = 0;
    std::unordered_set<const Entity*> line_;
};

bool DataTypeSelect::isCompatible(const ObjectBase& object) const {
    Candidate candidate(object);
    std::vector<const DataTypeSelect*> nested;
    if (boMemberMatches(candidate, nested))
        return true;
    if (nested.empty())
        return false;
    // Each select is looked through once: they may name each other in circles, and reach one another on many
    // ways.
    std::unordered_set<const DataTypeSelect*> seen{this};
    while (!nested.empty()) {
        const auto* const select = nested.back();
        nested.pop_back();
        if (seen.insert(select).second && select->boMemberMatches(candidate, nested))
            return true;
    }
    return false;
}

/// True when a member is the object or one of its supertypes; the selects among the members are appended to
/// `nested`.
bool DataTypeSelect::boMemberMatches(Candidate& candidate, std::vector<const DataTypeSelect*>& nested) const {
    for (const auto* const member : members_) {
        if (candidate.boIsOrIsBelow(*member))
            return true;
        const auto* const type = schema::Type::pFrom(member);
        const bool isSelect =
            type && type->pDataType() && type->pDataType()->getDataTypeKind() == DataTypeKind::Select;
        if (isSelect)
            nested.push_back(static_cast<const DataTypeSelect*>(type->pDataType()));
    }
    return false;
}

} // namespace kiv::ifc::def::schema
