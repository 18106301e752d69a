/// @file
/// What `kivifc check` finds in the documents of the sets of a site.
///
///     const SetFindings findings(model);
///     for (const auto* finding : findings.of(set))
///         write(finding->code, finding->message);
///
/// Ownership: keeps the findings.
/// Threads:   read-only once made; many documents are looked at on several threads.
/// Errors:    std::bad_alloc. Standard input cannot be read again, so a set that came from it has none.
#pragma once

#include "kiv/Kit/Findings/Finding.h"
#include "kivifc/Site/SiteModel.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv::kivifc::site {

class SetFindings {
public:
    explicit SetFindings(const SiteModel& model);

    /// By line, column and code.
    const std::vector<const kit::Finding*>& of(const SiteSet& set) const;

private:
    std::vector<kit::Finding> findings_;
    std::unordered_map<std::string_view, std::vector<const kit::Finding*>> byPath_;
    std::vector<const kit::Finding*> none_;
};

} // namespace kiv::kivifc::site
