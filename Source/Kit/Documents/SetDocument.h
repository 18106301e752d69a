/// @file
/// Set documents: read, checked against a schema, with everything that was found on the way and where it is.
///
///     const auto document = setDocumentCheck("Pset_Wall.xml", schema);
///     if (document.failure)
///         vShow(document.path, document.failure->position, document.failure->reason);
///     for (const auto& record : document.errors.getRecords())
///         vShow(document.path, record);
///
/// Ownership: a document owns its text, its set and what was found. The texts of `assertions` are views into
///            `assertionTexts`: copy them where they have to outlive it.
/// Threads:   several documents may be read on several threads at once, with one schema; each has the
///            assertions of its own reading alone. A document is used by one thread at a time.
/// Errors:    a document that cannot be read has a failure. std::bad_alloc is thrown only when there is no
///            memory left for the failure either.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Format/Ifc/Def/IfcDefErrors.h"
#include "kiv/Format/Ifc/Def/Pset/IfcPropertyDef.h"
#include "kiv/Format/Ifc/Def/Qto/IfcQuantityDef.h"
#include "kiv/Kit/Documents/Assertion.h"
#include "kiv/Kit/Documents/ReadFailure.h"
#include "kiv/Kit/Documents/ReadOptions.h"

#include <cstddef>
#include <cstdio>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kiv::ifc::def::schema {
class Schema;
}

namespace kiv::kit {

class XmlPositions;

/// A report of the library that was made while a document was read or checked.
struct DocumentAssertion {
    Assertion record;
    /// How many error records there were before it.
    std::size_t recordsBefore = 0;
};

struct SetDocument {
    /// As it is to be shown.
    std::string path;
    /// The bytes of the file; empty when it could not be read.
    std::string text;
    /// Where everything is in the text. Null when they were not asked for, or there is no text.
    std::shared_ptr<const XmlPositions> positions;
    /// Why there is no set; absent when there is one.
    std::optional<ReadFailure> failure;
    /// The set, one of the two; both null when there is none.
    std::unique_ptr<ifc::def::pset::PropertySetDef> propertySet;
    std::unique_ptr<ifc::def::qto::QuantitySetDef> quantitySet;
    /// The records of reading and of checking.
    ifc::def::xml::XmlSetErrors errors;
    /// What was reported while it was read and checked, in order.
    std::vector<DocumentAssertion> assertions;
    /// Owns the texts of the assertions.
    AssertionTexts assertionTexts;
    /// The schema refuses the set.
    bool isRefused = false;

    /// Null when there is none.
    KIV_EXPORT const ifc::def::xml::SetDef* pSet() const;
    /// Takes the set out of the document; null when there is none.
    KIV_EXPORT std::unique_ptr<ifc::def::xml::SetDef> takeSet();
};

/// Reads the document at a path; its set is not checked.
KIV_EXPORT SetDocument setDocumentRead(const std::string& path, const ReadOptions& options = {});

/// The same, and checks its set.
KIV_EXPORT SetDocument setDocumentCheck(const std::string& path, const ifc::def::schema::Schema& schema,
                                        const ReadOptions& options = {});

/// Reads a document whose bytes are in memory; `path` is what the document is called.
KIV_EXPORT SetDocument setTextRead(std::string text, std::string path, const ReadOptions& options = {});
KIV_EXPORT SetDocument setTextCheck(std::string text, std::string path,
                                    const ifc::def::schema::Schema& schema, const ReadOptions& options = {});

/// Reads a stream to its end, which is left open. One that fails is an unreadable document; what it throws is
/// passed on.
KIV_EXPORT SetDocument setStreamRead(std::istream& stream, std::string path, const ReadOptions& options = {});
KIV_EXPORT SetDocument setStreamCheck(std::istream& stream, std::string path,
                                      const ifc::def::schema::Schema& schema,
                                      const ReadOptions& options = {});
KIV_EXPORT SetDocument setStreamRead(std::FILE* stream, std::string path, const ReadOptions& options = {});
KIV_EXPORT SetDocument setStreamCheck(std::FILE* stream, std::string path,
                                      const ifc::def::schema::Schema& schema,
                                      const ReadOptions& options = {});

} // namespace kiv::kit
