#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlCommon.h"

#include "Format/Ifc/Def/Reports/IfcReports.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace kiv::ifc::def::xmlschema {

ExpAttribute expAttributeFromString(std::string_view text) {
    if (text == "attribute-tag")
        return ExpAttribute::AttributeTag;
    if (text == "double-tag")
        return ExpAttribute::DoubleTag;
    if (text != "attribute-content")
        vConfigReport("Illegal string", "expAttributeFromString", "Common");
    return ExpAttribute::AttributeContent;
}

bool boFromText(std::string_view text) {
    return kiv::xml::const_Node::from_string<bool>(text).value_or(false);
}

void vConfigReport(std::string_view message, std::string_view function, std::string_view module,
                   std::string_view callable) {
    if (!assert::Assert::isEnabled())
        return;
    const auto qualified = std::string("kiv::ifc::def::xmlschema::").append(function).append(callable);
    const auto file = std::string("Source/Format/Ifc/Def/XmlSchema/IfcXml").append(module);
    vAssertReport(message, qualified, file, 0);
}

void vElementRead(const kiv::xml::const_Element& element, const ElementReader& reader,
                  const std::function<bool(std::string_view, std::string_view)>& boAttribute,
                  const std::function<bool(const kiv::xml::const_Element&)>& boChild) {
    const auto attributes = element.AttributesGet();
    for (std::uint64_t index = 0; attributes && index < attributes->LengthGet(); ++index) {
        const auto attribute = attributes->ItemGet(index);
        if (!boAttribute(attribute.getNodeNameView(), attribute.getNodeValueView()))
            vConfigReport("Unknown attribute", reader.function, reader.module, "::<lambda_1>::operator ()");
    }
    for (auto child = element.FirstElementChildGet(); child; child = child->NextElementSiblingGet()) {
        if (!boChild(*child))
            vConfigReport("Unknown element", reader.function, reader.module, "::<lambda_2>::operator ()");
    }
}

void vElementRead(const kiv::xml::const_Element& element, const ElementReader& reader,
                  const std::function<bool(std::string_view, std::string_view)>& boAttribute) {
    vElementRead(element, reader, boAttribute, [](const auto&) { return false; });
}

bool boIsOneOf(std::string_view name, std::initializer_list<std::string_view> known) {
    return std::find(known.begin(), known.end(), name) != known.end();
}

} // namespace kiv::ifc::def::xmlschema
