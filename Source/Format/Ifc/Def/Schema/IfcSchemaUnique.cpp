#include "Format/Ifc/Def/Schema/IfcSchemaUnique.h"

#include "Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"
#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

namespace kiv::ifc::def::schema {

void Unique::vUniqueAdd(const Entity&, std::string&& label, ReadLineHelper& line, std::size_t pos) {
    auto names = sListFromStringCommaSep(line.getLine(), pos);
    // The split keeps blanks behind an item; a name has none.
    for (auto& name : names)
        name = std::string(trimmed(name, BlankAndTab));
    rules_.push_back({std::move(label), std::move(names)});
}

} // namespace kiv::ifc::def::schema
