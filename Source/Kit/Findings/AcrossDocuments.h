/// @file
/// What is wrong between set documents, each of which may be right on its own.
///
///     AcrossDocuments across;
///     for (const auto& document : documents)
///         across.vAdd(document, "Standard", findingsOf(document, {*schema}));
///     const auto findings = across.getFindings();
///
/// Ownership: keeps copies of the names and GUIDs it compares, and of their places; documents may go.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "kiv/Base/Export.h"
#include "kiv/Kit/Findings/Finding.h"

#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace kiv::kit {

struct SetDocument;

class KIV_EXPORT AcrossDocuments {
public:
    AcrossDocuments();
    ~AcrossDocuments();
    AcrossDocuments(AcrossDocuments&&) noexcept;
    AcrossDocuments& operator=(AcrossDocuments&&) noexcept;

    /// Sets of one name hide each other across contexts and are in each other's way within one. `findings`
    /// are those in the document, as `findingsOf` gives them: of a member whose type is found to be wrong,
    /// the type is not compared with others, as that would be the same mistake again.
    void vAdd(const SetDocument& document, std::string_view context = {},
              std::span<const Finding> findings = {});

    /// Sorted by path, line, column and code.
    std::vector<Finding> getFindings() const;

private:
    struct Data;
    std::unique_ptr<Data> data_;
};

} // namespace kiv::kit
