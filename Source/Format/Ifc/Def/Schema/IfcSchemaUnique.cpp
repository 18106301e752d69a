#include "kiv/Format/Ifc/Def/Schema/IfcSchemaUnique.h"

#include "Base/Ascii.h"
#include "Base/Metered.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>
#include <utility>

namespace kiv::ifc::def::schema {

void Unique::vUniqueAdd(const Entity&, std::string&& label, ReadLineHelper& line, std::size_t pos) {
    // What follows the ';' is no part of the rule.
    const auto end = std::min(line.getLine().find(';', pos), line.getLine().size());
    auto names = sListFromStringCommaSep(std::string(line.getLine().substr(0, end + 1)), pos);
    // The split keeps blanks after an item; a name has none.
    for (auto& name : names)
        name = std::string(ascii::trimmed(name, BlankAndTab));
    auto* const meter = line.pMeter();
    vObjectTake(meter);
    if (meter) {
        vMemoryTake(meter, memoryOf(label) + names.capacity() * sizeof(std::string));
        for (const auto& name : names)
            vMemoryTake(meter, memoryOf(name));
    }
    vRoomForOne(rules_, meter);
    rules_.push_back({std::move(label), std::move(names)});
}

} // namespace kiv::ifc::def::schema
