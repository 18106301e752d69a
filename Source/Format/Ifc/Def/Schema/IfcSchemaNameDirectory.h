/// Finds what bears a name, in any letter case: entries in buckets by the hash of their upper-cased names.
///
///     NameDirectory<const ObjectBase> directory;
///     directory.vAdd(wall);
///     directory.vBuild();
///     for (const auto& entry : directory.find("IfcWall")) use(*entry.value);
///
/// Within a bucket the entries are sorted, so that names chosen to meet in one bucket cost the logarithm of their number
/// and not more. Nothing is allocated by a search.
///
/// Ownership: refers to what bears the names, which has getName and getNameUpper.
/// Threads:   one while it is filled and built; then searched from any number of threads.
/// Errors:    what is not there is an empty range.
#pragma once

#include "Format/Ifc/Def/Schema/IfcSchemaText.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv::ifc::def::schema {

template <class Value>
class NameDirectory {
public:
    struct Entry {
        std::uint64_t hash;
        std::string_view upperName;
        Value* value;
    };

    void vReserve(std::size_t count) { entries_.reserve(count); }

    /// Adds an entry under its name.
    void vAdd(Value* value) {
        entries_.push_back({upperHash(value->getName()), value->getNameUpper(), value});
    }

    /// Makes the entries findable, once all are added.
    void vBuild() {
        const auto bucketCount = std::bit_ceil(std::max<std::size_t>(entries_.size(), 2));
        shift_ = static_cast<unsigned>(64 - std::countr_zero(bucketCount));
        starts_.assign(bucketCount + 1, 0);
        for (const auto& entry : entries_)
            ++starts_[bucketOf(entry.hash) + 1];
        for (std::size_t bucket = 0; bucket < bucketCount; ++bucket)
            starts_[bucket + 1] += starts_[bucket];
        vDistribute();
        for (std::size_t bucket = 0; bucket < bucketCount; ++bucket) {
            if (starts_[bucket + 1] - starts_[bucket] > 1)
                vBucketSort(
                    std::span(entries_).subspan(starts_[bucket], starts_[bucket + 1] - starts_[bucket]));
        }
    }

    /// The entries of this name, in the order in which they were added. Cost: their number.
    std::span<const Entry> find(std::string_view name) const {
        const auto bucket = search(name);
        auto count = std::min<std::size_t>(bucket.size(), 1);
        while (count < bucket.size() && isOf(bucket[count], name))
            ++count;
        return bucket.first(count);
    }

    /// What was added first under this name; null when nothing was.
    Value* pFind(std::string_view name) const {
        const auto bucket = search(name);
        return bucket.empty() ? nullptr : bucket.front().value;
    }

private:
    static bool boLess(const Entry& left, const Entry& right) {
        if (left.hash != right.hash)
            return left.hash < right.hash;
        return compareUpper(left.upperName, right.upperName) < 0;
    }

    static bool isOf(const Entry& entry, std::string_view name) {
        return compareUpper(name, entry.upperName) == 0;
    }

    /// The rest of a bucket from the first entry of this name on; empty when there is none.
    std::span<const Entry> search(std::string_view name) const {
        if (starts_.empty())
            return {};
        const auto hash = upperHash(name);
        const auto bucket = bucketOf(hash);
        const auto* const end = entries_.data() + starts_[bucket + 1];
        const auto* first = std::partition_point(entries_.data() + starts_[bucket], end,
                                                 [hash](const Entry& entry) { return entry.hash < hash; });
        if (first == end || first->hash != hash)
            return {};
        if (isOf(*first, name))
            return {first, end};
        // Names of one hash.
        first = std::partition_point(first, end, [&](const Entry& entry) {
            return entry.hash == hash && compareUpper(name, entry.upperName) > 0;
        });
        const bool isFound = first != end && first->hash == hash && isOf(*first, name);
        return isFound ? std::span<const Entry>(first, end) : std::span<const Entry>();
    }

    std::size_t bucketOf(std::uint64_t hash) const { return static_cast<std::size_t>(hash >> shift_); }

    /// By insertion for the few entries that a bucket has unless somebody chose the names for that.
    static void vBucketSort(std::span<Entry> bucket) {
        constexpr std::size_t few = 16;
        if (bucket.size() > few)
            return std::stable_sort(bucket.begin(), bucket.end(), boLess);
        for (auto entry = bucket.begin(); entry != bucket.end(); ++entry)
            std::rotate(std::upper_bound(bucket.begin(), entry, *entry, boLess), entry, entry + 1);
    }

    /// Puts the entries into the order of their buckets; those of one bucket stay in their order.
    void vDistribute() {
        std::vector<Entry> ordered(entries_.size());
        auto next = starts_;
        for (const auto& entry : entries_)
            ordered[next[bucketOf(entry.hash)]++] = entry;
        entries_ = std::move(ordered);
    }

    std::vector<Entry> entries_;
    // Where each bucket begins, and where the last one ends.
    std::vector<std::uint32_t> starts_;
    unsigned shift_ = 0;
};

} // namespace kiv::ifc::def::schema
