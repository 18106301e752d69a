#include "kivifc/Json/JsonWriter.h"

#include "kivifc/Json/Json.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace kiv::kivifc {

namespace {

/// The longest object or array on one line without its end, not counting the text before it.
constexpr std::size_t LineWidth = 150;
/// Bytes that are collected before they are handed on.
constexpr std::size_t BufferSize = std::size_t{1} << 16U;

constexpr std::array<bool, 256> Unescaped = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0x20; byte < 0x80; ++byte)
        plain[byte] = byte != '"' && byte != '\\';
    return plain;
}();

// As in the kit, whose way to look at eight bytes is private to it: programs see public headers only.
constexpr std::size_t EightBytes = sizeof(std::uint64_t);

/// Whether each of eight bytes is written as it is.
bool areUnescaped(const char* text) {
    constexpr std::uint64_t every = 0x0101010101010101U;
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text, sizeof(bytes));
    const auto quotes = bytes ^ ('"' * every);
    const auto backslashes = bytes ^ ('\\' * every);
    // The highest bit of some byte says that there is a control character, one of the two, or no ASCII.
    const auto found = ((bytes - ' ' * every) & ~bytes) | ((quotes - every) & ~quotes) |
                       ((backslashes - every) & ~backslashes) | bytes;
    return (found & (0x80 * every)) == 0;
}

/// How many bytes of the text, from its beginning, are written as they are.
std::size_t plainLength(std::string_view text) {
    std::size_t length = 0;
    while (text.size() - length >= EightBytes && areUnescaped(text.data() + length))
        length += EightBytes;
    while (length < text.size() && Unescaped[static_cast<unsigned char>(text[length])])
        ++length;
    return length;
}

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

template <typename Value>
std::string sScalar(const Value& value) {
    return Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

JsonWriter::JsonWriter(Sink sink) : sink_(std::move(sink)) {}

void JsonWriter::vKey(std::string_view key) {
    vMemberBegin();
    vTextAppend(key);
    text_ += ": ";
    isKeyWritten_ = true;
}

void JsonWriter::vValue(std::string_view text) {
    vValueBegin();
    // It fits on no line with anything around it. So it is not moved, as often as it has values around it.
    if (text.size() > LineWidth) {
        while (spread_ < open_.size())
            vSpread();
    }
    vTextAppend(text);
    vLinesFit();
}

void JsonWriter::vValue(double value) {
    vWordWrite(sScalar(value));
}

void JsonWriter::vEnd() {
    text_ += '\n';
    sink_(text_);
    text_.clear();
}

void JsonWriter::vOpen(char begin, char end) {
    vValueBegin();
    open_.push_back({end, false, text_.size()});
    text_ += begin;
    vLinesFit();
}

void JsonWriter::vClose() {
    const auto last = open_.back();
    open_.pop_back();
    if (spread_ > open_.size()) {
        --spread_;
        vLineBegin(open_.size());
    }
    while (!starts_.empty() && starts_.back().depth == open_.size())
        starts_.pop_back();
    text_ += last.end;
    vLinesFit();
}

/// What comes between the members and before the first one.
void JsonWriter::vMemberBegin() {
    if (open_.empty())
        return;
    auto& last = open_.back();
    const bool isSpread = spread_ == open_.size();
    if (last.hasMembers)
        text_ += isSpread ? "," : ", ";
    last.hasMembers = true;
    if (isSpread)
        vLineBegin(open_.size());
    else
        starts_.push_back({open_.size() - 1, text_.size()});
}

void JsonWriter::vValueBegin() {
    if (!isKeyWritten_)
        vMemberBegin();
    isKeyWritten_ = false;
}

void JsonWriter::vWordWrite(std::string_view word) {
    vValueBegin();
    text_ += word;
    vLinesFit();
}

void JsonWriter::vTextAppend(std::string_view text) {
    auto plain = plainLength(text);
    if (plain < text.size() && !isAscii(text)) {
        text_ += sScalar(text);
        return;
    }
    text_ += '"';
    for (; plain < text.size(); plain = plainLength(text)) {
        text_ += text.substr(0, plain);
        vCharacterAppend(text[plain]);
        text.remove_prefix(plain + 1);
    }
    text_ += text;
    text_ += '"';
}

/// A quotation mark, a backslash or a control character.
void JsonWriter::vCharacterAppend(char character) {
    constexpr std::string_view Characters = "\"\\\b\f\n\r\t";
    constexpr std::string_view Letters = "\"\\bfnrt";
    constexpr std::string_view Digits = "0123456789abcdef";
    text_ += '\\';
    if (const auto place = Characters.find(character); place != std::string_view::npos) {
        text_ += Letters[place];
        return;
    }
    const auto number = static_cast<unsigned char>(character);
    text_ += "u00";
    text_ += Digits[number / 16U];
    text_ += Digits[number % 16U];
}

/// Only where all that is open is spread, so that nothing points into the text.
void JsonWriter::vLineBegin(std::size_t depth) {
    if (text_.size() > BufferSize) {
        sink_(text_);
        text_.clear();
    }
    text_ += '\n';
    text_.append(2 * depth, ' ');
}

/// Spreads what has become longer than a line.
void JsonWriter::vLinesFit() {
    while (spread_ < open_.size() && text_.size() - open_[spread_].begin >= LineWidth)
        vSpread();
}

/// Spreads the outermost object or array that is on one line over several: one for each of its members.
void JsonWriter::vSpread() {
    const auto begin = open_[spread_].begin + 1;
    const auto end = text_.size();
    line_.assign(text_, begin);
    text_.resize(begin);
    const auto inner =
        std::ranges::find_if(starts_, [&](const Start& start) { return start.depth > spread_; });
    for (auto start = starts_.begin(); start != inner; ++start) {
        if (start != starts_.begin())
            text_ += ',';
        text_ += '\n';
        text_.append(2 * (spread_ + 1), ' ');
        const auto next = std::next(start);
        const auto length =
            (next == inner ? end : next->begin - std::string_view(", ").size()) - start->begin;
        text_.append(line_, start->begin - begin, length);
    }
    // What is still on one line is part of the last member, and so has moved with its end.
    const auto moved = text_.size() - end;
    for (auto start = inner; start != starts_.end(); ++start)
        start->begin += moved;
    starts_.erase(starts_.begin(), inner);
    for (auto open = ++spread_; open < open_.size(); ++open)
        open_[open].begin += moved;
}

} // namespace kiv::kivifc
