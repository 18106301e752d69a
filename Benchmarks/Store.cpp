#include "Store.h"

#include "Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"
#include "Reading.h"

namespace kiv::bench {

using ifc::def::SchemaContextAndPropertySetDefinitions;

Store::Store(const Input& input) : schema_(pSchemaPsetRead(input.schemaText)) {
    auto documents = documentsFrom(input.setTexts);
    SchemaContextAndPropertySetDefinitions::instance().addPropertySets(
        {std::string(schema_->getName()), true}, definitionsRead(documents, *schema_));
}

Store::~Store() {
    SchemaContextAndPropertySetDefinitions::instance().clear();
}

} // namespace kiv::bench
