/// @file
/// A namespace of the target schema, "cnf:namespace".
///
///     settings.getPrefix(); // "ifc"
///
/// Ownership: a value.
/// Threads:   a value; read-only once the configuration is read.
/// Errors:    what is unknown in an element is an assertion report, and reading goes on.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Base/WorkMeter.h"
#include "kiv/Host/Xml/KivXml.h"

#include <string>

namespace kiv::ifc::def::xmlschema {

class KIV_EXPORT Namespace {
public:
    /// Reads the element; what is unknown in it is reported. What it does not give keeps the value of an
    /// earlier one.
    void vInit(const kiv::xml::const_Element& element, WorkMeter* meter = nullptr);

    /// Empty when not given.
    const std::string& getPrefix() const { return prefix_; }
    /// The namespace that the prefix abbreviates; empty when not given.
    const std::string& getAlias() const { return alias_; }

private:
    std::string prefix_;
    std::string alias_;
};

} // namespace kiv::ifc::def::xmlschema
