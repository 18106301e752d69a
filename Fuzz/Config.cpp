// An IFC-XML configuration: reading it never throws, whatever it is; the attributes are linked to its records
// and to nothing else, and a second reading gives the same.
#include "FuzzTarget.h"
#include "SampleSchema.h"

#include "kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h"
#include "kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <algorithm>
#include <sstream>
#include <string>

namespace {

using namespace kiv::ifc::def;
using kiv::fuzz::vLaw;

template <class Records, class Record>
bool boHolds(const Records& records, const Record* record) {
    return std::ranges::any_of(records, [&](const Record& other) { return &other == record; });
}

std::string sRecord(const xmlschema::Attribute& record) {
    return std::to_string(static_cast<unsigned>(record.getRepresentation())) +
           (record.isTagless() ? " tagless" : "") + (record.isKeep() ? " keep" : "");
}

std::string sRecord(const xmlschema::AttributeInverse& record) {
    return std::to_string(static_cast<unsigned>(record.getRepresentation()));
}

/// The records that the attributes are linked to, one line each.
template <class Attributes, class Records>
std::string sLinks(const Attributes& attributes, const Records& records) {
    std::string text;
    for (const auto& attribute : attributes) {
        const auto* record = attribute.pXmlAttribute();
        if (!record)
            continue;
        vLaw(boHolds(records, record), "links lead to records of the configuration");
        text.append(attribute.getName()).append(" ").append(sRecord(*record)).append("\n");
    }
    return text;
}

template <class Records>
std::string sRecords(const Records& records) {
    std::string text;
    for (const auto& record : records)
        text.append(sRecord(record)).append("\n");
    return text;
}

/// All that was read, and the links.
std::string sConfig(const SchemaPset& schema) {
    const auto& config = *schema.pXmlSchemaConfig();
    auto text = sRecords(config.getAttributes()) + sRecords(config.getAttributesInverse());
    text += config.getNamespace().getPrefix() + '\n' + config.getNamespace().getAlias() + '\n' +
            config.getSchema().getTargetNamespace() + '\n' + config.getUosElement().getName() + '\n';
    for (const auto* object : schema.getObjects()) {
        if (const auto* entity = schema::Entity::pFrom(object))
            text += sLinks(entity->getAttributes(), config.getAttributes()) +
                    sLinks(entity->getAttributesInverse(), config.getAttributesInverse());
    }
    return text;
}

/// What was read, and the messages of the reports.
std::string sReading(SchemaPset& schema, std::string_view input) {
    kiv::assert::CollectingSink sink;
    const kiv::assert::ScopedSink installed(sink);
    std::istringstream stream{std::string(input)};
    schema.vXmlSchemaConfigInit(stream);
    vLaw(schema.pXmlSchemaConfig() != nullptr, "there is always a configuration then");
    auto text = sConfig(schema);
    for (const auto& record : sink.getRecords())
        text.append(record.message).append(" from ").append(record.function).append("\n");
    return text;
}

} // namespace

void kiv::fuzz::vRun(std::string_view input) {
    const auto schema = sampleSchema();
    const auto first = sReading(*schema, input);
    vLaw(sReading(*schema, input) == first, "a second reading gives the same");
}
