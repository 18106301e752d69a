/// @file
/// Memory that is handed out piece by piece and freed all at once: for models that are built once and then
/// only read.
///
///     Arena arena;
///     const std::string_view name = arena.getCopy(line.substr(7, 10));
///     auto* const record = arena.pMake<Record>(name);
///     ArenaVector<std::string_view> names(arena);
///
/// Ownership: owns all that it hands out; nothing of it is given back before the arena is destroyed. What a
///            container outgrows stays too: reserve, where the size is known.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what was handed out before stays as it is.
#pragma once

#include "kiv/Base/WorkMeter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace kiv {

/// Destroys an object whose memory is an arena's.
struct ArenaDelete {
    template <typename Object>
    void operator()(Object* object) const noexcept {
        std::destroy_at(object);
    }
};

/// Owns an object in an arena, which must outlive it.
template <typename Object>
using ArenaPtr = std::unique_ptr<Object, ArenaDelete>;

class Arena {
public:
    /// Block sizes are in bytes. The first block is allocated with the first piece; each further one is twice
    /// as large, up to the limit. At most one block's worth stays unused in the end.
    explicit Arena(std::size_t firstBlockSize = 8192, std::size_t largestBlockSize = std::size_t{1} << 16) :
        nextBlockSize_(firstBlockSize), largestBlockSize_(largestBlockSize) {}
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// A record; its destructor never runs.
    template <typename Record, typename... Arguments>
    Record* pMake(Arguments&&... arguments) {
        static_assert(std::is_trivially_destructible_v<Record>);
        return std::construct_at(static_cast<Record*>(pAllocateFor<Record>(1)),
                                 std::forward<Arguments>(arguments)...);
    }

    /// An object, which is destroyed with what comes back.
    template <typename Object, typename... Arguments>
    ArenaPtr<Object> pMakeOwned(Arguments&&... arguments) {
        return ArenaPtr<Object>(std::construct_at(static_cast<Object*>(pAllocateFor<Object>(1)),
                                                  std::forward<Arguments>(arguments)...));
    }

    /// Room for `count` values, filled with the default value.
    template <typename Value>
    Value* pMakeArray(std::size_t count) {
        static_assert(std::is_trivially_destructible_v<Value>);
        auto* const values = static_cast<Value*>(pAllocateFor<Value>(count));
        std::uninitialized_value_construct_n(values, count);
        return values;
    }

    /// Room for `count` objects, in which nothing is made yet.
    template <typename Object>
    void* pAllocateFor(std::size_t count) {
        static_assert(alignof(Object) <= alignof(std::max_align_t));
        // Pointers are kept too. NOLINTNEXTLINE(bugprone-sizeof-expression)
        return pAllocate(count * sizeof(Object), alignof(Object));
    }

    /// Sets the meter that each block is reported to before it is allocated; null for none. What the meter
    /// throws passes on.
    void vMeterSet(WorkMeter* meter) { meter_ = meter; }

    /// Room for a text. Texts fill a block from its end, so that no padding comes between them and what is
    /// aligned.
    char* pAllocateText(std::size_t size) {
        if (size > getRoom()) [[unlikely]]
            return pAllocateInNewBlock(size);
        return end_ -= size;
    }

    std::string_view getCopy(std::string_view text) {
        char* const place = pAllocate(text.size(), 1);
        text.copy(place, text.size());
        return {place, text.size()};
    }

protected:
    char* pAllocate(std::size_t size, std::size_t alignment) {
        const std::size_t padding = (0 - reinterpret_cast<std::uintptr_t>(at_)) & (alignment - 1);
        if (size + padding > getRoom()) [[unlikely]]
            return pAllocateInNewBlock(size);
        return std::exchange(at_, at_ + padding + size) + padding;
    }

    std::size_t getRoom() const { return static_cast<std::size_t>(end_ - at_); }

    // Where the next piece begins.
    char* at_ = nullptr;

private:
    /// A function of its own, so that the code for all other pieces stays short.
    [[gnu::noinline]] char* pAllocateInNewBlock(std::size_t size) {
        // What is large has a block of its own, so that no large rest of the last block stays empty.
        if (size > nextBlockSize_ / 4)
            return pNewBlock(size);
        at_ = pNewBlock(nextBlockSize_);
        end_ = at_ + nextBlockSize_;
        nextBlockSize_ = std::min(2 * nextBlockSize_, largestBlockSize_);
        return std::exchange(at_, at_ + size);
    }

    char* pNewBlock(std::size_t size) {
        if (meter_)
            meter_->vTake(WorkMeter::Unit::HeldBytes, size);
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(size));
        return blocks_.back().get();
    }

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* end_ = nullptr;
    // Blocks double up to a limit, so that small models stay small, large ones need few blocks, and the
    // unused rest of the last block is small beside a large model.
    std::size_t nextBlockSize_;
    std::size_t largestBlockSize_;
    WorkMeter* meter_ = nullptr;
};

/// Takes the memory of a container from an arena, or from the heap when it is made without one. Does not
/// touch the arena when the container is destroyed, so that this may happen after the arena's own end.
template <typename Value>
class ArenaAllocator {
public:
    using value_type = Value;

    ArenaAllocator() = default;
    /// Null for none.
    // A container takes an arena where it takes an allocator. NOLINTNEXTLINE(google-explicit-constructor)
    ArenaAllocator(Arena* arena) : arena_(arena) {}
    // A container takes an arena where it takes an allocator. NOLINTNEXTLINE(google-explicit-constructor)
    ArenaAllocator(Arena& arena) : arena_(&arena) {}
    template <typename Other>
    // Containers convert allocators to those of their parts. NOLINTNEXTLINE(google-explicit-constructor)
    ArenaAllocator(const ArenaAllocator<Other>& other) : arena_(other.pArena()) {}

    Value* allocate(std::size_t count) {
        return arena_ ? static_cast<Value*>(arena_->pAllocateFor<Value>(count))
                      : std::allocator<Value>().allocate(count);
    }
    void deallocate(Value* values, std::size_t count) {
        if (!arena_)
            std::allocator<Value>().deallocate(values, count);
    }

    Arena* pArena() const { return arena_; }

    friend bool operator==(const ArenaAllocator&, const ArenaAllocator&) = default;

private:
    Arena* arena_ = nullptr;
};

template <typename Value>
using ArenaVector = std::vector<Value, ArenaAllocator<Value>>;

} // namespace kiv
