/// The smallest set, member and type there can be, to test the bases by themselves.
#pragma once

#include "Format/Ifc/Def/IfcDefXmlNodes.h"
#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <string>
#include <vector>

namespace kiv::test {

/// A set that knows nothing but what all sets know.
class PlainSet : public ifc::def::xml::SetDef {
public:
    using SetDef::SetDef;
    PlainSet(const kiv::xml::const_Element& element, ifc::def::xml::XmlSetErrors& errors) :
        SetDef(element, errors) {
        for (const auto& child : ifc::def::xml::ElementChildren(element)) {
            if (!boCheck(child.tagNameView(), child))
                refusedTags.push_back(child.tagName());
        }
    }

    kiv::xml::Element exportDef(kiv::xml::Element& element, ifc::def::xml::ExtraExportInfo*) const override {
        vExportCommon(element);
        return element;
    }
    const char* pXmlElementName() const override { return "PlainSet"; }

    /// The children that the base left to this class.
    std::vector<std::string> refusedTags;
};

/// A member that knows nothing but what all members know.
class PlainMember : public ifc::def::xml::Def {
public:
    using Def::Def;
    PlainMember(const ifc::def::xml::SetDef* owner, const kiv::xml::const_Element& element,
                ifc::def::xml::XmlSetErrors& errors) :
        Def(owner, element, errors) {
        for (const auto& child : ifc::def::xml::ElementChildren(element)) {
            if (!boCheck(child.tagNameView(), child))
                refusedTags.push_back(child.tagName());
        }
    }

    std::string getEntityName() const override { return "IfcPlain"; }

    using Def::exportBegin;
    using Def::vExportCommon;

    /// The children that the base left to this class.
    std::vector<std::string> refusedTags;
};

class PlainType : public ifc::def::xml::TypeBase {
public:
    std::string sEntityName() const override { return "IfcPlain"; }
};

} // namespace kiv::test
