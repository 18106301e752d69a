/// @file
/// Containers whose memory a meter hears of before it is taken. Without a meter a container that takes values
/// one by one grows by itself.
///
///     vRoomForOne(names, meter);
///     names.push_back(name);
///
/// Ownership: none.
/// Threads:   as the meter.
/// Errors:    what the meter throws; the container is as it was then.
#pragma once

#include "kiv/Base/WorkMeter.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kiv {

/// Bytes that are held until the end of a scope, or until they are handed on to somebody else.
class MeteredScope {
public:
    /// Null for no meter.
    explicit MeteredScope(WorkMeter* meter) : meter_(meter) {}
    ~MeteredScope() { vGiveBack(); }
    MeteredScope(const MeteredScope&) = delete;
    MeteredScope& operator=(const MeteredScope&) = delete;

    void vTake(std::size_t bytes) {
        if (!meter_)
            return;
        meter_->vTake(WorkMeter::Unit::HeldBytes, bytes);
        bytes_ += bytes;
    }
    void vGiveBack() noexcept {
        if (meter_)
            meter_->vMemoryGiveBack(bytes_);
        bytes_ = 0;
    }
    /// Exchanges what is held with another scope of the same meter.
    void vSwap(MeteredScope& other) noexcept { std::swap(bytes_, other.bytes_); }

    WorkMeter* pMeter() const { return meter_; }

private:
    WorkMeter* meter_;
    std::size_t bytes_ = 0;
};

inline void vLook(WorkMeter* meter) {
    if (meter) [[unlikely]]
        meter->vLook();
}

/// Notes that many objects of memory of their own.
inline void vMemoryTake(WorkMeter* meter, std::size_t bytes) {
    if (meter) [[unlikely]]
        meter->vTake(WorkMeter::Unit::HeldBytes, bytes);
}

/// Notes one object; a place to stop as well.
inline void vObjectTake(WorkMeter* meter) {
    if (meter) [[unlikely]] {
        meter->vTake(WorkMeter::Unit::Objects, 1);
        meter->vLook();
    }
}

/// Makes room for `count` values in all. Both places are held while the values move.
template <class Vector>
void vRoomFor(Vector& values, std::size_t count, WorkMeter* meter) {
    constexpr auto size =
        sizeof(typename Vector::value_type); // NOLINT(bugprone-sizeof-expression): pointers too
    const auto before = values.capacity();
    if (count <= before)
        return;
    if (meter)
        meter->vTake(WorkMeter::Unit::HeldBytes, count * size);
    values.reserve(count);
    if (meter)
        meter->vMemoryGiveBack(before * size);
}

/// Makes room for one more value, as growing by `push_back` does.
template <class Vector>
void vRoomForOne(Vector& values, WorkMeter* meter) {
    if (meter && values.size() == values.capacity()) [[unlikely]]
        vRoomFor(values, std::max<std::size_t>(2 * values.capacity(), 1), meter);
}

/// Leaves the values no more room than they need. Both places are held while they move. Unlike
/// `shrink_to_fit`, it throws when there is no memory for that.
template <class Vector>
void vRoomTrim(Vector& values, WorkMeter* meter) {
    constexpr auto size =
        sizeof(typename Vector::value_type); // NOLINT(bugprone-sizeof-expression): pointers too
    const auto before = values.capacity();
    if (before == values.size())
        return;
    if (meter)
        meter->vTake(WorkMeter::Unit::HeldBytes, values.size() * size);
    Vector(std::make_move_iterator(values.begin()), std::make_move_iterator(values.end())).swap(values);
    if (meter)
        meter->vMemoryGiveBack(before * size);
}

/// The bytes that a text takes outside of its string; none for a short one.
inline std::size_t memoryOf(const std::string& text) {
    return text.capacity() <= std::string().capacity() ? 0 : text.capacity() + 1;
}

/// Makes room for that many more characters, as appending does.
inline void vRoomForText(std::string& text, std::size_t more, WorkMeter* meter) {
    const auto size = text.size() + more;
    if (!meter || size <= text.capacity())
        return;
    const auto before = memoryOf(text);
    const auto after = std::max(size, 2 * text.capacity());
    meter->vTake(WorkMeter::Unit::HeldBytes, after + 1);
    text.reserve(after);
    meter->vMemoryGiveBack(before);
}

/// Replaces a text; a meter hears of the memory before.
inline void vTextSet(std::string& target, std::string_view text, WorkMeter* meter) {
    if (meter && text.size() > target.capacity()) [[unlikely]] {
        target.clear();
        vRoomForText(target, text.size(), meter);
    }
    target = text;
}

/// Notes a text that is about to be made.
inline void vTextMemoryTake(std::size_t size, WorkMeter* meter) {
    if (size > std::string().capacity())
        vMemoryTake(meter, size + 1);
}

} // namespace kiv
