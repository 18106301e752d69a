#include "kivifc/Json/Json.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv::kivifc {

namespace {

/// The longest object or array on one line, not counting the text before it.
constexpr std::size_t LineWidth = 150;
/// Bytes that are collected before they are written.
constexpr std::size_t BufferSize = std::size_t{1} << 16U;

std::string sScalar(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

class Writer {
public:
    explicit Writer(Output& output) : output_(output) {}

    /// Appends the value to the current line.
    void vValueWrite(const Json& value) {
        const auto begin = text_.size();
        if (boLineAppend(value, begin + LineWidth))
            return;
        text_.resize(begin);
        vLinesWrite(value);
    }

    void vEnd() {
        text_ += '\n';
        output_.vWrite(text_);
    }

private:
    /// Appends the value as part of one line; false, and the text is of no use, once it is longer than
    /// `limit`. A value without members always fits.
    bool boLineAppend(const Json& value, std::size_t limit) {
        if (!value.is_structured() || value.empty()) {
            text_ += sScalar(value);
            return true;
        }
        text_ += value.is_object() ? '{' : '[';
        std::string_view separator;
        for (auto member = value.begin(); member != value.end(); ++member) {
            text_ += separator;
            vKeyAppend(value, member);
            // A long text is not copied only to be taken back, as often as it has values around it.
            const auto* string = member->get_ptr<const Json::string_t*>();
            if ((string && string->size() > LineWidth) || !boLineAppend(*member, limit) ||
                text_.size() >= limit)
                return false;
            separator = ", ";
        }
        text_ += value.is_object() ? '}' : ']';
        return true;
    }

    void vLinesWrite(const Json& value) {
        text_ += value.is_object() ? '{' : '[';
        ++depth_;
        std::string_view separator;
        for (auto member = value.begin(); member != value.end(); ++member) {
            text_ += separator;
            vLineBegin();
            vKeyAppend(value, member);
            vValueWrite(*member);
            separator = ",";
        }
        --depth_;
        vLineBegin();
        text_ += value.is_object() ? '}' : ']';
    }

    /// Nothing for the members of an array.
    void vKeyAppend(const Json& value, const Json::const_iterator& member) {
        if (value.is_object())
            text_ += sScalar(member.key()) + ": ";
    }

    void vLineBegin() {
        if (text_.size() > BufferSize) {
            output_.vWrite(text_);
            text_.clear();
        }
        text_ += '\n';
        text_.append(2 * depth_, ' ');
    }

    Output& output_;
    std::string text_;
    std::size_t depth_ = 0;
};

} // namespace

void vJsonWrite(const Json& value, Output& output) {
    Writer writer(output);
    writer.vValueWrite(value);
    writer.vEnd();
}

Json assertionsJson(const std::vector<assert::AssertRecord>& records) {
    Json list = Json::array();
    for (const auto& record : records) {
        list.push_back({{"code", record.code},
                        {"message", record.message},
                        {"function", record.function},
                        {"file", record.file},
                        {"line", record.line}});
    }
    return list;
}

} // namespace kiv::kivifc
