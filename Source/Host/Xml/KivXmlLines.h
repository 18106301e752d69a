/// @file
/// The lines of a text that is read block by block.
///
/// Private to the XML library. The parser knows the line as well, but finds it only by looking at every byte
/// of every token once more; looking for line ends alone costs a small part of that.
#pragma once

#include "Base/Metered.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kiv::xml {

/// Finds the line of a place in a text in which each line end (LF, CR or CR LF) is single bytes.
///
/// Ownership: a value.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
class LineCounter {
public:
    /// A meter hears of the memory; null for none.
    explicit LineCounter(WorkMeter* meter = nullptr) : meter_(meter) {}

    /// Takes the next block of the text.
    void vBlockAdd(std::string_view block);

    /// The line, counted from 1, of the byte at `index`. Blocks were added up to there at least, and no call
    /// asks for a place before that of the call before.
    std::uint32_t getLine(std::uint64_t index);

    /// The memory that is held.
    std::size_t getMemory() const { return starts_.capacity() * sizeof(starts_.front()); }

private:
    void vStartsReserve(std::size_t count);
    void vStartAdd(std::uint64_t start);

    /// Notes the lines that begin in the block after a line end at `from` or further on.
    void vStartsAdd(std::string_view block, std::size_t from);

    WorkMeter* meter_;
    /// Where lines begin that were not asked for yet, ascending, from `next_` on.
    std::vector<std::uint64_t> starts_;
    std::size_t next_ = 0;
    std::uint64_t size_ = 0;
    std::uint32_t line_ = 1;
    /// Whether the last block ended in a CR, which the next may complete to CR LF.
    bool isCarriageReturnOpen_ = false;
};

} // namespace kiv::xml
