/// @file
/// A list of what is being read, until its length is known and it moves to where it stays.
///
///     ScratchList<Attribute, 8> attributes(meter);
///     attributes.add(entity, line, name, type);
///     const std::span<Attribute> kept = attributes.movedTo(arena);
///
/// A vector that grows in an arena would leave each room that it outgrows unused there. Up to `Few` values
/// need no memory of their own.
///
/// Ownership: owns its values until they have moved.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc and what the meter throws; the values are as they were then.
#pragma once

#include "Base/Arena.h"
#include "Base/Metered.h"

#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace kiv {

template <typename Value, std::size_t Few>
class ScratchList {
public:
    /// A meter hears of the memory beyond the first few; null for none.
    explicit ScratchList(WorkMeter* meter) : values_(pFew()), memory_(meter) {}
    ~ScratchList() {
        std::destroy_n(values_, size_);
        vRoomFree();
    }
    ScratchList(const ScratchList&) = delete;
    ScratchList& operator=(const ScratchList&) = delete;

    template <typename... Arguments>
    Value& add(Arguments&&... arguments) {
        if (size_ == room_) [[unlikely]]
            vGrow();
        auto* const value = std::construct_at(values_ + size_, std::forward<Arguments>(arguments)...);
        ++size_;
        return *value;
    }

    bool empty() const { return size_ == 0; }
    std::span<Value> getValues() { return {values_, size_}; }

    /// Moves the values into memory of an arena that has room for them and no more. They are never destroyed
    /// there.
    std::span<Value> movedTo(Arena& arena) {
        auto* const place = static_cast<Value*>(arena.pAllocateFor<Value>(size_));
        std::uninitialized_move_n(values_, size_, place);
        return {place, size_};
    }

private:
    [[gnu::noinline]] void vGrow() {
        MeteredScope memory(memory_.pMeter());
        memory.vTake(2 * room_ * sizeof(Value));
        auto* const values = std::allocator<Value>().allocate(2 * room_);
        std::uninitialized_move_n(values_, size_, values);
        std::destroy_n(values_, size_);
        vRoomFree();
        memory_.vSwap(memory);
        values_ = values;
        room_ *= 2;
    }

    void vRoomFree() {
        if (values_ != pFew())
            std::allocator<Value>().deallocate(values_, room_);
    }

    Value* pFew() { return reinterpret_cast<Value*>(few_); }

    Value* values_;
    std::size_t size_ = 0;
    std::size_t room_ = Few;
    // Of what lies outside of this object.
    MeteredScope memory_;
    alignas(Value) std::byte few_[Few * sizeof(Value)];
};

} // namespace kiv
