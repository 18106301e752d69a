#include "Reading.h"
#include "Require.h"
#include "Sections.h"
#include "Timing.h"
#include "kiv/Format/Ifc/Def/IfcDefBase.h"

#include <expat.h>

namespace kiv::bench {

namespace {

using ifc::def::SchemaPropertySetDefinitions;

/// What the XML parser alone costs, with no handlers for what it finds.
void vExpatRun(const std::vector<std::string>& texts) {
    for (const auto& text : texts) {
        const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate(nullptr),
                                                                                  &XML_ParserFree);
        const auto status = XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
        vRequire(status == XML_STATUS_OK, "a set document is not well-formed");
    }
}

void vDocumentsParse(Documents& documents) {
    for (auto& document : documents) {
        auto file = newFile();
        elementRead(file, document);
    }
}

/// The set as a document of its own, the way kivifc exports it.
std::string sExported(const ifc::def::xml::SetDef& set) {
    xml::Document document;
    auto root = document.getNode().ElementNodeAppend(set.pXmlElementName());
    std::ostringstream stream;
    stream << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
    set.exportDef(root, nullptr).vWrite(stream, xml::WriteStyle::Indented);
    stream << '\n';
    return stream.str();
}

void vSetsExport(const SchemaPropertySetDefinitions& sets) {
    std::size_t bytes = 0;
    for (const auto* const set : sets.getXmlSets())
        bytes += sExported(*set).size();
    vUse(bytes);
}

} // namespace

Figures setJobs(const Input& input) {
    const auto schema = pSchemaRead(input.schemaText);
    auto documents = documentsFrom(input.setTexts);
    const auto sets = definitionsRead(documents, *schema);
    vRequire(sets.getXmlSets().size() == documents.size(), "two sets have one name");
    SchemaPropertySetDefinitions read;
    const auto seconds =
        secondsOf({{"expat", [&] { vExpatRun(input.setTexts); }},
                   {"read", [&] { read = definitionsRead(documents, *schema); }, {}, [&] { read = {}; }},
                   {"parse", [&] { vDocumentsParse(documents); }},
                   {"export", [&] { vSetsExport(sets); }}},
                  15);
    const auto count = std::to_string(documents.size());
    const std::string expat = "libexpat without handlers, same bytes";
    return {{"jobs", "read and check " + count + " set documents", seconds[1], expat, seconds[0],
             Unit::Seconds, 1.6},
            {"jobs", "the same to XML documents only", seconds[2], expat, seconds[0], Unit::Seconds, 1.3},
            {"jobs", "export these sets to text", seconds[3], "to read and check them", seconds[1],
             Unit::Seconds, 0.5}};
}

} // namespace kiv::bench
