#include <kiv/KivIfcKit.h>

#include <iostream>

int main() {
    const auto building = kiv::kit::schemaFileRead("Building.exp");
    if (!building.schema)
        return 1;
    for (const auto& path : kiv::kit::setPathsCollect({"Sets", "BrokenSets"}).documents) {
        const auto document = kiv::kit::setDocumentCheck(path, *building.schema);
        for (const auto& finding : kiv::kit::findingsOf(document, {*building.schema})) {
            const auto& at = finding.place.position;
            std::cout << path << ':' << at.line << ':' << at.column << ": " << finding.message << '\n';
        }
    }
}
