#include "Kit/Positions/XmlPositionsData.h"

#include "kiv/Kit/Text/ByteOrderMark.h"

#include <algorithm>
#include <utility>

namespace kiv::kit {

XmlPositions::Data::Data(std::string&& file, WorkMeter* meter) :
    bytes(std::move(file)), encoding(encodingOf(bytes)) {
    if (encoding == XmlEncoding::Utf8)
        text = bytes;
    else
        vDecode(meter);
    if (text.starts_with(ByteOrderMark)) {
        text.remove_prefix(ByteOrderMark.size());
        offset = ByteOrderMark.size();
    }
    // They are made later, when nobody can be asked.
    vMemoryTake(meter, TextLines::memoryFor(text.size()));
}

void XmlPositions::Data::vDecode(WorkMeter* meter) {
    const auto size = decodedSize(bytes, encoding);
    vMemoryTake(meter, size + 1);
    text = decoded = sDecoded(bytes, encoding);
    vMemoryGiveBack(meter, size + 1 - std::min(memoryOf(decoded), size + 1));
}

} // namespace kiv::kit
