// GUIDs: a text is refused and changes nothing, or it is read and both ways of writing it read back equal.
#include "FuzzTarget.h"

#include "kiv/Host/Id/KivId.h"

namespace {

void vReadsBack(const kiv::Guid& guid, bool braced) {
    kiv::Guid again;
    kiv::fuzz::vLaw(again.boSet(guid.toString(braced)) && again == guid, "what is written reads back equal");
}

} // namespace

void kiv::fuzz::vRun(std::string_view input) {
    const kiv::Guid before(1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11});
    auto guid = before;
    if (!guid.boSet(input)) {
        vLaw(guid == before, "a text that is refused changes nothing");
        return;
    }
    vReadsBack(guid, false);
    vReadsBack(guid, true);
    vLaw((guid <=> before == 0) == (guid == before), "order and equality agree");
}
