/// @file
/// Set documents: read, checked against a schema, and everything that was found on the way.
///
///     const auto document = setDocumentCheck("Pset_Wall.xml", schema);
///     if (document.pSet())
///         for (const auto& record : document.errors.getRecords())
///             ...
///
/// Errors: nothing is thrown but what the memory does not hold; a document that cannot be read has a failure.
#pragma once

#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Format/Ifc/Def/Schema/IfcSchema.h"
#include "kiv/Host/Assert/KivAssert.h"
#include "kivifc/Program/Diagnostics.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kiv::kivifc {

/// A report that was made while a document was read or checked.
struct DocumentAssertion {
    assert::AssertRecord record;
    /// How many error records there were before it.
    std::size_t recordsBefore = 0;
};

struct SetDocument {
    /// As it is to be shown; standard input has a name of its own.
    std::string path;
    /// Why there is no set; absent when there is one.
    std::optional<Failure> failure;
    /// The set, one of the two; both null when there is none.
    std::unique_ptr<ifc::def::pset::PropertySetDef> propertySet;
    std::unique_ptr<ifc::def::qto::QuantitySetDef> quantitySet;
    /// The records of reading and of checking.
    ifc::def::xml::XmlSetErrors errors;
    std::vector<DocumentAssertion> assertions;
    /// What the check said.
    bool isRefused = false;

    /// Null when there is none.
    const ifc::def::xml::SetDef* pSet() const;
};

/// Reads the document at a path (see `StandardInputPath`); its set is not checked.
SetDocument setDocumentRead(const std::string& path);

/// The same, and checks its set.
SetDocument setDocumentCheck(const std::string& path, const ifc::def::schema::Schema& schema);

} // namespace kiv::kivifc
