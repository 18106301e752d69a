/// @file
/// Lists and texts of the kit whose memory a meter hears of before it is taken.
///
///     vRoomForOne(elements, meter);
///     elements.push_back(element);
///
/// Private to the kit, which has the library's public headers alone.
///
/// Ownership: none.
/// Threads:   as the meter.
/// Errors:    what the meter throws; the container is as it was then.
#pragma once

#include "kiv/Base/WorkMeter.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace kiv::kit {

/// Null for no meter.
inline void vMemoryTake(WorkMeter* meter, std::size_t bytes) {
    if (meter)
        meter->vTake(WorkMeter::Unit::HeldBytes, bytes);
}

inline void vMemoryGiveBack(WorkMeter* meter, std::size_t bytes) noexcept {
    if (meter)
        meter->vMemoryGiveBack(bytes);
}

/// Makes room for one more value, as growing by `push_back` does. Both places are held while the values move.
template <class Vector>
void vRoomForOne(Vector& values, WorkMeter* meter) {
    constexpr auto Size = sizeof(typename Vector::value_type);
    if (!meter || values.size() != values.capacity())
        return;
    const auto before = values.capacity();
    const auto after = std::max<std::size_t>(2 * before, 1);
    meter->vTake(WorkMeter::Unit::HeldBytes, after * Size);
    values.reserve(after);
    meter->vMemoryGiveBack(before * Size);
}

/// Makes room for that many values in a list that is empty.
template <class Vector>
void vRoomForAll(Vector& values, std::size_t count, WorkMeter* meter) {
    vMemoryTake(meter, count * sizeof(typename Vector::value_type));
    values.reserve(count);
}

/// The bytes that a text takes outside of its string; none for a short one.
inline std::size_t memoryOf(const std::string& text) {
    return text.capacity() <= std::string().capacity() ? 0 : text.capacity() + 1;
}

/// Makes room for that many characters in all. Both places are held while the text moves.
inline void vRoomForText(std::string& text, std::size_t size, WorkMeter* meter) {
    if (size <= text.capacity())
        return;
    const auto before = memoryOf(text);
    vMemoryTake(meter, size + 1);
    text.reserve(size);
    vMemoryGiveBack(meter, before);
}

/// The same for that many more characters, as appending does.
inline void vRoomForMore(std::string& text, std::size_t more, WorkMeter* meter) {
    const auto size = text.size() + more;
    if (meter && size > text.capacity())
        vRoomForText(text, std::max(size, 2 * text.capacity()), meter);
}

} // namespace kiv::kit
