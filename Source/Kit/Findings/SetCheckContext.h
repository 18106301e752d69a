/// @file
/// What set documents are checked against.
///
///     SetCheckContext context{schema};
///     context.others.push_back({"IFC2X3", ifc2x3});
///     const auto findings = findingsOf(document, context);
///
/// Ownership: refers to the schemas, which outlive it.
/// Threads:   any number of threads may use one.
/// Errors:    none.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::kit {

/// A further release, for naming it where the schema itself does not know something.
struct OtherSchema {
    /// As it is to be named in messages.
    std::string name;
    std::reference_wrapper<const ifc::def::schema::Schema> schema;
};

struct SetCheckContext {
    std::reference_wrapper<const ifc::def::schema::Schema> schema;
    std::vector<OtherSchema> others = {};
    /// The name of the schema's release when the host knows better than the schema itself; otherwise empty.
    std::string release = {};
    /// Adds what the library asserts of correct documents too: a bound that is no name of the schema.
    bool isVerbose = false;
};

} // namespace kiv::kit
