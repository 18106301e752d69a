// A host of the kit: reads a schema and a set with a fault out of memory, and says where the fault is and
// what was meant. Ends with 0 when every answer is the expected one, else says which one is not.
#include <kiv/KivIfcKit.h>

#include <iostream>
#include <string>

namespace {

const char* const SchemaText = "SCHEMA HOUSE;\n"
                               "ENTITY HsWall;\n"
                               " WHERE\n"
                               "  Odd : SIZEOF(Marks)>0;\n"
                               "END_ENTITY;\n"
                               "END_SCHEMA;\n";
const char* const SetText = "<PropertySetDef>\n"
                            " <Name>Pset_Wall</Name>\n"
                            " <ApplicableClasses><ClassName>HsWal</ClassName></ApplicableClasses>\n"
                            "</PropertySetDef>\n";

int failures = 0;

void vExpect(bool isAsExpected, const char* what) {
    if (!isAsExpected) {
        std::cerr << "consumer of the kit: not as expected: " << what << '\n';
        ++failures;
    }
}

void vDocumentCheck(const kiv::ifc::def::SchemaPset& schema) {
    const auto document = kiv::kit::setTextCheck(SetText, "Pset_Wall.xml", schema);
    vExpect(!document.failure && document.pSet(), "the set is read");
    const auto& records = document.errors.getRecords();
    vExpect(records.size() == 1 && records[0].item == "HsWal", "an unknown class is a record");
    vExpect(document.positions &&
                document.positions->positionOf(document.positions->getElements().back()).column == 22,
            "the place of an element");
    const auto meant = kiv::kit::nearestName("HsWal", kiv::kit::entityNames(schema));
    vExpect(meant && meant->name == "HsWall", "the name that was meant");
}

void vRuleCheck(const kiv::ifc::def::SchemaPset& schema) {
    const auto* wall = kiv::ifc::def::schema::Entity::pFrom(schema.pObjectFromName("HsWall"));
    vExpect(wall && wall->pWhere() && wall->pWhere()->getRules().size() == 1, "a rule");
    if (failures == 0)
        vExpect(kiv::kit::sExpression(*wall->pWhere()->getRules()[0].expression) == "SIZEOF(Marks) > 0",
                "the text of an expression");
}

} // namespace

int main() {
    const auto file = kiv::kit::schemaTextRead(SchemaText, "House.exp");
    vExpect(file.schema != nullptr, "the schema is read");
    if (file.schema) {
        vDocumentCheck(*file.schema);
        vRuleCheck(*file.schema);
    }
    vExpect(kiv::kit::schemaTextRead("", "Empty.exp").failure.has_value(), "an empty file has a failure");
    if (failures == 0)
        std::cout << "consumer of KivIfcKit " << KIV_VERSION << ": all answers as expected\n";
    return failures == 0 ? 0 : 1;
}
