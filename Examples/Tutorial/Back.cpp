// The program of Docs/Tutorial/3-Back.md: a set made from a text, reported on, written back; threads.
#include <kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h>
#include <kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h>
#include <kiv/Format/Ifc/Def/SchemaPset.h>
#include <kiv/Format/Ifc/Def/XmlSchema/IfcXmlConfig.h>
#include <kiv/Host/Xml/KivXml.h>

#include <atomic>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <thread>
#include <vector>

namespace def = kiv::ifc::def;

int main() try {
    std::ifstream text("Building.exp", std::ios::binary);
    const auto schema = def::SchemaPset::pStepStreamRead(text);
    if (!schema)
        return 1;

    std::istringstream configuration("<configuration/>");
    schema->vXmlSchemaConfigInit(configuration);

    std::ifstream stream("Sets/Pset_BldWall.xml", std::ios::binary);
    kiv::xml::File file(nullptr, kiv::xml::VerboseLevel::Quiet, kiv::xml::ValidateLevel::None);
    const auto root = file.parse(stream, "Pset_BldWall.xml", nullptr);
    if (!root) {
        std::cerr << file.pError()->reason << '\n';
        return 1;
    }
    def::xml::XmlSetErrors errors;
    const def::pset::PropertySetDef set(*root, errors);
    set.checkForErrors(*schema, errors);

    def::xml::XmlSetsErrors report;
    report.sets.insert(std::move(errors));
    report.vDump("report.txt");

    kiv::xml::Document document;
    auto exported = document.getNode().ElementNodeAppend(set.pXmlElementName());
    std::ofstream out("Pset_BldWall.out.xml", std::ios::binary);
    set.exportDef(exported, nullptr).vWrite(out, kiv::xml::WriteStyle::Indented);
    out.close();
    if (out.fail())
        return 1;

    std::atomic<int> found = 0;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            if (schema->pObjectFromName("BldWall"))
                ++found;
        });
    for (auto& thread : threads)
        thread.join();
    std::cout << found << " threads found the wall\n";
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
