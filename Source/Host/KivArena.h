/// Memory that is handed out piece by piece and freed all at once: for models that are built once and then only read.
///
///     Arena arena;
///     const std::string_view name = arena.getCopy(line.substr(7, 10));
///     auto* const record = arena.pMake<Record>(name);
///
/// Ownership: owns all that it hands out; nothing of it is given back before the arena is destroyed.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc; what was handed out before stays as it is.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace kiv {

class Arena {
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// A record; its destructor never runs.
    template <typename Record, typename... Arguments>
    Record* pMake(Arguments&&... arguments) {
        static_assert(std::is_trivially_destructible_v<Record>);
        return std::construct_at(static_cast<Record*>(pAllocateFor<Record>(1)),
                                 std::forward<Arguments>(arguments)...);
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

    std::string_view getCopy(std::string_view text) {
        char* const place = pAllocate(text.size(), 1);
        text.copy(place, text.size());
        return {place, text.size()};
    }

protected:
    char* pAllocate(std::size_t size, std::size_t alignment) {
        const std::size_t padding = (0 - reinterpret_cast<std::uintptr_t>(at_)) & (alignment - 1);
        if (size + padding > getRoom())
            return pAllocateInNewBlock(size);
        return std::exchange(at_, at_ + padding + size) + padding;
    }

    std::size_t getRoom() const { return static_cast<std::size_t>(end_ - at_); }

    // Where the next piece begins.
    char* at_ = nullptr;

private:
    /// Blocks double up to this size, so that small models stay small and large ones need few blocks.
    static constexpr std::size_t LargestBlockSize = std::size_t{1} << 20;

    char* pAllocateInNewBlock(std::size_t size) {
        const std::size_t blockSize = std::max(size, nextBlockSize_);
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(blockSize));
        at_ = blocks_.back().get();
        end_ = at_ + blockSize;
        nextBlockSize_ = std::min(2 * nextBlockSize_, LargestBlockSize);
        return std::exchange(at_, at_ + size);
    }

    std::vector<std::unique_ptr<char[]>> blocks_;
    char* end_ = nullptr;
    std::size_t nextBlockSize_ = 8192;
};

} // namespace kiv
