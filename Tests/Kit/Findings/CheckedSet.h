/// @file
/// One set document, checked and ready for rules to look at.
///
///     const CheckedSet set(*schema, "<PropertySetDef><Name>Pset_A</Name></PropertySetDef>");
///     RuleRun run = set.run();
///
/// Ownership: refers to the schema.
/// Threads:   one.
/// Errors:    a text that is no set fails the test.
#pragma once

#include "Kit/Findings/RuleRun.h"
#include "Kit/Findings/SetOutline.h"
#include "kiv/Kit/Documents/SetDocument.h"
#include "kiv/Kit/Positions/XmlPositions.h"

#include <string>
#include <utility>

namespace kiv::test {

struct CheckedSet {
    CheckedSet(const ifc::def::schema::Schema& schema, std::string text) :
        document(kit::setTextCheck(std::move(text), "Set.xml", schema)),
        outline(*document.positions),
        context{schema} {}

    kit::RuleRun run() const { return {document, outline, context}; }
    const kit::XmlPositions& xml() const { return *document.positions; }

    kit::SetDocument document;
    kit::SetOutline outline;
    kit::SetCheckContext context;
};

} // namespace kiv::test
