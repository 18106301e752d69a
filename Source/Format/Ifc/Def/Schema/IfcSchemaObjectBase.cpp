#include "kiv/Format/Ifc/Def/Schema/IfcSchemaObjectBase.h"

#include "Base/NameHash.h"
#include "Base/UpperCase.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>

namespace kiv::ifc::def::schema {

ObjectBase::ObjectBase(ObjectBase::Type kind) :
    kind_(kind), nameHash_(nameHash({})), nameUpperHash_(nameHash_) {}

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
    name_ = name;
    nameUpper_ = upperIn(arena, name);
    const auto hashes = nameHashes(name_, nameUpper_);
    nameHash_ = hashes[0];
    nameUpperHash_ = hashes[1];
}

ObjectName::ObjectName(const Entity& entity) :
    upperName_(entity.getNameUpper()), hash_(entity.getNameUpperHash()) {}

ObjectName::ObjectName(std::string_view upperName) : upperName_(upperName), hash_(nameHash(upperName)) {}

} // namespace kiv::ifc::def::schema
