#include "kivifc/Site/WrittenGuids.h"

#include "kiv/Kit/Positions/XmlPositions.h"
#include "kivifc/Documents/TextFile.h"
#include "kivifc/Program/AsciiText.h"

namespace kiv::kivifc::site {

namespace {

/// Of its first child "Name"; empty when there is none.
std::string_view nameOf(const kit::XmlPositions& xml, const kit::XmlElement& element) {
    for (auto child = element.firstChild; child != kit::NoXmlElement;
         child = xml.getElement(child).nextSibling) {
        if (xml.getElement(child).localName() == "Name")
            return xml.getElement(child).trimmedText;
    }
    return {};
}

} // namespace

WrittenGuids::WrittenGuids(const std::string& path) {
    const kit::XmlPositions xml(sReadAgain(path));
    for (const auto& element : xml.getElements()) {
        const auto* guid = xml.pAttribute(element, "ifdguid");
        if (!guid || kiv::Guid().boSet(guid->value))
            continue;
        texts_.try_emplace({xml.tagPositionOf(element).line, std::string(nameOf(xml, element))}, guid->value);
    }
}

std::string_view WrittenGuids::of(const ifc::def::xml::DefBase& def) const {
    if (texts_.empty() || !def.getIfdGuid().isNull())
        return {};
    const auto name = ascii::trimmed(def.getName(), " \t\r\n");
    const auto found = texts_.find({def.getLine(), std::string(name)});
    return found == texts_.end() ? std::string_view() : found->second;
}

} // namespace kiv::kivifc::site
