#include "Host/Xml/KivXmlLines.h"

#include <algorithm>
#include <iterator>

namespace kiv::xml {

namespace {

/// Only saves the first block, which holds all of most documents, from growing bit by bit.
constexpr std::size_t usualLineSize = 32;

} // namespace

void LineCounter::vBlockAdd(std::string_view block) {
    if (block.empty())
        return;
    starts_.erase(starts_.begin(), std::next(starts_.begin(), static_cast<std::ptrdiff_t>(next_)));
    next_ = 0;
    if (size_ == 0)
        vStartsReserve(block.size() / usualLineSize);
    std::size_t from = 0;
    if (isCarriageReturnOpen_) {
        from = block.front() == '\n' ? 1 : 0;
        vStartAdd(size_ + from);
    }
    isCarriageReturnOpen_ = block.back() == '\r';
    vStartsAdd(isCarriageReturnOpen_ ? block.substr(0, block.size() - 1) : block, from);
    size_ += block.size();
}

void LineCounter::vStartsAdd(std::string_view block, std::size_t from) {
    std::size_t lineFeed = block.find('\n', from);
    std::size_t carriageReturn = block.find('\r', from);
    while (lineFeed != carriageReturn) { // both are npos in the end
        const std::size_t end =
            carriageReturn + 1 == lineFeed ? lineFeed : std::min(lineFeed, carriageReturn);
        vStartAdd(size_ + end + 1);
        if (lineFeed <= end)
            lineFeed = block.find('\n', end + 1);
        if (carriageReturn <= end)
            carriageReturn = block.find('\r', end + 1);
    }
}

void LineCounter::vStartsReserve(std::size_t count) {
    vRoomFor(starts_, count, meter_);
}

void LineCounter::vStartAdd(std::uint64_t start) {
    vRoomForOne(starts_, meter_);
    starts_.push_back(start);
}

std::uint32_t LineCounter::getLine(std::uint64_t index) {
    for (; next_ != starts_.size() && starts_[next_] <= index; ++next_)
        ++line_;
    return line_;
}

} // namespace kiv::xml
