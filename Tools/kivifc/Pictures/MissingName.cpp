#include "kivifc/Pictures/MissingName.h"

#include "kiv/Kit/Names/KnownNames.h"
#include "kiv/Kit/Names/NearestName.h"

#include <fmt/format.h>

namespace kiv::kivifc {

std::string sNoName(std::string_view kind, std::string_view name,
                    const std::vector<std::string_view>& candidates) {
    const auto nearest = kit::nearestName(name, candidates);
    return fmt::format("no {} \"{}\"{}", kind, name,
                       nearest ? fmt::format("; did you mean \"{}\"?", nearest->name) : "");
}

std::string sNoEntity(const ifc::def::schema::Schema& schema, const std::string& name) {
    if (schema.pObjectFromName(name))
        return fmt::format("\"{}\" is no entity", name);
    return sNoName("entity", name, kit::entityNames(schema));
}

} // namespace kiv::kivifc
