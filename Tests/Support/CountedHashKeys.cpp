#include "Base/HashKeys.h"

namespace kiv {

/// In place of keys that are drawn once per process: with these a table has the same collisions in every run,
/// so that a test which asks for one name ten thousand times counts the same work each time.
const HashKeys& hashKeys() {
    static constexpr HashKeys keys{0x9e3779b97f4a7c15, 0xbf58476d1ce4e5b9, 0x94d049bb133111eb,
                                   0xd6e8feb86659fd93, 0xff51afd7ed558ccd, 0xc4ceb9fe1a85ec53};
    return keys;
}

} // namespace kiv
