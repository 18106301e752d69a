#include "RealData/RealData.h"
#include "Support/SchemaFromText.h"
#include "Support/SetFromText.h"
#include "Support/SetText.h"
#include "Support/XmlFromText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyTypeDerived.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"

namespace kiv::test {

namespace {

namespace defs = ifc::def::xml;
namespace pset = ifc::def::pset;
namespace qto = ifc::def::qto;
using defs::XmlSetErrors;

class SetRealDataTest : public RealDataTest {};

/// The set as a document of its own. A property set fills the element it is given, a quantity set appends its
/// own.
std::string sExported(const defs::SetDef& set) {
    XmlTarget target(set.pXmlElementName());
    auto written = set.exportDef(target.root(), nullptr);
    return sXmlText(written);
}

std::size_t occurrencesOf(std::string_view text, std::string_view what) {
    std::size_t count = 0;
    for (auto pos = text.find(what); pos != std::string_view::npos; pos = text.find(what, pos + 1))
        ++count;
    return count;
}

/// With the parts of complex properties.
std::size_t propertiesIn(const std::vector<pset::PropertyDef>& properties) {
    auto count = properties.size();
    for (const auto& property : properties) {
        if (const auto* const complex = dynamic_cast<const pset::TypeComplexProperty*>(property.pType()))
            count += propertiesIn(complex->getProperties());
    }
    return count;
}

std::size_t membersIn(const defs::SetDef& set) {
    if (const auto* const properties = dynamic_cast<const pset::PropertySetDef*>(&set))
        return propertiesIn(properties->getProperties());
    return dynamic_cast<const qto::QuantitySetDef&>(set).getQuantities().size();
}

} // namespace

TEST_F(SetRealDataTest, EveryDocumentIsReadExportedAndReadBack) {
    std::size_t documents = 0;
    for (const auto* folder : {"IFC4", "IFC4_QTO", "IFC2X3"}) {
        for (const auto& path : setPaths(folder)) {
            SCOPED_TRACE(path);
            const XmlFromText document(sText(path));
            XmlSetErrors errors;
            const auto original = pSetFromElement(document.root(), errors);
            const auto text = sExported(*original);
            const XmlFromText exported(text);
            XmlSetErrors errorsOfExport;
            const auto readBack = pSetFromElement(exported.root(), errorsOfExport);
            EXPECT_EQ(sSetText(*readBack, After::Reading), sSetText(*original, After::ReadingBack));
            ++documents;
        }
    }
    EXPECT_EQ(documents, 659U);
}

TEST_F(SetRealDataTest, EveryMemberOfTheTextIsInTheSet) {
    for (const auto* folder : {"IFC4", "IFC4_QTO", "IFC2X3"}) {
        for (const auto& path : setPaths(folder)) {
            SCOPED_TRACE(path);
            const auto text = sText(path);
            const XmlFromText document(text);
            XmlSetErrors errors;
            const auto set = pSetFromElement(document.root(), errors);
            const auto tag = document.root().boNodeNameIs("QtoSetDef") ? std::string("QtoDef")
                                                                       : std::string("PropertyDef");
            EXPECT_EQ(membersIn(*set),
                      occurrencesOf(text, "<" + tag + ">") + occurrencesOf(text, "<" + tag + " "));
            EXPECT_FALSE(set->getName().empty());
        }
    }
}

} // namespace kiv::test
