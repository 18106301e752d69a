#include <kiv/KivIfcSchemaPset.h>

#include <fstream>
#include <iostream>

int main() {
    std::ifstream text("Building.exp", std::ios::binary);
    const auto schema = text ? kiv::ifc::def::SchemaPset::pStepStreamRead(text) : nullptr;
    if (!schema)
        return 1;
    const auto* wall = kiv::ifc::def::schema::Entity::pFrom(schema->pObjectFromName("BldWall"));
    if (!wall)
        return 1;
    for (const auto& attribute : wall->getAttributes())
        std::cout << attribute.getName() << " : " << attribute.getTypeText() << '\n';
}
