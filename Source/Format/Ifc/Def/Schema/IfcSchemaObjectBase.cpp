#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include "Base/NameHash.h"
#include "Base/Size32.h"
#include "Base/UpperCase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>

namespace kiv::ifc::def::schema {

ObjectBase::ObjectBase(ObjectBase::Type kind) : kind_(static_cast<std::uint8_t>(kind)) {}

ObjectBase::ObjectBase(ObjectBase::Type kind, ReadLineHelper& line, std::size_t namePos,
                       std::size_t& nameEnd) :
    ObjectBase(kind) {
    const std::string_view text = line.getLine();
    const auto start = std::min(text.find_first_not_of(' ', namePos), text.size());
    nameEnd = text.find(' ', start);
    if (nameEnd == std::string_view::npos)
        nameEnd = text.find(';', start);
    auto& arena = line.getArena();
    vNameSet(line.getKept(text.substr(start, nameEnd == std::string_view::npos ? nameEnd : nameEnd - start)),
             arena);
}

ObjectBase::~ObjectBase() = default;

void ObjectBase::vUpdate(Schema&) {}

void ObjectBase::vNameSet(std::string_view name, Arena& arena) {
    nameSize_ = size32(name.size());
    name_ = name.data();
    nameUpper_ = upperIn(arena, name).data();
}

std::uint32_t ObjectBase::getNameHash() const {
    return nameHash(getName());
}

std::uint32_t ObjectBase::getNameUpperHash() const {
    return nameHash(getNameUpper());
}

ObjectName::ObjectName(const Entity& entity) : upperName_(entity.getNameUpper()) {}

ObjectName::ObjectName(std::string_view upperName) : upperName_(upperName) {}

std::uint32_t ObjectName::getHash() const {
    return nameHash(upperName_);
}

} // namespace kiv::ifc::def::schema
