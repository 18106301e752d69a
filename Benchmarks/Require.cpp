#include "Require.h"

#include <cstdlib>
#include <iostream>

namespace kiv::bench {

void vRequire(bool holds, std::string_view what) {
    if (holds)
        return;
    std::cerr << what << '\n';
    std::exit(2);
}

} // namespace kiv::bench
