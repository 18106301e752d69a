// A set document: what is not XML is reported; all else is a set, of both kinds, whose check and report never
// throw and which is equal to itself when it is written, in either style, and read back.
#include "FuzzTarget.h"
#include "SampleSchema.h"

#include "Support/SetText.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Host/Assert/KivAssert.h"

#include <optional>
#include <sstream>
#include <string>

namespace {

using namespace kiv::ifc::def;
using kiv::fuzz::vLaw;

/// A document that was read, with its root.
struct Read {
    kiv::xml::File file{nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None};
    std::optional<kiv::xml::Element> root;

    explicit Read(std::string_view text) {
        std::istringstream stream{std::string(text)};
        root = file.parse(stream, "fuzz", nullptr);
        vLaw(root.has_value() == (file.pError() == nullptr), "there is a document or an error");
    }
};

void vCheck(const xml::SetDef& set, const schema::Schema& schema, xml::XmlSetErrors errors) {
    set.checkForErrors(schema, errors);
    vLaw(errors.getRecords().empty() || errors.getSetName() == set.getName(), "records have the set's name");
    xml::XmlSetsErrors all;
    const auto count = errors.getRecords().size();
    all.sets.insert(std::move(errors));
    vLaw(all.getFormattedErrors().empty() == (count == 0), "the report lists all records");
}

void vMembersUsed(const pset::PropertySetDef& set, const schema::Schema&) {
    for (const auto& property : set.getProperties()) {
        vLaw(property.pOwner() == &set, "a member knows its set");
        vLaw(property.getEntityName().empty() == !property.pType(), "a type has an entity");
        vLaw(property.getConcept().size() == set.getName().size() + 1 + property.getName().size(), "concept");
    }
}

void vMembersUsed(const qto::QuantitySetDef& set, const schema::Schema& schema) {
    for (const auto& quantity : set.getQuantities()) {
        xml::XmlSetErrors errors;
        vLaw(quantity.pOwner() == &set, "a member knows its set");
        vLaw(quantity.checkForErrors(schema, errors) && errors.getRecords().empty(),
             "the check of a quantity finds nothing to record");
    }
}

template <class Set>
void vReadsBack(const Set& set, xml::ExtraExportInfo& info, kiv::xml::WriteStyle style) {
    kiv::xml::Document document;
    auto parent = document.getNode().ElementNodeAppend("Set");
    std::ostringstream written;
    set.exportDef(parent, &info).vWrite(written, style);

    const Read again(written.str());
    vLaw(again.root.has_value(), "what is written is XML");
    xml::XmlSetErrors errors;
    const Set readBack(*again.root, errors);
    using kiv::test::After;
    vLaw(kiv::test::sSetText(readBack, After::Reading) == kiv::test::sSetText(set, After::ReadingBack),
         "what is written reads back equal");
}

template <class Set>
void vSet(const kiv::xml::Element& root, const schema::Schema& schema) {
    xml::XmlSetErrors errors;
    const Set set(root, errors);
    vCheck(set, schema, errors);
    vMembersUsed(set, schema);
    xml::ExtraExportInfo info;
    info.schemaForBaseTypes = &schema;
    vReadsBack(set, info, kiv::xml::WriteStyle::Compact);
    vReadsBack(set, info, kiv::xml::WriteStyle::Indented);
}

} // namespace

void kiv::fuzz::vRun(std::string_view input) {
    static const auto schema = sampleSchema();
    kiv::assert::CollectingSink sink;
    const kiv::assert::ScopedSink installed(sink);
    const Read document(input);
    if (!document.root)
        return;
    vSet<pset::PropertySetDef>(*document.root, *schema);
    vSet<qto::QuantitySetDef>(*document.root, *schema);
}
