// The program of Docs/Tutorial/1-Schema.md: reads Building.exp in the current folder and looks things up.
#include <kiv/Format/Ifc/Def/Schema/IfcSchemaEntity.h>
#include <kiv/Format/Ifc/Def/Schema/IfcSchemaType.h>
#include <kiv/Format/Ifc/Def/SchemaLoader.h>
#include <kiv/Host/Assert/KivAssert.h>

#include <exception>
#include <fstream>
#include <iostream>

namespace def = kiv::ifc::def;

int main() try {
    kiv::assert::CollectingSink sink;
    const kiv::assert::ScopedSink installed(sink);

    auto& loader = kiv::ifc::SchemaLoader::curr();
    loader.newSchemaCallback = [](const std::string& name) {
        std::ifstream text(name + ".exp", std::ios::binary);
        return text ? def::SchemaPset::pStepStreamRead(text).release() : nullptr;
    };
    const def::SchemaPset* schema = loader.pSchemaFromName("Building");
    if (!schema) {
        std::cerr << "Building.exp: no such file, or no schema in it\n";
        return 1;
    }
    for (const auto& report : sink.takeRecords())
        std::cerr << "unresolved: " << report.message << '\n';

    const auto* wall = def::schema::Entity::pFrom(schema->pObjectFromName("bldwall"));
    if (!wall)
        return 1;
    for (const auto* entity = wall; entity; entity = entity->pSupertype())
        std::cout << entity->getName() << (entity->isAbstract() ? " (abstract)\n" : "\n");

    const auto* length = wall->pAttributeFromName(def::schema::AttributeName("Length"), true);
    if (length)
        std::cout << length->getName() << " : " << length->getTypeText() << '\n';

    const auto* label = def::schema::Type::pFrom(schema->pObjectFromName("BldLabel"));
    if (label && label->pDataType())
        std::cout << label->getName() << " = " << label->pDataType()->getName() << '\n';
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
