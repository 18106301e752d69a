/// @file
/// Finds everything of a name, in any letter case: entries in buckets by the hash of their upper-cased names.
///
///     NameDirectory<const Attribute> directory;
///     directory.vAdd(name);
///     directory.vBuild();
///     for (const auto& entry : directory.find("Name")) use(*entry.value);
///
/// Within a bucket the entries are sorted, so that even names chosen to meet in one bucket cost no more than
/// the logarithm of their number. A search allocates nothing.
///
/// Ownership: refers to the owners of the names, which have getName and getNameUpper, and must outlive it.
/// Threads:   one while it is filled and built; then searched from any number of threads.
/// Errors:    what is not there is an empty range.
#pragma once

#include "Base/HashSort.h"
#include "Base/Metered.h"
#include "Base/Words8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kiv {

template <class Value>
class NameDirectory {
public:
    struct Entry {
        std::uint64_t hash;
        Value* value;

        std::string_view getNameUpper() const { return value->getNameUpper(); }
    };

    /// Adds an entry under its name.
    void vAdd(Value* value, WorkMeter* meter = nullptr) {
        vRoomForOne(entries_, meter);
        entries_.push_back({upperHash(value->getName()), value});
    }

    /// Makes the entries findable, once all are added. They take no more room then than they need.
    void vBuild(WorkMeter* meter = nullptr) {
        const auto boBefore = [meter](const Entry& left, const Entry& right) {
            vLook(meter);
            return boLess(left, right);
        };
        const auto room = entries_.capacity();
        starts_ = sortedByHash(entries_, boBefore, meter);
        if (meter)
            meter->vMemoryGiveBack((room - entries_.capacity()) * sizeof(Entry));
        shift_ = bucketShift<std::uint64_t>(starts_.size() - 1);
    }

    /// All entries; those of one name side by side, in the order in which they were added.
    std::span<const Entry> getEntries() const { return entries_; }

    /// The entries of this name, in the order in which they were added.
    std::span<const Entry> find(std::string_view name) const {
        const auto bucket = search(name);
        auto count = std::min<std::size_t>(bucket.size(), 1);
        while (count < bucket.size() && isOf(bucket[count], name)) {
            if (++count > FewInBucket)
                return firstOf(bucket, name);
        }
        return bucket.first(count);
    }

private:
    static bool boLess(const Entry& left, const Entry& right) {
        if (left.hash != right.hash)
            return left.hash < right.hash;
        return compareUpper(left.getNameUpper(), right.getNameUpper()) < 0;
    }

    static bool isOf(const Entry& entry, std::string_view name) {
        return isUpperOf(name, entry.getNameUpper());
    }

    /// The rest of a bucket from the first entry of this name on; empty when there is none.
    std::span<const Entry> search(std::string_view name) const {
        if (starts_.empty())
            return {};
        const auto hash = upperHash(name);
        const auto bucket = bucketOf(hash);
        const auto* first = entries_.data() + starts_[bucket];
        const auto* const end = entries_.data() + starts_[bucket + 1];
        if (static_cast<std::size_t>(end - first) > FewInBucket)
            first =
                std::partition_point(first, end, [hash](const Entry& entry) { return entry.hash < hash; });
        while (first != end && first->hash < hash)
            ++first;
        if (first == end || first->hash != hash)
            return {};
        if (isOf(*first, name))
            return {first, end};
        return searchSameHash(name, {first, end});
    }

    /// Those of this name, with which the entries begin.
    static std::span<const Entry> firstOf(std::span<const Entry> entries, std::string_view name) {
        const auto end = std::partition_point(entries.begin(), entries.end(),
                                              [&](const Entry& entry) { return isOf(entry, name); });
        return entries.first(static_cast<std::size_t>(end - entries.begin()));
    }

    /// The same among entries the first of which have the hash of the name.
    static std::span<const Entry> searchSameHash(std::string_view name, std::span<const Entry> entries) {
        const auto hash = entries.front().hash;
        const auto* const end = entries.data() + entries.size();
        const auto* const first = std::partition_point(entries.data(), end, [&](const Entry& entry) {
            return entry.hash == hash && compareUpper(name, entry.getNameUpper()) > 0;
        });
        const bool isFound = first != end && first->hash == hash && isOf(*first, name);
        return isFound ? std::span<const Entry>(first, end) : std::span<const Entry>();
    }

    std::size_t bucketOf(std::uint64_t hash) const { return static_cast<std::size_t>(hash >> shift_); }

    std::vector<Entry> entries_;
    // Where each bucket begins, and where the last one ends.
    std::vector<std::uint32_t> starts_;
    unsigned shift_ = 0;
};

} // namespace kiv
