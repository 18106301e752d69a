/// All that a schema and the registry answer, as text: to see that something left them as they were, or that
/// they say the same to everybody.
///
///     const auto before = sAnswers(schema);
///     vSomethingThatFails();
///     EXPECT_EQ(sAnswers(schema), before);
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPropertySetDefinitions.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <string>

namespace kiv::test {

/// What the collection has, by name, GUID and entity, a question a line.
std::string sCollectionAnswers(const ifc::def::schema::Schema& schema,
                               const ifc::def::SchemaPropertySetDefinitions& sets);

/// Every name that the schema and the sets of the registry hold is asked for in every way there is.
std::string sAnswers(const ifc::def::SchemaPset& schema);

} // namespace kiv::test
