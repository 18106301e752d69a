#include "kivifc/Json/Json.h"

#include <string>
#include <string_view>

namespace kiv::kivifc {

void vJsonWrite(const Json& value, JsonWriter& writer) {
    switch (value.type()) {
    case Json::value_t::object:
        writer.vObjectBegin();
        for (const auto& [key, member] : value.items()) {
            writer.vKey(key);
            vJsonWrite(member, writer);
        }
        return writer.vObjectEnd();
    case Json::value_t::array:
        writer.vArrayBegin();
        for (const auto& member : value)
            vJsonWrite(member, writer);
        return writer.vArrayEnd();
    case Json::value_t::string:
        return writer.vValue(value.get_ref<const std::string&>());
    case Json::value_t::boolean:
        return writer.vValue(value.get<bool>());
    case Json::value_t::number_integer:
        return writer.vValue(value.get<Json::number_integer_t>());
    case Json::value_t::number_unsigned:
        return writer.vValue(value.get<Json::number_unsigned_t>());
    case Json::value_t::number_float:
        return writer.vValue(value.get<Json::number_float_t>());
    default:
        return writer.vValue(nullptr);
    }
}

void vJsonWrite(Output& output, const std::function<void(JsonWriter&)>& write) {
    JsonWriter writer([&](std::string_view text) { output.vWrite(text); });
    write(writer);
    writer.vEnd();
}

void vJsonWrite(const Json& value, Output& output) {
    vJsonWrite(output, [&](JsonWriter& writer) { vJsonWrite(value, writer); });
}

void vAssertionMembersWrite(const kit::Assertion& record, JsonWriter& writer) {
    writer.vMember("code", record.code);
    writer.vMember("message", record.message);
    writer.vMember("function", record.function);
    writer.vMember("file", record.file);
    writer.vMember("line", record.line);
}

} // namespace kiv::kivifc
