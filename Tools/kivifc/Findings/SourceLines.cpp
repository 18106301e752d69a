#include "kivifc/Findings/SourceLines.h"

#include "kiv/Kit/Positions/XmlDecoding.h"
#include "kiv/Kit/Text/ByteOrderMark.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/CodePoints.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kiv::kivifc {

namespace {

/// Code points between two marks of a long line.
constexpr std::size_t MarkDistance = 250;
/// Code points before a place that are shown at most, which leaves room for marks that combine.
constexpr std::size_t PartBefore = 500;

/// Offsets in a file that is UTF-8 are those of its bytes; in another, nobody asks for them.
std::string sToUtf8(std::string bytes) {
    const auto encoding = kit::encodingOf(bytes);
    if (encoding == kit::XmlEncoding::Utf8)
        return bytes;
    auto text = kit::sDecoded(bytes, encoding);
    return text.starts_with(kit::ByteOrderMark) ? text.substr(kit::ByteOrderMark.size()) : std::move(text);
}

} // namespace

LinedText::LinedText(std::string text) : text_(std::move(text)), begins_{0} {
    for (auto at = text_.find_first_of("\r\n"); at != std::string::npos;
         at = text_.find_first_of("\r\n", begins_.back()))
        begins_.push_back(at + (text_.compare(at, 2, "\r\n") == 0 ? 2 : 1));
    for (std::size_t number = 1; number <= begins_.size(); ++number)
        vLongLineMark(begins_[number - 1], endOf(number));
}

/// Without the end of the line.
std::size_t LinedText::endOf(std::size_t number) const {
    if (number == begins_.size())
        return text_.size();
    const auto next = begins_[number];
    return next - (next > 1 && text_.compare(next - 2, 2, "\r\n") == 0 ? 2 : 1);
}

void LinedText::vLongLineMark(std::size_t begin, std::size_t end) {
    if (end - begin <= MarkDistance)
        return;
    auto rest = std::string_view(text_).substr(begin, end - begin);
    if (begin == 0)
        rest = kit::withoutByteOrderMark(rest);
    for (std::size_t column = 1; !rest.empty(); ++column) {
        if (column % MarkDistance == 0)
            marks_.push_back({end - rest.size(), column});
        codePointTake(rest);
    }
}

std::size_t LinedText::heldBytes() const {
    return sizeof(LinedText) + text_.size() + begins_.size() * sizeof(std::size_t) +
           marks_.size() * sizeof(Mark);
}

std::string_view LinedText::line(std::size_t number) const {
    if (number == 0 || number > begins_.size())
        return {};
    const auto begin = begins_[number - 1];
    return std::string_view(text_).substr(begin, endOf(number) - begin);
}

LinePart LinedText::part(std::size_t number, std::size_t column) const {
    const auto whole = line(number);
    if (whole.size() <= MarkDistance || column <= PartBefore)
        return {whole, 1};
    const auto begin = begins_[number - 1];
    const auto first = std::ranges::lower_bound(marks_, begin, {}, &Mark::offset);
    const auto last = std::ranges::lower_bound(marks_, begin + whole.size(), {}, &Mark::offset);
    const auto after = std::ranges::upper_bound(first, last, column - PartBefore, {}, &Mark::column);
    if (after == first)
        return {whole, 1};
    const auto& mark = *std::prev(after);
    return {whole.substr(mark.offset - begin), mark.column};
}

std::pair<std::size_t, std::size_t> LinedText::lineAndColumn(std::size_t offset) const {
    const auto next = std::ranges::upper_bound(begins_, offset);
    const auto number = static_cast<std::size_t>(next - begins_.begin());
    if (number == 0)
        return {1, 1};
    Mark from{begins_[number - 1], 1};
    const auto mark = std::ranges::upper_bound(marks_, offset, {}, &Mark::offset);
    if (mark != marks_.begin() && std::prev(mark)->offset > from.offset)
        from = *std::prev(mark);
    auto rest = std::string_view(text_).substr(from.offset, std::min(offset, text_.size()) - from.offset);
    if (from.offset == 0)
        rest = kit::withoutByteOrderMark(rest);
    for (; !rest.empty(); ++from.column)
        codePointTake(rest);
    return {number, from.column};
}

void SourceLines::vKeep(const std::string& path, std::string text) {
    kept_[path] = std::move(text);
}

/// Findings of one file have notes about others by turns, so that one file at hand would be read for each.
const LinedText& SourceLines::text(const std::string& path) {
    if (const auto found = byPath_.find(path); found != byPath_.end()) {
        sources_.splice(sources_.begin(), sources_, found->second);
        return sources_.front().text;
    }
    const auto kept = kept_.find(path);
    auto text = LinedText(sToUtf8(kept == kept_.end() ? sReadAgain(path) : kept->second));
    while (!sources_.empty() && bytesAtHand_ > maxBytesAtHand_)
        vOldestDrop();
    sources_.push_front({path, std::move(text)});
    byPath_.insert_or_assign(path, sources_.begin());
    bytesAtHand_ += sources_.front().text.heldBytes();
    return sources_.front().text;
}

void SourceLines::vOldestDrop() {
    const auto& oldest = sources_.back();
    bytesAtHand_ -= oldest.text.heldBytes();
    byPath_.erase(oldest.path);
    sources_.pop_back();
}

} // namespace kiv::kivifc
