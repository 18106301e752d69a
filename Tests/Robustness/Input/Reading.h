/// Reads bytes of any origin as what the library reads, asks everything of what was read, and says when
/// something is not as promised.
///
///     EXPECT_EQ(Reading().sSchemaFault(text), "");
///
/// Errors: none; what is not as promised is the answer, and an empty answer is a good one.
#pragma once

#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <memory>
#include <string>
#include <string_view>

namespace kiv::test {

class Reading {
public:
    /// Sets and configurations are read for the schema of this text.
    explicit Reading(std::string schemaText);
    ~Reading();

    /// As a schema. With `whole` the model is also walked to its last node, which takes longer than reading
    /// it.
    std::string sSchemaFault(const std::string& text, bool whole) const;

    /// As a property set and as a quantity set.
    std::string sSetFault(const std::string& text) const;

    /// As a configuration.
    std::string sConfigFault(const std::string& text);

    /// As each of them, one after the other.
    std::string sFault(const std::string& text, bool whole);

private:
    std::string schemaText_;
    std::unique_ptr<ifc::def::SchemaPset> schema_;
    /// A schema keeps each of its configurations.
    std::unique_ptr<ifc::def::SchemaPset> configured_;
    int configurations_ = 0;
};

} // namespace kiv::test
