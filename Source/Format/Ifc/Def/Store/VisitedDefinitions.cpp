#include "Format/Ifc/Def/Store/VisitedDefinitions.h"

#include <utility>

namespace kiv::ifc::def {

namespace {

/// The visit of this thread that began last and has not ended; null for none.
thread_local VisitedDefinitions* innermost = nullptr;

} // namespace

VisitedDefinitions::VisitedDefinitions(const SchemaPropertySetDefinitions& definitions) noexcept :
    definitions_(&definitions), outer_(std::exchange(innermost, this)) {}

VisitedDefinitions::~VisitedDefinitions() {
    innermost = outer_;
}

void VisitedDefinitions::vKeep(
    const std::shared_ptr<const SchemaPropertySetDefinitions>& definitions) noexcept {
    for (auto* visit = innermost; visit; visit = visit->outer_) {
        if (visit->definitions_ == definitions.get())
            visit->kept_ = definitions;
    }
}

} // namespace kiv::ifc::def
