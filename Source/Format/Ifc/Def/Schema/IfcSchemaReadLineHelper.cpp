#include "kiv/Format/Ifc/Def/Schema/IfcSchemaReadLineHelper.h"

#include "Base/Arena.h"
#include "Base/Metered.h"
#include "Base/Words8.h"
#include "kiv/Base/Exception.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <streambuf>
#include <utility>

namespace kiv::ifc::def::schema {

namespace {

/// How much is read ahead at most, in bytes: little at first, as a text may hold thousands of schemas of a
/// line each; then more and more, so that calls are few.
constexpr std::streamsize AheadFirst = 1 << 10;
constexpr std::streamsize AheadMax = 1 << 16;

bool isNameEnd(char byte) {
    return ascii::isOneOf(byte, "\t ,)");
}

/// A stream that failed is an error, one at its end is not.
void vStreamCheck(const std::istream& stream) {
    if (stream.fail() && !stream.eof())
        throw exception();
}

/// Calls an operation of the stream's buffer; what that throws becomes the state of the stream, as in all
/// reading operations of streams.
template <class Operation>
void vBufferUse(std::istream& stream, Operation&& operation) {
    try {
        operation(*stream.rdbuf());
    } catch (...) {
        const bool isPassedOn = (stream.exceptions() & std::ios::badbit) != 0;
        try {
            stream.setstate(std::ios::badbit);
        } catch (const std::ios::failure&) { // what the buffer threw says more
        }
        if (isPassedOn)
            throw;
    }
}

} // namespace

ReadLineHelper::ReadLineHelper() :
    own_(std::make_unique<Arena>()), arena_(*own_), isReadingAhead_(false), aheadMax_(0) {}

ReadLineHelper::ReadLineHelper(Arena& arena) : arena_(arena), isReadingAhead_(true), aheadMax_(AheadFirst) {}

ReadLineHelper::ReadLineHelper(WorkMeter* meter) : ReadLineHelper() {
    meter_ = meter;
    arena_.vMeterSet(meter);
}

ReadLineHelper::ReadLineHelper(Arena& arena, WorkMeter* meter) : ReadLineHelper(arena) {
    meter_ = meter;
}

ReadLineHelper::~ReadLineHelper() {
    if (meter_)
        meter_->vMemoryGiveBack(memoryOf(text_) + memoryOf(joined_) + lines_.getMemory() +
                                names_.capacity() * sizeof(std::string_view));
}

/// Bytes of the stream that are handed out, or will be with the line that is being read.
void ReadLineHelper::vBytesTake(std::size_t count) {
    meter_->vTake(WorkMeter::Unit::InputBytes, count);
    meter_->vTake(WorkMeter::Unit::PieceBytes, count);
    meter_->vLook();
}

bool ReadLineHelper::boNextLine(std::istream& stream) {
    const auto* const end =
        static_cast<const char*>(ahead_.empty() ? nullptr : std::memchr(ahead_.data(), '\n', ahead_.size()));
    if (!end && isReadingAhead_)
        return boLineAcrossBlocks(stream);
    if (!end)
        return meter_ ? boLineOfStream<true>(stream) : boLineOfStream<false>(stream);
    const auto size = static_cast<std::size_t>(end - ahead_.data());
    if (meter_) [[unlikely]]
        vBytesTake(size + 1);
    vLineSet({ahead_.data(), size}, true);
    ahead_.remove_prefix(size + 1);
    return true;
}

/// Takes the line byte by byte and nothing after it. Not by std::getline, which reports a lack of memory as a
/// failed stream.
template <bool IsMetered>
bool ReadLineHelper::boLineOfStream(std::istream& stream) {
    using Traits = std::char_traits<char>;
    text_.clear();
    auto byte = Traits::to_int_type('\n');
    const std::istream::sentry sentry(stream, true);
    bool isRead = false;
    while (sentry) {
        vBufferUse(stream, [&byte](std::streambuf& buffer) { byte = buffer.sbumpc(); });
        vStreamCheck(stream);
        if (Traits::eq_int_type(byte, Traits::eof()))
            break;
        isRead = true;
        if constexpr (IsMetered) {
            vBytesTake(1);
            vRoomForText(text_, 1, meter_);
        }
        if (byte == '\n')
            break;
        text_ += Traits::to_char_type(byte);
    }
    vStreamCheck(stream);
    vLineSet(text_, false);
    if (Traits::eq_int_type(byte, Traits::eof()))
        stream.setstate(isRead ? std::ios::eofbit : std::ios::eofbit | std::ios::failbit);
    return isRead;
}

/// Reads a line that begins with what is left of one block and ends in another.
bool ReadLineHelper::boLineAcrossBlocks(std::istream& stream) {
    vTextSet(text_, ahead_, meter_);
    if (meter_)
        vBytesTake(ahead_.size());
    ahead_ = {};
    auto end = std::string_view::npos;
    while (end == std::string_view::npos && boBlockRead(stream)) {
        end = ahead_.find('\n');
        if (meter_)
            vBytesTake(std::min(end, ahead_.size() - 1) + 1);
        vRoomForText(text_, ahead_.substr(0, end).size(), meter_);
        text_ += ahead_.substr(0, end);
        ahead_.remove_prefix(std::min(end, ahead_.size() - 1) + 1);
    }
    const bool isRead = end != std::string_view::npos || !text_.empty();
    vLineSet(text_, false);
    if (!isRead)
        stream.setstate(std::ios::failbit);
    return isRead;
}

/// Takes from the stream what it has at hand, and at least a byte; false when it is at its end.
bool ReadLineHelper::boBlockRead(std::istream& stream) {
    const std::istream::sentry sentry(stream, true);
    std::streamsize size = 0;
    if (sentry) {
        vBufferUse(stream, [&](std::streambuf& buffer) {
            if (!std::char_traits<char>::eq_int_type(buffer.sgetc(), std::char_traits<char>::eof()))
                size = std::clamp<std::streamsize>(buffer.in_avail(), 1, aheadMax_);
        });
    }
    vStreamCheck(stream);
    if (size == 0) {
        stream.setstate(std::ios::eofbit);
        return false;
    }
    auto* const block = static_cast<char*>(arena_.pAllocateFor<char>(static_cast<std::size_t>(size)));
    vBufferUse(stream, [&](std::streambuf& buffer) { size = buffer.sgetn(block, size); });
    // A buffer that has bytes but does not hand them out would never come to an end.
    if (size <= 0)
        stream.setstate(std::ios::badbit);
    vStreamCheck(stream);
    ahead_ = {block, static_cast<std::size_t>(size)};
    aheadMax_ = std::min(2 * aheadMax_, AheadMax);
    return true;
}

void ReadLineHelper::vLineSet(std::string_view line, bool isKept) {
    isLineCut_ = line.ends_with('\r');
    if (isLineCut_)
        line.remove_suffix(1);
    line_ = line;
    isLineKept_ = isKept;
    isLineJoined_ = false;
}

bool ReadLineHelper::boNextLineAppend(std::istream& stream) {
    // Lines without number may be appended: only the new one is copied.
    if (!isLineJoined_) {
        joined_.clear();
        vRoomForText(joined_, line_.size(), meter_);
        joined_ = line_;
    }
    const bool isRead = boNextLine(stream);
    vRoomForText(joined_, line_.size(), meter_);
    joined_ += line_;
    line_ = joined_;
    isLineJoined_ = true;
    isLineKept_ = false;
    return isRead;
}

void ReadLineHelper::vLineAddTo(TextLines& lines) const {
    if (isLineKept_ && !isLineCut_)
        lines.vKeptLineAdd(line_, meter_);
    else
        lines.vLineAdd(line_, meter_);
}

void ReadLineHelper::vAheadGiveBack(std::istream& stream) noexcept {
    try {
        for (auto count = ahead_.size(); count > 0; --count)
            stream.rdbuf()->sungetc();
    } catch (...) {
        // What the stream does not take back is lost to whoever reads on after the schema.
    }
    ahead_ = {};
}

void ReadLineHelper::vByteOrderMarkRemove() {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (line_.starts_with(mark))
        line_.remove_prefix(mark.size());
}

void ReadLineHelper::vNextLineOfList(std::istream& stream) {
    if (!boNextLine(stream))
        throw exception();
}

std::vector<std::string> ReadLineHelper::getNamesInList(std::size_t& pos, std::istream& stream) {
    vNamesRead(pos, stream);
    return {names_.begin(), names_.end()};
}

std::span<const std::string_view> ReadLineHelper::getNamesKept(std::size_t& pos, std::istream& stream) {
    vNamesRead(pos, stream);
    auto* const names = static_cast<std::string_view*>(arena_.pAllocateFor<std::string_view>(names_.size()));
    std::uninitialized_copy(names_.begin(), names_.end(), names);
    return {names, names_.size()};
}

std::string_view ReadLineHelper::getCopy(std::string_view text) {
    return arena_.getCopy(text);
}

void ReadLineHelper::vNamesRead(std::size_t& pos, std::istream& stream) {
    while ((pos = line_.find('(', pos)) == std::string_view::npos) {
        vNextLineOfList(stream);
        pos = 0;
    }
    ++pos;
    names_.clear();
    while (!boNamesOfLineRead(pos)) {
        vNextLineOfList(stream);
        pos = 0;
    }
}

/// Reads the names of the current line from `pos` on; true when the list ends in it, and then `pos` is where.
bool ReadLineHelper::boNamesOfLineRead(std::size_t& pos) {
    const auto* const begin = line_.data();
    const auto* const end = begin + line_.size();
    const auto* at = begin + pos;
    for (;;) {
        while (at != end && isNameEnd(*at) && *at != ')')
            ++at;
        pos = static_cast<std::size_t>(at - begin);
        if (at == end)
            return false;
        if (*at == ')')
            return true;
        const auto* const name = at;
        // Most names are words and nothing else.
        at = pWordEnd(at, end);
        while (at != end && !isNameEnd(*at))
            ++at;
        vRoomForOne(names_, meter_);
        names_.push_back(getKept({name, static_cast<std::size_t>(at - name)}));
    }
}

TextLines& ReadLineHelper::getEmptyLines() {
    lines_.vClear();
    return lines_;
}

std::vector<std::string> sListFromStringCommaSep(const std::string& text, std::size_t pos) {
    std::vector<std::string> items;
    while ((pos = text.find_first_not_of(" ,", pos)) != std::string::npos) {
        const auto comma = text.find(',', pos);
        if (comma == std::string::npos) {
            const auto end = std::min(text.find(';', pos), text.size());
            const auto stop = end < text.size() ? end : std::min(text.find(' ', pos), text.size());
            items.emplace_back(text, pos, stop - pos);
            break;
        }
        items.emplace_back(text, pos, comma - pos);
        pos = comma;
    }
    return items;
}

void TextLines::vLineAdd(std::string_view line, WorkMeter* meter) {
    vRoomForText(copied_, (copied_.empty() ? joined_.size() : 0) + line.size() + 1, meter);
    if (copied_.empty())
        copied_ = joined_;
    copied_ += line;
    copied_ += '\n';
}

void TextLines::vKeptLineAdd(std::string_view line, WorkMeter* meter) {
    const auto* const joinedEnd = joined_.data() + joined_.size();
    if (!copied_.empty() || (!joined_.empty() && line.data() != joinedEnd))
        return vLineAdd(line, meter);
    joined_ = {joined_.empty() ? line.data() : joined_.data(), joined_.size() + line.size() + 1};
}

std::size_t TextLines::getMemory() const {
    return memoryOf(copied_);
}

void TextLines::vClear() {
    joined_ = {};
    copied_.clear();
}

std::vector<std::string_view> linesOfText(std::string_view text) {
    std::vector<std::string_view> lines;
    for (auto rest = text; !rest.empty();) {
        const auto end = rest.find('\n');
        lines.push_back(rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    return lines;
}

} // namespace kiv::ifc::def::schema
