#include "kivifc/Site/EnumeratedItems.h"

#include <unordered_map>
#include <unordered_set>

namespace kiv::kivifc::site {

namespace pset = ifc::def::pset;

std::vector<EnumeratedItem> enumeratedItems(const pset::TypePropertyEnumeratedValue& type) {
    std::unordered_map<std::string_view, const pset::ConstantDef*> constants;
    for (const auto& constant : type.getConstants())
        constants.try_emplace(constant.getName(), &constant);
    std::vector<EnumeratedItem> items;
    std::unordered_set<const pset::ConstantDef*> used;
    for (const auto& name : type.getItems()) {
        const auto found = constants.find(name);
        const bool isFirst = found != constants.end() && used.insert(found->second).second;
        items.push_back({name, isFirst ? found->second : nullptr});
    }
    for (const auto& constant : type.getConstants()) {
        if (!used.contains(&constant))
            items.push_back({constant.getName(), &constant});
    }
    return items;
}

} // namespace kiv::kivifc::site
