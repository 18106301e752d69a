/// Sets for tests, from documents of either kind.
///
///     const auto set = pSetFromText("<QtoSetDef><Name>Qto_A</Name></QtoSetDef>");
///
/// Errors: as XmlFromText.
#pragma once

#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

#include <memory>
#include <string>

namespace kiv::test {

/// The set below a root element, of the kind that its tag names.
inline std::unique_ptr<ifc::def::xml::SetDef> pSetFromElement(const kiv::xml::Element& root,
                                                              ifc::def::xml::XmlSetErrors& errors) {
    if (root.boNodeNameIs("QtoSetDef"))
        return std::make_unique<ifc::def::qto::QuantitySetDef>(root, errors);
    return std::make_unique<ifc::def::pset::PropertySetDef>(root, errors);
}

inline std::unique_ptr<ifc::def::xml::SetDef> pSetFromText(const std::string& text) {
    const XmlFromText document(text);
    ifc::def::xml::XmlSetErrors errors;
    return pSetFromElement(document.root(), errors);
}

} // namespace kiv::test
