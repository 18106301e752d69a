#include "Base/Size32.h"

#include <stdexcept>

namespace kiv {

void vSizeRefuse() {
    throw std::length_error("a text or a list of 4 GiB or more");
}

} // namespace kiv
