#include "kiv/Format/Ifc/Def/Schema/IfcSchemaUnique.h"

#include "Base/Ascii.h"
#include "Base/Metered.h"
#include "Format/Ifc/Def/Schema/IfcSchemaKeyword.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

/// About what is held at most while a list is split: the list that has outgrown its room and its new room,
/// the names that have memory of their own, and the copy of the text.
std::size_t splitMemory(std::string_view text) {
    const auto count = static_cast<std::size_t>(std::count(text.begin(), text.end(), ',')) + 1;
    const auto room = std::bit_ceil(count);
    const bool areLong = text.size() / count > std::string().capacity();
    return (room + room / 2) * sizeof(std::string) + text.size() + (areLong ? text.size() : 0);
}

} // namespace

void Unique::vUniqueAdd(const Entity&, std::string&& label, ReadLineHelper& line, std::size_t pos) {
    // What follows the ';' is no part of the rule.
    const auto end = std::min(line.getLine().find(';', pos), line.getLine().size());
    const auto text = line.getLine().substr(0, end + 1);
    auto* const meter = line.pMeter();
    MeteredScope splitting(meter);
    if (meter)
        splitting.vTake(splitMemory(text));
    auto names = sListFromStringCommaSep(std::string(text), pos);
    // The split keeps blanks after an item; a name has none.
    for (auto& name : names)
        name = std::string(ascii::trimmed(name, BlankAndTab));
    splitting.vGiveBack();
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
