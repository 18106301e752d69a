/// @file
/// Sorts what has a hash: into buckets by its highest bits first, then each bucket.
///
///     const auto starts =
///         sortedByHash(entries, [](const Entry& a, const Entry& b) { return a.hash < b.hash; });
///
/// Quicker than a sort by comparisons alone, as most buckets hold one entry or none; and hardly slower when
/// somebody chose the hashes so that all meet in one bucket.
///
/// Ownership: none.
/// Threads:   one at a time for the entries that are being sorted.
/// Errors:    std::bad_alloc; the entries are as they were then.
#pragma once

#include "Base/Metered.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace kiv {

/// Buckets up to this size use insertion sort and linear search; larger ones are of one name that
/// many things have, or of hashes that were chosen to collide.
inline constexpr std::size_t FewInBucket = 16;

/// By how many bits a hash is shifted to give its bucket, one of `bucketCount`, which is a power of two and
/// not 1.
template <class Hash>
unsigned bucketShift(std::size_t bucketCount) {
    return static_cast<unsigned>(8 * sizeof(Hash)) - static_cast<unsigned>(std::countr_zero(bucketCount));
}

/// Sorts a bucket; entries that are equal stay in their order.
template <class Entry, class Less>
void vBucketSort(std::span<Entry> bucket, Less less) {
    if (bucket.size() > FewInBucket) {
        if (!std::is_sorted(bucket.begin(), bucket.end(), less))
            std::stable_sort(bucket.begin(), bucket.end(), less);
        return;
    }
    for (std::size_t index = 1; index < bucket.size(); ++index) {
        const auto entry = bucket[index];
        auto place = index;
        for (; place > 0 && less(entry, bucket[place - 1]); --place)
            bucket[place] = bucket[place - 1];
        bucket[place] = entry;
    }
}

/// Sorts entries, which have a member `hash`, by an order in which smaller hashes come first; entries that
/// are equal stay in their order. What comes back is where each bucket begins, and where the last one ends. A
/// meter hears of the memory, in the end of that of the starts alone, and is asked for each entry and bucket
/// whether to go on.
template <class Entry, class Less>
std::vector<std::uint32_t> sortedByHash(std::vector<Entry>& entries, Less less, WorkMeter* meter = nullptr) {
    const auto bucketCount = std::bit_ceil(std::max<std::size_t>(entries.size(), 2));
    const auto shift = bucketShift<decltype(Entry::hash)>(bucketCount);
    std::vector<std::uint32_t> starts;
    vRoomFor(starts, bucketCount + 1, meter);
    starts.resize(bucketCount + 1);
    for (const auto& entry : entries) {
        ++starts[(entry.hash >> shift) + 1];
        vLook(meter);
    }
    for (std::size_t bucket = 0; bucket < bucketCount; ++bucket)
        starts[bucket + 1] += starts[bucket];
    MeteredScope held(meter);
    held.vTake(entries.size() * sizeof(Entry) + starts.size() * sizeof(std::uint32_t));
    std::vector<Entry> ordered(entries.size());
    auto next = starts;
    for (const auto& entry : entries) {
        ordered[next[entry.hash >> shift]++] = entry;
        vLook(meter);
    }
    entries = std::move(ordered);
    for (std::size_t bucket = 0; bucket < bucketCount; ++bucket) {
        vLook(meter);
        const auto size = starts[bucket + 1] - starts[bucket];
        if (size > 1)
            vBucketSort(std::span(entries).subspan(starts[bucket], size), less);
    }
    return starts;
}

} // namespace kiv
