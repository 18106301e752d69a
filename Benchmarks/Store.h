/// A schema and its standard sets as a host has them: registered, and found through the schema.
///
/// Ownership: takes its sets out of the registry at its end. One at a time.
#pragma once

#include "Input.h"
#include "kiv/Format/Ifc/Def/SchemaPset.h"

#include <memory>

namespace kiv::bench {

class Store {
public:
    explicit Store(const Input& input);
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store();

    const ifc::def::SchemaPset& getSchema() const { return *schema_; }
    const ifc::def::SchemaPropertySetDefinitions& getSets() const {
        return *schema_->getStandardDefinitions();
    }

private:
    std::unique_ptr<ifc::def::SchemaPset> schema_;
};

} // namespace kiv::bench
