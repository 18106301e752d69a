#include "kivifc/Site/RowIds.h"

#include <utility>

namespace kiv::kivifc::site {

// No name has an id with "~~" in it, so that none is taken by a number.
RowId RowIds::take(std::string_view name) {
    auto id = sAnchor(name);
    const auto count = ++counts_[id];
    return RowId(count == 1 ? std::move(id) : id + "~~" + std::to_string(count));
}

} // namespace kiv::kivifc::site
