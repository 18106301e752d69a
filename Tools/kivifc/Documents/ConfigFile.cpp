#include "kivifc/Documents/ConfigFile.h"

#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kiv/Host/Xml/KivXml.h"
#include "kivifc/Documents/ReadingLimits.h"
#include "kivifc/Documents/ShownFailure.h"
#include "kivifc/Documents/TextFile.h"

#include <array>
#include <sstream>

namespace kiv::kivifc {

namespace {

constexpr std::array<std::string_view, 4> Representations{"not given", "attribute-tag", "attribute-content",
                                                          "double-tag"};

using Reports = std::optional<std::vector<assert::AssertRecord>>;

Reports textRead(const std::string& path, const TextFile& file, ifc::def::SchemaPset& schema,
                 Diagnostics& diagnostics) {
    // Read twice: the reader of configurations does not say where a document is not well-formed.
    std::istringstream stream(file.text);
    xml::File document(nullptr, xml::VerboseLevel::Quiet, xml::ValidateLevel::None);
    ifc::def::BudgetMeter meter(readingBudget());
    if (!document.parse(stream, path, &meter)) {
        const auto& error = *document.pError();
        diagnostics.vFail(
            shownFailure(path, {kit::FailureKind::NotXml, error.reason, {error.line, error.column}, {}}));
        return std::nullopt;
    }
    assert::CollectingSink sink;
    const assert::ScopedSink installed(sink);
    std::istringstream again(file.text);
    schema.vXmlSchemaConfigInit(again, readingBudget());
    return sink.takeRecords();
}

} // namespace

std::optional<std::vector<assert::AssertRecord>>
configFileRead(const std::string& path, ifc::def::SchemaPset& schema, Diagnostics& diagnostics) {
    const auto file = textFileRead(path);
    if (!file.failure.empty()) {
        diagnostics.vFail(path, file.failure);
        return std::nullopt;
    }
    try {
        return textRead(path, file, schema, diagnostics);
    } catch (const ifc::def::BudgetExceeded& exceeded) {
        diagnostics.vFail(path, sLimitFailure(exceeded));
        return std::nullopt;
    }
}

std::string_view sRepresentation(ifc::def::xmlschema::ExpAttribute representation) {
    return Representations.at(static_cast<std::size_t>(representation));
}

std::string sConfigured(const ifc::def::schema::Attribute& attribute) {
    const auto* record = attribute.pXmlAttribute();
    if (!record)
        return {};
    std::string text(sRepresentation(record->getRepresentation()));
    return text.append(record->isTagless() ? ", tagless" : "").append(record->isKeep() ? ", keep" : "");
}

std::string sConfigured(const ifc::def::schema::AttributeInverse& attribute) {
    const auto* record = attribute.pXmlAttribute();
    return record ? std::string(sRepresentation(record->getRepresentation())) : std::string();
}

} // namespace kiv::kivifc
