/// @file
/// JSON written member by member, without a document that holds all of it.
///
///     JsonWriter writer([&](std::string_view text) { output.vWrite(text); });
///     writer.vObjectBegin();
///     writer.vMember("name", "IFC4");
///     writer.vKey("numbers");
///     writer.vArrayBegin();
///     writer.vValue(776);
///     writer.vArrayEnd();
///     writer.vObjectEnd();
///     writer.vEnd(); // {"name": "IFC4", "numbers": [776]}
///
/// Objects and arrays that fit on a line are on one; of larger ones each member has its own. What is not yet
/// known to fit is kept back, which is never much more than one line.
///
/// Threads: one thread at a time.
/// Errors:  bytes that are not UTF-8 are replaced by U+FFFD. Values and keys in an order that makes no JSON
///          are a fault of the caller, and not noticed.
#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::kivifc {

class JsonWriter {
public:
    using Sink = std::function<void(std::string_view)>;

    /// The sink is given the text in blocks.
    explicit JsonWriter(Sink sink);
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    void vObjectBegin() { vOpen('{', '}'); }
    void vObjectEnd() { vClose(); }
    void vArrayBegin() { vOpen('[', ']'); }
    void vArrayEnd() { vClose(); }

    /// The next value, object or array is the member of this name.
    void vKey(std::string_view key);

    void vValue(std::string_view text);
    void vValue(const char* text) { vValue(std::string_view(text)); }
    void vValue(const std::string& text) { vValue(std::string_view(text)); }
    void vValue(std::nullptr_t) { vWordWrite("null"); }
    void vValue(std::same_as<bool> auto value) { vWordWrite(value ? "true" : "false"); }
    /// As short as it reads back equal, with a point or an exponent.
    void vValue(double value);
    template <std::integral Number>
    requires(!std::same_as<Number, bool>) void vValue(Number value) {
        std::array<char, 24> digits{};
        const auto* const end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
        vWordWrite({digits.data(), static_cast<std::size_t>(end - digits.data())});
    }

    template <typename Value>
    void vMember(std::string_view key, const Value& value) {
        vKey(key);
        vValue(value);
    }

    /// An array of one value each.
    template <typename Values>
    void vMembers(std::string_view key, const Values& values) {
        vKey(key);
        vArrayBegin();
        for (const auto& value : values)
            vValue(value);
        vArrayEnd();
    }

    /// An array of objects, one for each value, whose members `write` writes.
    template <typename Values, typename Write>
    void vObjects(std::string_view key, const Values& values, const Write& write) {
        vKey(key);
        vArrayBegin();
        for (const auto& value : values) {
            vObjectBegin();
            write(value);
            vObjectEnd();
        }
        vArrayEnd();
    }

    /// The line end after the outermost value, and all that was kept back.
    void vEnd();

private:
    /// An object or array that has begun and not ended.
    struct Open {
        char end;
        bool hasMembers;
        /// Where it begins in the text, as long as it is on one line.
        std::size_t begin;
    };

    /// Where a member of an object or array begins in the text, its key included.
    struct Start {
        std::size_t depth;
        std::size_t begin;
    };

    void vOpen(char begin, char end);
    void vClose();
    void vMemberBegin();
    void vValueBegin();
    void vWordWrite(std::string_view word);
    void vTextAppend(std::string_view text);
    void vCharacterAppend(char character);
    void vLineBegin(std::size_t depth);
    void vLinesFit();
    void vSpread();

    Sink sink_;
    std::string text_;
    std::vector<Open> open_;
    /// How many of `open_`, the outermost ones, are spread over lines.
    std::size_t spread_ = 0;
    /// Of those that are on one line, from outside in.
    std::vector<Start> starts_;
    std::string line_;
    bool isKeyWritten_ = false;
};

} // namespace kiv::kivifc
