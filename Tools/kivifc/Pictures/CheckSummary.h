/// @file
/// The result of a check in numbers.
///
///     CheckSummary summary;
///     summary.vAdd(document);
///     output.vWrite(summary.sText());
///
/// Ownership: copies what it counts; documents may go.
/// Threads:   one thread at a time.
/// Errors:    std::bad_alloc.
#pragma once

#include "kivifc/Documents/SetDocument.h"
#include "kivifc/Json/Json.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace kiv::kivifc {

class CheckSummary {
public:
    void vAdd(const SetDocument& document);

    /// The numbers as lines of text, without the time.
    std::string sText() const;

    /// The same as JSON.
    Json getJson() const;

private:
    std::vector<std::pair<std::string, std::size_t>> messagesByCount() const;

    std::size_t documents_ = 0;
    std::size_t documentsFailed_ = 0;
    std::size_t propertySets_ = 0;
    std::size_t quantitySets_ = 0;
    std::size_t properties_ = 0;
    std::size_t quantities_ = 0;
    std::size_t records_ = 0;
    std::map<std::string, std::size_t> recordsByMessage_;
    std::size_t assertions_ = 0;
    // Name and path.
    std::vector<std::pair<std::string, std::string>> refused_;
};

} // namespace kiv::kivifc
