#include "kiv/Kit/Express/DataTypeKinds.h"

#include "Support/SchemaFromText.h"

#include <gtest/gtest.h>
#include <string>

namespace kiv::kit {

namespace {

// The data types of an attribute each, in the order of the text.
TEST(DataTypeKinds, EachKindHasItsKeyword) {
    const auto schema = test::schemaFromText("TYPE REAL_ = REAL;\nEND_TYPE;\n"
                                             "TYPE BOOLEAN_ = BOOLEAN;\nEND_TYPE;\n"
                                             "TYPE INTEGER_ = INTEGER;\nEND_TYPE;\n"
                                             "TYPE NUMBER_ = NUMBER;\nEND_TYPE;\n"
                                             "TYPE STRING_ = STRING;\nEND_TYPE;\n"
                                             "TYPE LOGICAL_ = LOGICAL;\nEND_TYPE;\n"
                                             "TYPE BINARY_ = BINARY;\nEND_TYPE;\n"
                                             "TYPE ENUMERATION_ = ENUMERATION OF\n (A);\nEND_TYPE;\n"
                                             "TYPE SELECT_ = SELECT\n (REAL_);\nEND_TYPE;\n"
                                             "TYPE ARRAY_ = ARRAY [0:1] OF REAL;\nEND_TYPE;\n"
                                             "TYPE LIST_ = LIST OF REAL;\nEND_TYPE;\n"
                                             "TYPE SET_ = SET OF REAL;\nEND_TYPE;\n");
    ASSERT_EQ(schema->getObjects().size(), DataTypeKeywords.size());
    for (const auto* object : schema->getObjects()) {
        const auto& type = test::typeOf(*schema, object->getName());
        EXPECT_EQ(std::string(DataTypeKeywords.at(dataTypeIndex(*type.pDataType()))) + '_',
                  object->getName());
    }
}

} // namespace

} // namespace kiv::kit
