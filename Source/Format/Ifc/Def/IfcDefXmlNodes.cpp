#include "Format/Ifc/Def/IfcDefXmlNodes.h"

#include "kiv/Host/Assert/KivAssert.h"

#include <utility>

namespace kiv::ifc::def::xml {

std::optional<NodeText> firstChildText(const kiv::xml::const_Element& element) {
    const auto child = element.FirstChildGet();
    if (!child)
        return std::nullopt;
    return textOf(*child);
}

void vTextTake(const kiv::xml::const_Element& element, std::string& target, WorkMeter* meter) {
    if (const auto text = firstChildText(element))
        vTextSet(target, *text, meter);
}

bool boAttributeTake(const kiv::xml::const_Element& element, std::string_view name, std::string& target,
                     WorkMeter* meter) {
    const auto attribute = element.AttributeNodeGet(name);
    if (!attribute)
        return false;
    vTextSet(target, valueOf(*attribute), meter);
    return true;
}

void vReportTake(WorkMeter* meter, Report report) {
    if (meter && assert::Assert::isEnabled())
        meter->vTake(WorkMeter::Unit::Reports, 1);
    vReport(report);
}

void vRecordAdd(XmlSetErrors& errors, RecordMessage message, std::string item, std::size_t line) {
    errors.vErrorAdd(ErrorKind::Error, std::move(item), std::string(textOf(message)), line);
}

void vUnknownNodeAdd(const kiv::xml::const_Element& child, XmlSetErrors& errors) {
    vRecordAdd(errors, RecordMessage::UnknownNode, child.tagName(), lineOf(child));
}

void vTextElementAppend(kiv::xml::Element& parent, std::string_view tag, std::string_view text) {
    parent.ElementNodeAppend(tag).boTextNodeAppend(text);
}

} // namespace kiv::ifc::def::xml
