#include "Store.h"

#include "Reading.h"
#include "kiv/Format/Ifc/Def/SchemaContextAndPropertySetDefinitions.h"

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
