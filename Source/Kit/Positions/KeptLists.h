/// @file
/// Lists of values that stay where they are, many of them in one piece of memory.
///
///     KeptLists lists;
///     const std::span<const double> kept = lists.list(std::span<const double>(found));
///
/// Private to the kit. A list that is made in a vector, and is used again for the next one, costs no memory
/// of its own.
///
/// Ownership: owns the values; what `list` returns lives as long as it does.
/// Threads:   filled by one thread; any number of threads may read the lists.
/// Errors:    std::bad_alloc.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>
#include <vector>

namespace kiv::kit {

class KeptLists {
public:
    KeptLists() = default;
    KeptLists(const KeptLists&) = delete;
    KeptLists& operator=(const KeptLists&) = delete;

    /// Empty for no values.
    template <class Value>
    std::span<const Value> list(std::span<const Value> values) {
        static_assert(std::is_trivially_copyable_v<Value> && std::is_trivially_destructible_v<Value>);
        static_assert(sizeof(Value) % Alignment == 0 && alignof(Value) <= Alignment);
        if (values.empty())
            return {};
        auto* const place = reinterpret_cast<Value*>(pRoom(values.size_bytes()));
        std::uninitialized_copy(values.begin(), values.end(), place);
        return {place, values.size()};
    }

private:
    static constexpr std::size_t Alignment = alignof(void*);
    static constexpr std::size_t BlockSize = 16'384;

    std::byte* pRoom(std::size_t size) {
        // A long list has a block of its own, so that little is left over at the end of others.
        if (size > BlockSize / 8)
            return blocks_.emplace_back(std::make_unique_for_overwrite<std::byte[]>(size)).get();
        if (left_ < size) {
            next_ = blocks_.emplace_back(std::make_unique_for_overwrite<std::byte[]>(BlockSize)).get();
            left_ = BlockSize;
        }
        left_ -= size;
        auto* const room = next_;
        next_ += size;
        return room;
    }

    std::vector<std::unique_ptr<std::byte[]>> blocks_;
    std::byte* next_ = nullptr;
    std::size_t left_ = 0;
};

} // namespace kiv::kit
